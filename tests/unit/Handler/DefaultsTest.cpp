// The mounts that every agent gets, the peer's among them, and those of the configured paths.

#include "HandlerTesting.h"

#include <array>

using namespace CorvidTest;
using Corvid::MountProfileHdlr;
using Redundancy::Mode;

namespace {

/// The fixed mounts of cell 1, in the order of the record: by path.
constexpr char fixedMounts[] = "Corvid/status Corvid::Status r\n"
                               "agent/config Agent::GlobalConfigDir r\n"
                               "cell/1/Corvid/localStatus Redundancy::LocalCellStatus r\n";
constexpr char fixedMountsBehind[] =
    "cell/1/redundancy/status Redundancy::RedundancyStatus r\n"
    "cell/1/redundancySupport/status Redundancy::RedundancySupportStatus r\n";
constexpr char fixedMountsAtEnd[] = "logging/config Kiv::LogConfig r\nlogging/status Kiv::LogStatus r\n";

/// The group "default" with these agents' mounts between the fixed ones. @param config, status of cell 1.
std::string defaultGroup( const std::string& config, const std::string& status,
                          const std::string& peerStatus = "" ) {
    return std::string( "group default 1\n" ) + fixedMounts + config + status + fixedMountsBehind +
           peerStatus + fixedMountsAtEnd;
}

constexpr char ownConfig[] = "cell/1/agent/config/%agentString Agent::Config wfc\n";
constexpr char ownStatus[] = "cell/1/agent/status/%agentString Agent::Status wfc\n";
constexpr char ownPeerStatus[] = "cell/2/agent/status/%agentString Agent::Status rD\n";

std::string peerReadyGroup( const std::string& cell ) {
    const std::string exists = "%agentString in /%sysname/Corvid/cell/" + cell + "/agent/status.entryState";
    const std::string isReady = "true == /%sysname/Corvid/cell/" + cell + "/agent/status/%agentString.ready";
    return "group peerReady 2\nentire " + exists + " and " + isReady + "\ncondition " + exists +
           "\ncondition " + isReady + "\nblocking\n";
}

class RecordingManager final : public Corvid::EntityManager {
  public:
    RecordingManager( std::string& reads, bool standalone ) : reads_( reads ), standalone_( standalone ) {}
    [[nodiscard]] Kiv::String8 systemName() const override { return "sys"; }
    [[nodiscard]] bool standalone() const override {
        reads_ += "standalone ";
        return standalone_;
    }

  private:
    std::string& reads_;
    bool standalone_;
};

class RecordingStatus final : public Redundancy::RedundancyStatus {
  public:
    RecordingStatus( std::string& reads, Mode configured, Mode operational )
        : reads_( reads ), configured_( configured ), operational_( operational ) {}
    [[nodiscard]] Mode configuredMode() const override {
        reads_ += "configured ";
        return configured_;
    }
    [[nodiscard]] Mode operationalMode() const override {
        reads_ += "operational ";
        return operational_;
    }

  private:
    std::string& reads_;
    Mode configured_;
    Mode operational_;
};

class DefaultsTest : public HandlerTest {
  protected:
    /// What a run with default profiles makes of an agent file, less the lines "agent A" and "group all 99".
    static std::string groupsOf( const std::string& lines,
                                 const Kiv::Ptr<const Corvid::EntityManager>& manager ) {
        Bench bench( "agentName: A\n" + lines, true, manager );
        bench.run();
        EXPECT_TRUE( bench.hdlr.validProfileFile() ) << bench.description();
        const std::string dump = bench.dump();
        const std::string expectedStart = "agent A\ngroup all 99\n";
        EXPECT_THAT( dump, testing::StartsWith( expectedStart ) );
        return dump.substr( expectedStart.size() );
    }
    /// A pair of cells in hot standby.
    static void putPeerRedundancy( const std::string& cellPath = "cell/1/" ) {
        Kiv::Embedded::entityIs( "/sys/Corvid/" + cellPath + "redundancy/status",
                                 Kiv::Embedded::newRedundancyStatus( Mode::hotStandby, Mode::hotStandby ) );
    }
    /// An agent "A" with the group "g" open, and no file.
    struct OpenGroup {
        OpenGroup() {
            hdlr.agentProfileIs( "A" );
            hdlr.addMountGroup( "g", 7 );
        }
        [[nodiscard]] std::string dump() const { return dumped( *hdlr.agentProfile() ); }

