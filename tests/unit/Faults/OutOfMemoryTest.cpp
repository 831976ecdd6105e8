// Runs in which memory runs out: at every single allocation of our own code, one after the other.

#include "AllocationFaults.h"
#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/TokenListing.h"
#include "unit/Handler/HandlerTesting.h"

#include <new>
#include <stdexcept>
#include <streambuf>

using namespace CorvidTest;

namespace {

/// Takes what is printed and traced, and needs no memory to do so.
class Silence : public std::streambuf {
  public:
    Silence() : before_( std::cerr.rdbuf( this ) ) {
        Kiv::Embedded::traceSinkIs(
            []( const Kiv::TraceHandle&, unsigned, const char*, unsigned, std::string_view ) {} );
        Kiv::Embedded::traceLevelsAre( "MountProfileHdlr" );
    }
    Silence( const Silence& ) = delete;
    Silence& operator=( const Silence& ) = delete;
    ~Silence() override {
        Kiv::Embedded::traceLevelsAre( "" );
        Kiv::Embedded::traceSinkIs( {} );
        std::cerr.rdbuf( before_ );
    }

  protected:
    int_type overflow( int_type c ) override { return traits_type::not_eof( c ); }
    std::streamsize xsputn( const char*, std::streamsize count ) override { return count; }

  private:
    std::streambuf* before_;
};

struct Scene {
    const char* name;
    const char* description; ///< of the error
    std::string agent;
    std::map<std::string, std::string> files = {};
};

constexpr char wholeLanguage[] = R"(# Everything that a file can hold
agentName: Long-name-of-an-agent-%chassis-%slot$
rootFlags: rw
hybridMount
lowMountPrio
alias: %theSlotOfThePeer = %slot, %chassis
subAgent: the-sub-agent-number-one-%slot
mountFilter: the-filter-of-critical-ones
    severity, "critical, " "or worse than that"
    acknowledged
/hardware/fan/%chassis/%slot/of/a/longer/path, Hardware::Fan::Or::Any::Other::Type, rw
"/a path with blanks" " two parts", Hardware::Fan::Or::Any::Other::Type, r, the-filter-of-critical-ones
include: *.inc
include: ConfigMountProfile
mountFilter: another-filter-that-comes-later
    acknowledged, some-key-of-it
mountGroup: the-group-of-power-supplies, 20
condition: 1 <= len( /%sysname/hardware/power.entryState ) and some-text == /%sysname/a.b and %slot == %theSlotOfThePeer
/hardware/power/of/this/%chassis, Hardware::PowerSupply, rwfin, another-filter-that-comes-later
mountGroup: the-group-of-power-supplies
mountGroup: the-group-that-blocks
conditionBlocker: %slot == %theSlotOfThePeer
/hardware/power/of/this/%chassis, Hardware::PowerSupply, r
)";

/// A line of more tokens than the parser's window of them keeps.
std::string longLine() {
    std::string text = "agentName: A\n/a";
    for ( int i = 0; i < 4200; ++i )
        text += "/b";
    return text + ", Hardware::Fan, X\n";
}

/// Files whose runs take every way that a run can take.
const Scene scenes[] = {
    { "the whole language",
      "",
      wholeLanguage,
      { { "a-long-name-of-a-file.inc", "/from/the/include/file/%slot, Included::Entity, r\n" },
        { "b.inc", "\n/from/the/other/include/file, Included::Entity, wi\n" } } },
    { "no agent file", "", "/hardware/fan/of/some/chassis, Hardware::Fan, r\n" },
    { "a lexer error", "Unrecongnized character , near '~'\n",
      "agentName: A\n/hardware/fan/of/some/chassis ~ Hardware::Fan, r\n" },
    { "a lexer error in a later line", "EOL or EOF while scanning string literal, near '\\n'\n",
      "agentName: A\nalias: %a = %b\n\"not closed\n" },
    { "a syntax error", " In mount group 'all' ,  near 'r', Invalid kiv type.",
      "agentName: A\n/hardware/fan/of/some/chassis Hardware::Fan, r\n" },
    { "a syntax error that the grammar finds",
      " In mount group 'g' ,  near 'hybridMount', Failed to associate this line to mount filter or mount "
      "group.",
      "agentName: A\nmountGroup: g\nhybridMount\n" },
    { "an error that the handler finds", " In mount group 'all' ,  near '\\n', illegal flag 'X'",
      "agentName: A\n/hardware/fan, Hardware::Fan, X\n" },
    { "an error in an include file",
      " In include file,  near '\\n', illegal flag 'X'",
      "agentName: A\ninclude: inc*\n",
      { { "inc1", "/a, A::A, r\n" }, { "inc2", "/hardware/fan/of/some/chassis, Hardware::Fan, X\n" } } },
    { "a syntax error in an include file",
      " In include file,  near 'hybridMount', Include file should contain only mounts.",
      "agentName: A\ninclude: inc*\n",
      { { "inc1", "/a, A::A, r\nhybridMount\n" } } },
    { "an include pattern without a match",
      " In mount group 'all' ,  near '\\n', No include file found matching",
      "agentName: A\ninclude: a-long-name-of-no-file\n" },
    { "a long line", " In mount group 'all' ,  near '\\n', illegal flag 'X'", longLine() },
    { "an error in the title", " In agent title,  near '-', $ allowed with only last template key",
      "agentName: A-%b-%b-%a$-%c\n" },
};

