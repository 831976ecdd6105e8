// Platforms that answer what the embedded one never does. The linker puts the functions below in front of the
// real ones
// (--wrap), by the names that the compiler gave those.

#include "HandlerTesting.h"

using namespace CorvidTest;

namespace {

/// What the next expansions of a pattern answer; the real answer when empty.
std::function<bool( const std::string&, std::vector<std::string>& )> globAnswer;
/// What the platform has qualified with a cell, in order.
std::vector<std::string> qualified;
/// The group that the profile refuses to make.
std::string refusedGroup;

class PlatformFaultsTest : public HandlerTest {
  protected:
    ~PlatformFaultsTest() override {
        globAnswer = nullptr;
        qualified.clear();
        refusedGroup.clear();
    }
};
using PlatformFaultsDeathTest = PlatformFaultsTest;

} // namespace

extern "C" {

bool realGlob( const std::string&,
               std::vector<std::string>& ) asm( "__real__ZN4Brae13getGlobResultERKNSt7__cxx1112basic_"
                                                "stringIcSt11char_traitsIcESaIcEEERSt6vectorIS5_SaIS5_EE" );
bool wrappedGlob( const std::string&, std::vector<std::string>& ) asm(
    "__wrap__ZN4Brae13getGlobResultERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERSt6vectorIS5_"
    "SaIS5_EE" );
bool wrappedGlob( const std::string& pattern, std::vector<std::string>& matches ) {
    return globAnswer ? globAnswer( pattern, matches ) : realGlob( pattern, matches );
}
}

Kiv::String8 realCellPath( const Kiv::String8&,
                           std::uint32_t ) asm( "__real__ZN4Cell4pathERKN3Kiv7String8Ej" );
Kiv::String8 wrappedCellPath( const Kiv::String8&,
                              std::uint32_t ) asm( "__wrap__ZN4Cell4pathERKN3Kiv7String8Ej" );
Kiv::String8 wrappedCellPath( const Kiv::String8& relativePath, std::uint32_t cell ) {
    qualified.push_back( relativePath.str() + " " + std::to_string( cell ) );
    return realCellPath( relativePath, cell );
}

// A member function is called like a free one that takes the object first.
Kiv::Ptr<Corvid::PassiveMountGroup>
realGroupIs( Corvid::PassiveAgentProfile*, Kiv::Name,
             unsigned ) asm( "__real__ZN6Corvid19PassiveAgentProfile12mountGroupIsEN3Kiv4NameEj" );
Kiv::Ptr<Corvid::PassiveMountGroup>
wrappedGroupIs( Corvid::PassiveAgentProfile*, Kiv::Name,
                unsigned ) asm( "__wrap__ZN6Corvid19PassiveAgentProfile12mountGroupIsEN3Kiv4NameEj" );
Kiv::Ptr<Corvid::PassiveMountGroup> wrappedGroupIs( Corvid::PassiveAgentProfile* profile, Kiv::Name name,
                                                    unsigned priority ) {
    if ( !refusedGroup.empty() && name == refusedGroup )
        return nullptr;
    return realGroupIs( profile, std::move( name ), priority );
}

namespace {

TEST_F( PlatformFaultsTest, AnExpansionThatFailsIsLikeOneWithoutAMatch ) {
    for ( const bool fails : { true, false } ) {
        Bench bench( "agentName: A\ninclude: inc\n" );
        const std::string inc = bench.dir.file( "inc", "/a, T::T, r\n" );
        globAnswer = [&]( const std::string&, std::vector<std::string>& matches ) {
            if ( fails )
                matches = { inc }; // not to be looked at
            return !fails;
        };
        bench.run();
        EXPECT_EQ( bench.description(),
                   " In mount group 'all' ,  near '\\n', No include file found matching " + inc );
        EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\n" );
    }
}

TEST_F( PlatformFaultsTest, AnExpansionThatFailsBringsTheConfiguredPathsInATestRoot ) {
    const ScopedEnvironment testRoot( "K7_CHROOT", "/" );
    Kiv::Embedded::entityIs( configRootPath, Kiv::Embedded::newConfigRoot( { { "c", "C::C", "" } }, true ) );
    globAnswer = []( const std::string&, std::vector<std::string>& ) { return false; };
    Bench bench( "agentName: A\ninclude: ConfigMountProfile\n", false, entityManager() );
    bench.run();
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\nc C::C w\n" ) << bench.description();
}

TEST_F( PlatformFaultsTest, ThePlatformQualifiesTheAgentsOwnPathsAndTheDirectoriesOfItsSubAgents ) {
    const std::vector<std::string> status{ "Corvid/localStatus 0", "redundancySupport/status 0",
                                           "redundancy/status 0" };
    for ( const auto& [subAgents, expected] :
          { std::pair<std::string, std::vector<std::string>>{
                "", { "agent/config/%agentString 0", "agent/status/%agentString 0" } },
            { "subAgent: s\nsubAgent: t\n",
              { "agent/config/ 0", "agent/status/ 0", "agent/config/ 0", "agent/status/ 0" } } } ) {
        qualified.clear();
        Bench bench( "agentName: A\n" + subAgents, true );
        bench.run();
        std::vector<std::string> all = status;
        all.insert( all.end(), expected.begin(), expected.end() );
        EXPECT_EQ( qualified, all );
    }
}

TEST_F( PlatformFaultsTest, FilesAreParsedInThePlatformsOrderAlsoTwice ) {
    Bench bench( "agentName: A\ninclude: inc\n" );
    const std::string first = bench.dir.file( "1", "/x, T::T, r\n" );
    const std::string second = bench.dir.file( "2", "/x, T::T, w\n" );
    std::string asked;
    globAnswer = [&]( const std::string& pattern, std::vector<std::string>& matches ) {
        asked += pattern + "\n";
        matches = { second, first, second };
        return true;
    };
    bench.run();
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\nx T::T wr\n" );
    EXPECT_EQ( asked, bench.dir.path() + "/inc\n" );
}

TEST_F( PlatformFaultsTest, AFileThatIsGoneSinceTheExpansionEndsTheRun ) {
    Bench bench( "agentName: A\ninclude: inc\n" );
    globAnswer = [&]( const std::string&, std::vector<std::string>& matches ) {
        matches = { bench.dir.path() + "/gone" };
        return true;
    };
    EXPECT_THROW( bench.run(), std::runtime_error );
}

TEST_F( PlatformFaultsDeathTest, WaitingForAPeerNeedsAGroupToWaitIn ) {
    Corvid::MountProfileHdlr hdlr( "Agent", new Corvid::PassiveAgentProfileDir, nullptr, false );
    hdlr.agentProfileIs( "A" );
    hdlr.addMountGroup( "g", 7 );
    refusedGroup = "peerReady";
    EXPECT_ASSERTION( hdlr.addPeerReady( "a", true, true ), R"(currMg && "currMg is NULL.")" );
}

TEST_F( PlatformFaultsDeathTest, TheConfiguredPathsNeedAnEntityManagerAndAConfigurationRoot ) {
    Corvid::MountProfileHdlr alone( "Agent", new Corvid::PassiveAgentProfileDir, nullptr, false );
    EXPECT_ASSERTION( alone.addConfigMountProfile(), R"(entityManager && "entityManager is NULL.")" );
    Corvid::MountProfileHdlr rootless( "Agent", new Corvid::PassiveAgentProfileDir, entityManager(), false );
    EXPECT_ASSERTION( rootless.addConfigMountProfile(), R"(configRoot && "configRoot is not found.")" );
}

} // namespace
