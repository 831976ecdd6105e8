// The agent, its keys and switches, mount groups and conditions: every operation called by itself.

#include "HandlerTesting.h"

#include <tuple>

using namespace CorvidTest;
using Corvid::MountProfileHdlr;

namespace {

class OperationsTest : public HandlerTest {
  protected:
    [[nodiscard]] std::string dump() const { return dumped( *hdlr.agentProfile() ); }

    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root{ new Corvid::PassiveAgentProfileDir };
    MountProfileHdlr hdlr{ "dir/Agent", root, nullptr, false };
};

class OpenGroupTest : public OperationsTest {
  protected:
    OpenGroupTest() {
        hdlr.agentProfileIs( "A" );
        hdlr.addMountGroup( "g", 7 );
    }
    [[nodiscard]] std::string conditions() const { return dumpedConditions( *hdlr.currMg() ); }
};

TEST_F( OperationsTest, AFreshHandlerHoldsItsArgumentsAndNothingElse ) {
    EXPECT_EQ( hdlr.agentFile(), "dir/Agent" );
    EXPECT_TRUE( hdlr.validProfileFile() );
    EXPECT_FALSE( hdlr.maybeIncludeFile() );
    EXPECT_EQ( hdlr.agentProfile(), nullptr );
    EXPECT_EQ( hdlr.currMg(), nullptr );
    EXPECT_EQ( hdlr.agentName() + hdlr.currMgName(), "" );
    EXPECT_THAT( hdlr.subAgents(), testing::IsEmpty() );
    EXPECT_EQ( hdlr.errorDesc(), Corvid::RecognitionError() );
    EXPECT_EQ( hdlr.maxFileSize(), std::size_t{ 16 } * 1024 * 1024 );
}

TEST_F( OperationsTest, TheMarkForIncludeFilesIsStoredAsGiven ) {
    hdlr.maybeIncludeFileIs( true );
    EXPECT_TRUE( hdlr.maybeIncludeFile() );
    hdlr.maybeIncludeFileIs( false );
    EXPECT_FALSE( hdlr.maybeIncludeFile() );
}

TEST_F( OperationsTest, TheAgentNameOpensTheProfileOfThatNameInTheDirectory ) {
    hdlr.agentProfileIs( "Fan-" );
    EXPECT_EQ( hdlr.agentName(), "Fan-" );
    ASSERT_EQ( root->agentProfile().size(), 1U );
    EXPECT_EQ( root->agentProfile().at( Kiv::Name( "Fan-" ) ), hdlr.agentProfile() );
    EXPECT_EQ( dump(), "agent Fan-\n" );
}

TEST_F( OperationsTest, TemplateKeysAreStoredByTheirPosition ) {
    hdlr.agentProfileIs( "A" );
    hdlr.addTemplateKeys( {} );
    EXPECT_EQ( dump(), "agent A\n" );
    hdlr.addTemplateKeys( { "%b", "%a$", "%b" } );
    EXPECT_EQ( dump(), "agent A\nkey 0 %b\nkey 1 %a$\nkey 2 %b\n" );
}

TEST_F( OperationsTest, TemplateKeysAreKnownWhenTheyArePredefinedOrDeclared ) {
    for ( const char* key :
          { "%cellId", "%cellPath", "%peerCellId", "%peerCellPath", "%sysname", "%agentString" } )
        EXPECT_TRUE( hdlr.validateTemplateKey( key ) ) << key;
    hdlr.registerTemplateKeyDecl( "%slot" );
    hdlr.registerTemplateKeyDecl( "%slot" );
    EXPECT_TRUE( hdlr.validateTemplateKey( "%slot" ) );
    EXPECT_TRUE( hdlr.validProfileFile() );
}

TEST_F( OperationsTest, AnyOtherTemplateKeyIsReported ) {
    for ( const std::string key : { "%foo", "%Sysname", "sysname", "%slot$", "%", "" } ) {
        const auto operation = [&]( MountProfileHdlr& running ) {
            running.registerTemplateKeyDecl( "%slot" );
            EXPECT_FALSE( running.validateTemplateKey( key ) );
        };
        EXPECT_EQ( messageOf( operation ), "Reference to undeclared template key " + key );
    }
}

TEST_F( OperationsTest, OnlyTheNamesAllAndDefaultAreReservedForGroups ) {
    for ( const char* name : { "All", "ALL", "Default", "DEFAULT", "peerReady", "all-", "" } )
        EXPECT_TRUE( hdlr.validateMountGroupName( name ) ) << name;
    for ( const char* name : { "all", "default" } ) {
        const auto operation = [&]( MountProfileHdlr& running ) {
            EXPECT_FALSE( running.validateMountGroupName( name ) );
        };
        EXPECT_EQ( messageOf( operation ), "Cannot use reserved mount group name" );
    }
}

TEST_F( OperationsTest, AGroupOpensWithItsPriorityAndWithTheLowestWhenNoneIsGiven ) {
    hdlr.agentProfileIs( "A" );
    hdlr.addMountGroup( "first", 1 );
    EXPECT_EQ( hdlr.currMgName(), "first" );
    EXPECT_EQ( hdlr.currMg()->name(), "first" );
    EXPECT_EQ( hdlr.currMg()->parent(), hdlr.agentProfile().get() );
    hdlr.addMountGroup( "last", 99 );
    hdlr.addMountGroup( "unsaid" );
    hdlr.addMountGroup();
    EXPECT_EQ( hdlr.currMgName(), "all" );
    EXPECT_EQ( dump(), "agent A\ngroup all 99\ngroup first 1\ngroup last 99\ngroup unsaid 99\n" );
    EXPECT_TRUE( hdlr.validProfileFile() );
}

TEST_F( OperationsTest, AGroupIsOpenedAgainWithAllThatItHolds ) {
    hdlr.agentProfileIs( "A" );
    hdlr.addMountGroup( "g", 5 );
    hdlr.addMount( "x", "T::T", "r", "" );
    hdlr.addMountGroup( "h", 6 );
    hdlr.addMountGroup( "g", 8 );
    hdlr.addMount( "x", "T::T", "w", "" );
    EXPECT_EQ( dumpedMounts( *hdlr.currMg() ), "x T::T rw\n" );
    EXPECT_EQ( dump(), "agent A\ngroup g 5\nx T::T rw\ngroup h 6\n" );
}

TEST_F( OperationsTest, APriorityOutsideOf1To99IsReportedAndOpensNoGroup ) {
    for ( const unsigned priority : { 0U, 100U, 0x80000000U, 0xFFFFFFFFU } ) {
        const auto operation = [&]( MountProfileHdlr& running ) {
            running.addMountGroup( "before", 3 );
            const auto before = running.currMg();
            running.addMountGroup( "g", priority );
            EXPECT_EQ( running.currMg(), before );
            EXPECT_EQ( running.currMgName(), "before" );
            EXPECT_EQ( running.agentProfile()->mountGroup().count( Kiv::Name( "g" ) ), 0U );
        };
        EXPECT_EQ( messageOf( operation ), "mount group priority should be in the range [1,99]" ) << priority;
    }
}

TEST_F( OpenGroupTest, ConditionsGoToTheGroupThatIsOpen ) {
    hdlr.addCondition( "2 == /b.x" );
    hdlr.addCondition( "1 == /a.x" );
    hdlr.addCondition( "2 == /b.x" );
    hdlr.addTemplateCondition( "a == %sysname" );
    hdlr.addTemplateCondition( "a == %sysname" );
    hdlr.setEntireCondition( "2 == /b.x and 1 == /a.x" );
    hdlr.setBlockingConditional( true );
    EXPECT_EQ( conditions(), "entire 2 == /b.x and 1 == /a.x\ncondition 2 == /b.x\ncondition 1 == /a.x\n"
                             "condition 2 == /b.x\ntemplate a == %sysname\nblocking\n" );
    hdlr.setBlockingConditional( false );
    EXPECT_FALSE( hdlr.currMg()->blockingConditional() );
    hdlr.addMountGroup( "other", 7 );
    EXPECT_EQ( conditions(), "" );
}

TEST_F( OpenGroupTest, OnlyAWholeConditionStandsInTheWayOfAnother ) {
    EXPECT_TRUE( hdlr.validateMgConditionNotSet() );
    hdlr.addCondition( "1 == /a.x" );
    hdlr.addTemplateCondition( "a == %sysname" );
    hdlr.setBlockingConditional( true );
    EXPECT_TRUE( hdlr.validateMgConditionNotSet() );

    const auto operation = []( MountProfileHdlr& running ) {
        running.setEntireCondition( "1 == /a.x and 2 == /b.x" );
        EXPECT_FALSE( running.validateMgConditionNotSet() );
        running.addMountGroup( "other", 7 );
        EXPECT_TRUE( running.validateMgConditionNotSet() );
    };
    EXPECT_EQ( messageOf( operation ),
               "Condition for this mount group is already set to: 1 == /a.x and 2 == /b.x. "
               "Multiple conditions not allowed." );
}

TEST_F( OperationsTest, TheOnlyFunctionInAConditionIsLen ) {
    EXPECT_TRUE( hdlr.validateCondPathFunc( "len" ) );
    for ( const char* name : { "Len", "length", "le", "" } ) {
        const auto operation = [&]( MountProfileHdlr& running ) {
            EXPECT_FALSE( running.validateCondPathFunc( name ) );
        };
        EXPECT_EQ( messageOf( operation ), "Only supported function is 'len'" ) << name;
    }
}

TEST_F( OperationsTest, AliasesAndSwitchesGoToTheProfile ) {
    hdlr.agentProfileIs( "A" );
    hdlr.addAlias( "%b", "%a, %c" );
    hdlr.addAlias( "%a", "%c" );
    hdlr.addAlias( "%b", "%d" );
    EXPECT_EQ( dump(), "agent A\nalias %a = %c\nalias %b = %d\n" );
    const std::string aliases = "alias %a = %c\nalias %b = %d\n";
    for ( const auto& [set, line] :
          { std::pair{ &MountProfileHdlr::setHybridMount, "hybridMount\n" },
            std::pair{ &MountProfileHdlr::setLowMountPrio, "lowMountPrio\n" },
            std::pair{ &MountProfileHdlr::setNoDefaultMountGroup, "noDefaultMountGroup\n" } } ) {
        ( hdlr.*set )( true );
        EXPECT_EQ( dump(), "agent A\n" + std::string( line ) + aliases );
        ( hdlr.*set )( false );
        EXPECT_EQ( dump(), "agent A\n" + aliases );
    }
}

TEST_F( OperationsTest, SubAgentsKeepTheirOrderAndTheirRepetitions ) {
    for ( const char* name : { "b", "a-%slot", "b" } )
        hdlr.addSubAgent( name );
    EXPECT_THAT( hdlr.subAgents(), testing::ElementsAre( "b", "a-%slot", "b" ) );
    EXPECT_THAT( root->agentProfile(), testing::IsEmpty() );
}

TEST_F( OperationsTest, ElevenCharactersAreFlagsInAnyOrderAndNumber ) {
    for ( const char* flags : { "", "rwicfCDSBNO", "ONBSDCfciwr", "rrr", "cC" } )
        EXPECT_TRUE( hdlr.validateFlags( flags ) ) << flags;
    std::string accepted;
    messageOf( [&]( MountProfileHdlr& running ) {
        for ( int byte = 0; byte < 256; ++byte )
            if ( running.validateFlags( std::string( 1, static_cast<char>( byte ) ) ) )
                accepted += static_cast<char>( byte );
    } );
    EXPECT_EQ( accepted, "BCDNOScfirw" );
}

TEST_F( OperationsTest, TheFirstCharacterThatIsNoFlagIsReportedAlone ) {
    for ( const auto& [flags, illegal] : { std::pair<std::string, std::string>{ "rwX", "X" },
                                           { "XYr", "X" },
                                           { "rR", "R" },
                                           { "r w", " " },
                                           { "r'", "'" },
                                           { std::string( "r\0w", 3 ), std::string( 1, '\0' ) },
                                           { "r\xff", "\xff" } } ) {
        const auto operation = [&text = flags]( MountProfileHdlr& running ) {
            EXPECT_FALSE( running.validateFlags( text ) );
        };
        EXPECT_EQ( messageOf( operation ), "illegal flag '" + illegal + "'" );
    }
}

TEST_F( OperationsTest, RootFlagsAccumulateInTheOrderInWhichEachWasFirstSeen ) {
    hdlr.agentProfileIs( "A" );
    for ( const auto& [flags, expected] :
          { std::pair{ "", "" }, { "rw", "rw" }, { "wi", "rwi" }, { "", "rwi" }, { "ccr", "rwic" } } ) {
        hdlr.setRootFlags( flags );
        EXPECT_EQ( hdlr.agentProfile()->rootFlags(), expected );
    }
}

TEST_F( OperationsTest, RootFlagsStayWhenOneOfTheNewOnesIsIllegal ) {
    const auto operation = []( MountProfileHdlr& running ) {
        running.setRootFlags( "rw" );
        running.setRootFlags( "cX" );
        EXPECT_EQ( running.agentProfile()->rootFlags(), "rw" );
    };
    EXPECT_EQ( messageOf( operation ), "illegal flag 'X'" );
}

TEST_F( OperationsTest, OfSeveralReportsBeforeTheParsersNextCheckTheLastIsDescribed ) {
    const auto operation = []( MountProfileHdlr& running ) {
        EXPECT_FALSE( running.validateFlags( "X" ) );
        EXPECT_FALSE( running.validateCondPathFunc( "max" ) );
        EXPECT_TRUE( running.validProfileFile() )
            << "a report only raises; the parser makes the file invalid";
    };
    EXPECT_EQ( messageOf( operation ), "Only supported function is 'len'" );
}

} // namespace
