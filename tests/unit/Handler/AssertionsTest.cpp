// Calls in the wrong order, and platforms without what must be there, stop the process.

#include "HandlerTesting.h"

using namespace CorvidTest;
using Corvid::MountProfileHdlr;

namespace {

constexpr char noProfileYet[] = R"(agentProfile && "agentProfile is not created yet.")";
constexpr char noGroup[] = R"(currMg && "currMg is NULL.")";
constexpr char noGroupWithoutFullStop[] = R"(currMg && "currMg is NULL")";
constexpr char noGroupForMounts[] = R"(currMg && currMg->parent() && "currMg is NULL.")";
constexpr char noAgentParser[] = R"(agentFileParserCtx && "agentFileParserCtx is NULL")";
constexpr char noIncludeParser[] = R"(includeFileParserCtx && "includeFileParserCtx is NULL")";

class AssertionsTest : public HandlerTest {
  protected:
    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root{ new Corvid::PassiveAgentProfileDir };
    MountProfileHdlr hdlr{ "Agent", root, nullptr, false };
    MountProfileHdlr withManager{ "Agent", root, entityManager(), true };
};
using AssertionsDeathTest = AssertionsTest;

TEST_F( AssertionsDeathTest, WhatFillsTheProfileNeedsOne ) {
    EXPECT_ASSERTION( hdlr.addTemplateKeys( { "%a" } ), noProfileYet );
    EXPECT_ASSERTION( hdlr.setHybridMount( true ), noProfileYet );
    EXPECT_ASSERTION( hdlr.setLowMountPrio( true ), noProfileYet );
    EXPECT_ASSERTION( hdlr.setNoDefaultMountGroup( true ), noProfileYet );
    EXPECT_ASSERTION( hdlr.addAlias( "%a", "%b" ), noProfileYet );
    EXPECT_ASSERTION( hdlr.setRootFlags( "r" ), noProfileYet );
    EXPECT_ASSERTION( hdlr.addDefaultProfiles(), R"(agentProfile && "agentProfile is not set yet.")" );
}

TEST_F( AssertionsDeathTest, AMountGroupNeedsAProfileWhicheverWayItIsOpened ) {
    constexpr char text[] = R"(agentProfile && "agentProfile is not set yet.")";
    EXPECT_ASSERTION( hdlr.addMountGroup(), text );
    EXPECT_ASSERTION( hdlr.addMountGroup( "g" ), text );
    EXPECT_ASSERTION( hdlr.addMountGroup( "g", 1 ), text );
}

TEST_F( AssertionsDeathTest, WhatTheFileSaysIsCheckedBeforeThereMustBeAPlaceForIt ) {
    EXPECT_ASSERTION( hdlr.setRootFlags( "X" ), noAgentParser ) << "the report is what stops it";
    EXPECT_ASSERTION( hdlr.addMountGroup( "g", 0 ), noAgentParser );
    EXPECT_ASSERTION( hdlr.addMount( "x", "T::T", "X", "" ), noAgentParser );
}

TEST_F( AssertionsDeathTest, AProfileNeedsADirectory ) {
    MountProfileHdlr homeless( "Agent", nullptr, nullptr, false );
    EXPECT_ASSERTION( homeless.agentProfileIs( "A" ), R"(root && "root is NULL.")" );
    const TempDir dir;
    MountProfileHdlr running( dir.file( "Agent", "agentName: A\n" ), nullptr, nullptr, false );
    EXPECT_ASSERTION( running.run(), R"(root && "root is NULL.")" );
}

TEST_F( AssertionsDeathTest, ConditionsNeedAnOpenGroup ) {
    hdlr.agentProfileIs( "A" );
    EXPECT_ASSERTION( hdlr.validateMgConditionNotSet(), noGroup );
    EXPECT_ASSERTION( hdlr.setBlockingConditional( true ), noGroup );
    EXPECT_ASSERTION( hdlr.setEntireCondition( "x" ), noGroupWithoutFullStop );
    EXPECT_ASSERTION( hdlr.addCondition( "x" ), noGroupWithoutFullStop );
    EXPECT_ASSERTION( hdlr.addTemplateCondition( "x" ), noGroupWithoutFullStop );
}

TEST_F( AssertionsDeathTest, AMountNeedsAGroupOfAProfile ) {
    EXPECT_ASSERTION( hdlr.addMount( "x", "T::T", "r", "" ), noGroupForMounts );
    EXPECT_ASSERTION( hdlr.addPeerReady( "a", true, false ), noGroupForMounts );
    hdlr.agentProfileIs( "A" );
    hdlr.addMountGroup( "g", 1 );
    hdlr.agentProfile()->mountGroupDel( Kiv::Name( "g" ) );
    EXPECT_ASSERTION( hdlr.addMount( "x", "T::T", "r", "" ), noGroupForMounts );
}

TEST_F( AssertionsDeathTest, AnIncludeFileByItselfHasNoGroupForItsMounts ) {
    const TempDir dir;
    const std::string file = dir.file( "inc", "/a, T::T, r\n" );
    EXPECT_ASSERTION( hdlr.parseFile( file, true ), noGroupForMounts );
}

TEST_F( AssertionsDeathTest, AnAttributeFilterNeedsADeclaredFilter ) {
    EXPECT_ASSERTION( hdlr.addAttrFilter( "a", "k" ),
                      "mountFilterMap.count( currMountFilterName ) != 0 && "
                      "\"Trying to add attr filter to undeclared mount filter\"" );
}

TEST_F( AssertionsDeathTest, AReportNeedsARunningParserBeforeAndAfterAParse ) {
    EXPECT_ASSERTION( hdlr.constructHdlrException( "x" ), noAgentParser );
    EXPECT_ASSERTION( hdlr.validateTemplateKey( "%x" ), noAgentParser );
    EXPECT_ASSERTION( hdlr.parseIncludes( "there-is-no-such-file" ), noAgentParser );
    Bench bench( "agentName: A\ninclude: inc\n" );
    bench.dir.file( "inc", "/a, T::T, r\n" );
    bench.run();
    EXPECT_ASSERTION( bench.hdlr.constructHdlrException( "x" ), noAgentParser );
}

TEST_F( AssertionsDeathTest, TheParserThatIsAskedForMustRun ) {
    int something = 0;
    auto* const parser = reinterpret_cast<mountProfileParser_Ctx_struct*>( &something );
    Corvid::AntlrParserCtx ctx;
    EXPECT_ASSERTION( static_cast<void>( ctx.getParserCtx() ), noAgentParser );
    ctx.includeFileParserCtx = parser;
    EXPECT_ASSERTION( static_cast<void>( ctx.getParserCtx() ), noAgentParser );
    ctx.includeFileParserCtx = nullptr;
    ctx.agentFileParserCtx = parser;
    ctx.parsingIncludeFile = true;
    EXPECT_ASSERTION( static_cast<void>( ctx.getParserCtx() ), noIncludeParser );
}

TEST_F( AssertionsDeathTest, TheRedundancyStatusMustBeThereAndBeOne ) {
    withManager.agentProfileIs( "A" );
    EXPECT_ASSERTION( withManager.addDefaultProfiles(), "redundancyStatus" );
    Kiv::Embedded::entityIs( "/sys/Corvid/cell/1/redundancy/status",
                             Kiv::Embedded::newConfigRoot( {}, true ) );
    EXPECT_ASSERTION( withManager.addDefaultProfiles(), "redundancyStatus" );
    const auto hotStandby = Redundancy::Mode::hotStandby;
    Kiv::Embedded::entityIs( "/sys/Corvid/cell/2/redundancy/status",
                             Kiv::Embedded::newRedundancyStatus( hotStandby, hotStandby ) );
    EXPECT_ASSERTION( withManager.addDefaultProfiles(), "redundancyStatus" )
        << "the peer's is not this cell's";
}

TEST_F( AssertionsDeathTest, AClashAmongTheDefaultMountsHasNoParserToReportTo ) {
    withManager.agentProfileIs( "A" );
    withManager.addMountGroup( "default", 1 );
    withManager.addMount( "logging/config", "T::T", "r", "" );
    EXPECT_ASSERTION( withManager.addDefaultProfiles(), noAgentParser );
}

TEST_F( AssertionsDeathTest, TheActiveCellOfACellBeyondThePairIsUnknown ) {
    for ( const std::uint32_t cell : { 3U, 4U, 0xFFFFFFFFU } ) {
        Kiv::Embedded::cellIdIs( cell );
        EXPECT_ASSERTION( static_cast<void>( Corvid::activeCellId() ), "cellId < 3" );
    }
}

TEST_F( AssertionsDeathTest, TheConfigurationRootMustBeComplete ) {
    withManager.agentProfileIs( "A" );
    withManager.addMountGroup();
    Kiv::Embedded::entityIs( configRootPath, Kiv::Embedded::newConfigRoot( {}, false ) );
    EXPECT_ASSERTION( withManager.addConfigMountProfile(), "configRoot->rootsComplete()" );
}

} // namespace