class OutOfMemoryTest : public HandlerTest {
  protected:
    OutOfMemoryTest() {
        using Redundancy::Mode;
        Kiv::Embedded::entityIs( "/sys/Corvid/redundancy/status",
                                 Kiv::Embedded::newRedundancyStatus( Mode::hotStandby, Mode::hotStandby ) );
        Kiv::Embedded::entityIs(
            configRootPath,
            Kiv::Embedded::newConfigRoot(
                { { "a/configured/path/of/some/length", "Configured::Entity", "rw" } }, true ) );
        static_cast<void>( Corvid::handlerTrace() ); // made once, kept for good
    }

    [[nodiscard]] static std::string descriptionOf( const std::string& agentFile ) {
        const Silence silence;
        Corvid::MountProfileHdlr hdlr( agentFile, new Corvid::PassiveAgentProfileDir, entityManager(), true );
        hdlr.run();
        return hdlr.errorDesc().description().str();
    }

    /// A whole life of a handler whose n-th allocation fails: it ends in the one exception that tells so,
    /// leaves the directory's other profile alone, and gives back everything. @return whether there were that
    /// many.
    bool failsAt( long n, const std::string& agentFile, bool plainTokens ) {
        const long before = liveAllocations();
        bool failed = false;
        bool threw = false;
        {
            const Kiv::Ptr<Corvid::PassiveAgentProfileDir> root( new Corvid::PassiveAgentProfileDir );
            const auto other = root->agentProfileIs( Kiv::Name( "Other" ) );
            other->mountGroupIs( Kiv::Name( "all" ), 99 )
                ->mountProfileIs( Corvid::Mount( "a/b", "T::T", "r" ) );
            const std::string dumpOfOther = dumped( *other );
            const auto manager = entityManager();
            {
                const FailingAllocation failing( n );
                try {
                    Corvid::MountProfileHdlr hdlr( agentFile, root, manager, true );
                    hdlr.plainTokensIs( plainTokens );
                    hdlr.run();
                } catch ( const std::bad_alloc& ) {
                    threw = true;
                }
                failed = failing.hasFailed();
            }
            EXPECT_EQ( threw, failed );
            EXPECT_EQ( dumped( *other ), dumpOfOther );
        }
        EXPECT_EQ( liveAllocations(), before );
        return failed;
    }

    const ScopedEnvironment testRoot{ "K7_CHROOT", "/" };
    const ScopedEnvironment waitForReady{ "AGENT_WAIT_FOR_READY", "1" };
    TempDir dir;
};

TEST_F( OutOfMemoryTest, EveryFailedAllocationEndsTheRunInABadAllocAndLeavesNothingBehind ) {
    for ( const Scene& scene : scenes ) {
        for ( const auto& [name, text] : scene.files )
            dir.file( name, text );
        const std::string agentFile = dir.file( "Agent", scene.agent );
        EXPECT_THAT( descriptionOf( agentFile ), testing::StartsWith( scene.description ) ) << scene.name;
        for ( const bool plainTokens : { false, true } ) {
            const Silence silence;
            long n = 1;
            while ( failsAt( n, agentFile, plainTokens ) )
                ++n;
            EXPECT_GT( n, 3 ) << scene.name;
        }
        for ( const auto& [name, text] : scene.files )
            std::filesystem::remove( dir.path() + "/" + name );
    }
}

TEST_F( OutOfMemoryTest, ATokenListingForWhichThereIsNoMemoryIsGivenUp ) {
    const std::string file = dir.file( "Agent", wholeLanguage + std::string( "~\n" ) );
    long n = 1;
    for ( bool failed = true; failed; ++n ) {
        const long before = liveAllocations();
        bool threw = false;
        {
            const FailingAllocation failing( n );
            try {
                static_cast<void>( Corvid::listTokens( file, []( const Corvid::ListedToken& ) {} ) );
            } catch ( const std::bad_alloc& ) {
                threw = true;
            }
            failed = failing.hasFailed();
        }
        ASSERT_EQ( threw, failed ) << n;
        ASSERT_EQ( liveAllocations(), before ) << n;
    }
    EXPECT_GT( n, 3 );
}

} // namespace