        Kiv::Ptr<Corvid::PassiveAgentProfileDir> root{ new Corvid::PassiveAgentProfileDir };
        MountProfileHdlr hdlr{ "Agent", root, entityManager(), false };
    };
};

TEST_F( DefaultsTest, EveryAgentGetsNineMounts ) {
    EXPECT_EQ( groupsOf( "", nullptr ), defaultGroup( ownConfig, ownStatus ) );
}

TEST_F( DefaultsTest, TheAgentsOwnCellQualifiesItsPaths ) {
    Kiv::Embedded::cellIdIs( 2 );
    EXPECT_THAT( groupsOf( "", nullptr ),
                 testing::HasSubstr( "cell/2/agent/config/%agentString Agent::Config wfc\n" ) );
    Kiv::Embedded::cellIdIs( 0 );
    EXPECT_EQ( groupsOf( "", nullptr ), "group default 1\n"
                                        "Corvid/localStatus Redundancy::LocalCellStatus r\n"
                                        "Corvid/status Corvid::Status r\n"
                                        "agent/config Agent::GlobalConfigDir r\n"
                                        "agent/config/%agentString Agent::Config wfc\n"
                                        "agent/status/%agentString Agent::Status wfc\n"
                                        "logging/config Kiv::LogConfig r\n"
                                        "logging/status Kiv::LogStatus r\n"
                                        "redundancy/status Redundancy::RedundancyStatus r\n"
                                        "redundancySupport/status Redundancy::RedundancySupportStatus r\n" );
}

TEST_F( DefaultsTest, AnAgentThatNamesSubAgentsMountsOnlyTheirs ) {
    const std::string config =
        "cell/1/agent/config/a-%slot Agent::Config wfc\ncell/1/agent/config/b Agent::Config wfc\n";
    const std::string status =
        "cell/1/agent/status/a-%slot Agent::Status wfc\ncell/1/agent/status/b Agent::Status wfc\n";
    const std::string lines = "alias: %slot = %sysname\nsubAgent: b\nsubAgent: a-%slot\nsubAgent: b\n";
    Bench bench( "agentName: A\n" + lines, true );
    bench.run();
    EXPECT_EQ( bench.dump(),
               "agent A\nalias %slot = %sysname\ngroup all 99\n" + defaultGroup( config, status ) );
}

TEST_F( DefaultsTest, WithAPeerEverySubAgentsPeerStatusIsMountedAndAtLastTheAgentsOwn ) {
    putPeerRedundancy();
    const std::string groups = groupsOf( "subAgent: b\nsubAgent: a\n", entityManager() );
    EXPECT_EQ(
        groups,
        defaultGroup( "cell/1/agent/config/a Agent::Config wfc\ncell/1/agent/config/b Agent::Config wfc\n",
                      "cell/1/agent/status/a Agent::Status wfc\ncell/1/agent/status/b Agent::Status wfc\n",
                      std::string( ownPeerStatus ) + "cell/2/agent/status/a Agent::Status rD\n"
                                                     "cell/2/agent/status/b Agent::Status rD\n" ) +
            peerReadyGroup( "2" ) );
}

TEST_F( DefaultsTest, ASubAgentsMountsComeBeforeThoseOfTheNext ) {
    // In a system whose peer is its own cell all mounts of a sub-agent's status share a path, and flags tell
    // the order.
    putPeerRedundancy();
    const ScopedEnvironment sameCell( "ACTIVE_CELLID", "1" );
    const std::string groups = groupsOf( "subAgent: a\nsubAgent: b\nsubAgent: a\n", entityManager() );
    EXPECT_THAT( groups, testing::HasSubstr( "\ncell/1/agent/status/a Agent::Status wfcrD\n"
                                             "cell/1/agent/status/b Agent::Status wfcrD\n" ) );
    EXPECT_THAT( groups, testing::HasSubstr( "\ncell/1/agent/status/%agentString Agent::Status rD\n" ) );
}

TEST_F( DefaultsTest, ThereIsAPeerOnlyInHotStandbyAndNothingIsReadInVain ) {
    constexpr std::array modes{ Mode::unknown, Mode::none, Mode::coldStandby, Mode::hotStandby };
    int withPeer = 0;
    for ( const bool standalone : { false, true } )
        for ( const Mode configured : modes )
            for ( const Mode operational : modes ) {
                std::string reads;
                Kiv::Embedded::entityIs( "/sys/Corvid/cell/1/redundancy/status",
                                         new RecordingStatus( reads, configured, operational ) );
                const bool expected =
                    !standalone && configured == Mode::hotStandby && operational == Mode::hotStandby;
                withPeer += expected ? 1 : 0;
                EXPECT_EQ( groupsOf( "", new RecordingManager( reads, standalone ) ),
                           defaultGroup( ownConfig, ownStatus, expected ? ownPeerStatus : "" ) +
                               ( expected ? peerReadyGroup( "2" ) : "" ) );
                EXPECT_EQ( reads, standalone                       ? "standalone "
                                  : configured != Mode::hotStandby ? "standalone configured "
                                                                   : "standalone configured operational " );
            }
    EXPECT_EQ( withPeer, 1 );
    EXPECT_EQ( static_cast<int>( Mode::hotStandby ), 3 );
}

TEST_F( DefaultsTest, WithoutAnEntityManagerTheRedundancyStatusIsNotLookedAt ) {
    std::string reads;
    Kiv::Embedded::entityIs( "/sys/Corvid/cell/1/redundancy/status",
                             new RecordingStatus( reads, Mode::hotStandby, Mode::hotStandby ) );
    EXPECT_EQ( groupsOf( "", nullptr ), defaultGroup( ownConfig, ownStatus ) );
    EXPECT_EQ( reads, "" );
}

TEST_F( DefaultsTest, AnAgentWaitsForItsPeerExceptInATestRootThatDoesNotAskForIt ) {
    putPeerRedundancy();
    for ( const auto& chroot : { std::optional<std::string>(), std::optional<std::string>( "" ),
                                 std::optional<std::string>( "/root" ) } )
        for ( const auto& wait : { std::optional<std::string>(), std::optional<std::string>( "" ),
                                   std::optional<std::string>( "0" ) } ) {
            const ScopedEnvironment testRoot( "K7_CHROOT", chroot );
            const ScopedEnvironment waitForReady( "AGENT_WAIT_FOR_READY", wait );
            EXPECT_EQ( groupsOf( "", entityManager() ),
                       defaultGroup( ownConfig, ownStatus, ownPeerStatus ) +
                           ( !chroot || wait ? peerReadyGroup( "2" ) : "" ) );
        }
}

TEST_F( DefaultsTest, TheActiveCellIsTheOtherOneUnlessTheEnvironmentNamesIt ) {
    for ( const auto& [cell, active] : { std::pair{ 0U, 3U }, { 1U, 2U }, { 2U, 1U } } ) {
        Kiv::Embedded::cellIdIs( cell );
        EXPECT_EQ( Corvid::activeCellId(), active ) << cell;
    }
    Kiv::Embedded::cellIdIs( 3 ); // not even asked for when the environment names the active cell
    for ( const auto& [text, active] : { std::pair{ "7", 7U },
                                         { "2", 2U },
                                         { "0", 0U },
                                         { "", 0U },
                                         { "text", 0U },
                                         { " 12 cells", 12U },
                                         { "0x10", 0U },
                                         { "010", 10U },
                                         { "-1", 0xFFFFFFFFU },
                                         { "4294967298", 2U } } ) {
        const ScopedEnvironment activeCell( "ACTIVE_CELLID", text );
        EXPECT_EQ( Corvid::activeCellId(), active ) << text;
    }
}

TEST_F( DefaultsTest, EveryPathOfThePeerNamesTheActiveCell ) {
    putPeerRedundancy();
    const ScopedEnvironment activeCell( "ACTIVE_CELLID", "7" );
    const std::string groups = groupsOf( "", entityManager() );
    EXPECT_EQ( groups,
               defaultGroup( ownConfig, ownStatus, "cell/7/agent/status/%agentString Agent::Status rD\n" ) +
                   peerReadyGroup( "7" ) );
}

TEST_F( DefaultsTest, ACellWithoutAPairHasAPeerInCell3 ) {
    Kiv::Embedded::cellIdIs( 0 );
    putPeerRedundancy( "" );
    const std::string groups = groupsOf( "", entityManager() );
    EXPECT_THAT( groups, testing::HasSubstr( "\ncell/3/agent/status/%agentString Agent::Status rD\n" ) );
    EXPECT_THAT( groups, testing::HasSubstr( peerReadyGroup( "3" ) ) );
}

TEST_F( DefaultsTest, AnActiveCellThatIsNoNumberIsTheOwnOneInMountsAndZeroInConditions ) {
    const ScopedEnvironment activeCell( "ACTIVE_CELLID", "none" );
    OpenGroup open;
    open.hdlr.addPeerReady( "%agentString", true, true );
    EXPECT_EQ( open.dump(), "agent A\ngroup g 7\ncell/1/agent/status/%agentString Agent::Status rD\n" +
                                peerReadyGroup( "0" ) );
}

TEST_F( DefaultsTest, ANegativeActiveCellIsSignedInConditionsOnly ) {
    const ScopedEnvironment activeCell( "ACTIVE_CELLID", "-1" );
    OpenGroup open;
    open.hdlr.addPeerReady( "%agentString", true, true );
    EXPECT_EQ( open.dump(),
               "agent A\ngroup g 7\ncell/4294967295/agent/status/%agentString Agent::Status rD\n" +
                   peerReadyGroup( "-1" ) );
}

TEST_F( DefaultsTest, APeersStatusGoesToTheOpenGroupAndOnlyWaitingOpensAnother ) {
    struct Row {
        bool peerRedundancy;
        bool waitForReady;
        std::string added;
        std::string trace;
    };
    const std::string peerStatus = "cell/2/agent/status/%agentString Agent::Status rD\n";
    const std::string traced = "8 void Corvid::MountProfileHdlr::addPeerReady(const string&, bool, bool)\n";
    for ( const Row& row : { Row{ false, false, "", "" },
                             { false, true, "", "" },
                             { true, false, peerStatus, traced },
                             { true, true, peerStatus + peerReadyGroup( "2" ), traced } } ) {
        OpenGroup open;
        const CapturedTrace trace;
        open.hdlr.addPeerReady( "%agentString", row.peerRedundancy, row.waitForReady );
        EXPECT_EQ( open.dump(), "agent A\ngroup g 7\n" + row.added );
        EXPECT_EQ( trace.text(), row.trace );
        EXPECT_EQ( open.hdlr.currMgName(), row.peerRedundancy && row.waitForReady ? "peerReady" : "g" );
    }
}

TEST_F( DefaultsTest, APeerThatIsWaitedForAlreadyIsNotWaitedForTwice ) {
    OpenGroup open;
    open.hdlr.addPeerReady( "%agentString", true, true );
    open.hdlr.setBlockingConditional( false );
    const std::string once = open.dump();
    open.hdlr.addMountGroup( "g" );
    open.hdlr.addPeerReady( "%agentString", true, true );
    EXPECT_EQ( open.dump(), once ) << "neither queued again nor made blocking again";

    open.hdlr.addMountGroup( "g" );
    open.hdlr.addPeerReady( "b", true, true );
    const auto& peerReady = *open.hdlr.currMg();
    EXPECT_EQ( peerReady.entireCondition(), "b in /%sysname/Corvid/cell/2/agent/status.entryState and "
                                            "true == /%sysname/Corvid/cell/2/agent/status/b.ready" );
    EXPECT_EQ( peerReady.conditionCol().size(), 4U );
    EXPECT_TRUE( peerReady.blockingConditional() );
}

TEST_F( DefaultsTest, ConfiguredPathsAreMountedForWritingAndInitialWhereTheTrieSaysSo ) {
    Kiv::Embedded::entityIs( configRootPath, Kiv::Embedded::newConfigRoot( { { "z/last", "Z::Z", "i" },
                                                                             { "/a/", "A::A", "riwD" },
                                                                             { "b", "B::B", "rw" },
                                                                             { "c", "C::C", "" },
                                                                             { "d", "", "I" } },
                                                                           true ) );
    OpenGroup open;
    const CapturedTrace trace;
    open.hdlr.addConfigMountProfile();
    EXPECT_EQ( open.dump(), "agent A\ngroup g 7\na A::A wi\nb B::B w\nc C::C w\nd  w\nz/last Z::Z wi\n" );
    EXPECT_EQ( trace.text(), "8 void Corvid::MountProfileHdlr::addConfigMountProfile()\n"
                             "1 adding all config mount paths\n" );
}

TEST_F( DefaultsTest, ConfiguredPathsThatClashAreReportedAndTheOthersMounted ) {
    Kiv::Embedded::entityIs(
        configRootPath, Kiv::Embedded::newConfigRoot(
                            { { "a", "A::A", "" }, { "/a", "B::B", "i" }, { "b", "B::B", "" } }, true ) );
    const ScopedEnvironment testRoot( "K7_CHROOT", "/" );
    Bench bench( "agentName: A\n/a, A::A, r\ninclude: ConfigMountProfile\n/c, C::C, r\n", true,
                 entityManager() );
    bench.run();
    EXPECT_EQ( bench.description(),
               " In mount group 'all' ,  near '\\n', Path a is already present with type: A::A. "
               "Mismatched type: B::B" );
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\na A::A rw\nb B::B w\n" );
}

} // namespace
