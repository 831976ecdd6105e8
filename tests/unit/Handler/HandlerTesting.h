#pragma once

#include "Corvid/ConfigRoot.h"
#include "EmbeddedPlatform.h"
#include "support/ParsedProfile.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

namespace CorvidTest {

/// Sets or unsets an environment variable, and puts back what was there.
class ScopedEnvironment {
  public:
    explicit ScopedEnvironment( std::string name, const std::optional<std::string>& value = std::nullopt )
        : name_( std::move( name ) ) {
        if ( const char* before = std::getenv( name_.c_str() ) )
            before_ = before;
        put( value );
    }
    ScopedEnvironment( const ScopedEnvironment& ) = delete;
    ScopedEnvironment& operator=( const ScopedEnvironment& ) = delete;
    ~ScopedEnvironment() { put( before_ ); }

  private:
    void put( const std::optional<std::string>& value ) const {
        if ( value )
            ::setenv( name_.c_str(), value->c_str(), 1 );
        else
            ::unsetenv( name_.c_str() );
    }

    std::string name_;
    std::optional<std::string> before_;
};

/// Stops the process when something waits that must not wait.
class Deadline {
  public:
    explicit Deadline( unsigned seconds ) { ::alarm( seconds ); }
    Deadline( const Deadline& ) = delete;
    Deadline& operator=( const Deadline& ) = delete;
    ~Deadline() { ::alarm( 0 ); }
};

/// A path trie that has recorded nothing.
class EmptyPathTrie final : public Brae::PathTrie {
  public:
    [[nodiscard]] Kiv::String8 prefixTypename( const Kiv::String8& ) const override { return {}; }
    [[nodiscard]] Kiv::String8 prefixFlags( const Kiv::String8& ) const override { return {}; }
};

/// An empty configuration root that does something when it is asked for its paths. The handler asks
/// in the middle of a parse: a door to all that can only be seen or provoked there.
class ProbingConfigRoot final : public Corvid::ConfigRoot {
  public:
    explicit ProbingConfigRoot( std::function<void()> probe ) : probe_( std::move( probe ) ) {}
    [[nodiscard]] bool rootsComplete() const override { return true; }
    [[nodiscard]] const std::vector<Kiv::String8>& configuredPaths() const override {
        probe_();
        return none_;
    }
    [[nodiscard]] const Brae::PathTrie& pathTrie() const override { return trie_; }

  private:
    std::function<void()> probe_;
    std::vector<Kiv::String8> none_;
    EmptyPathTrie trie_;
};

inline constexpr char systemName[] = "sys";
inline constexpr char configRootPath[] = "/sys/Corvid/Corvid/configRoot";

/// A handler that has not run yet, over an agent file in a directory of its own.
struct Bench {
    explicit Bench( std::string_view text, bool addDefaults = false,
                    const Kiv::Ptr<const Corvid::EntityManager>& entityManager = nullptr )
        : agentFile( dir.file( "Agent", text ) ), hdlr( agentFile, root, entityManager, addDefaults ) {}

    /// Runs the handler and keeps what it traced and printed. Exceptions pass through.
    void run() {
        const CapturedTrace capturedTrace;
        const CapturedStandardError capturedError;
        hdlr.run();
        trace = capturedTrace.text();
        standardError = capturedError.text();
    }
    [[nodiscard]] std::string description() const { return hdlr.errorDesc().description().str(); }
    [[nodiscard]] std::string dump() const {
        return hdlr.agentProfile() ? dumped( *hdlr.agentProfile() ) : "no profile\n";
    }

    TempDir dir;
    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root{ new Corvid::PassiveAgentProfileDir };
    std::string agentFile;
    Corvid::MountProfileHdlr hdlr;
    std::string trace;
    std::string standardError;
};

/// Every test finds the platform and the environment as they are on a real system without a peer, and leaves
/// them so.
class HandlerTest : public testing::Test {
  public:
    HandlerTest( const HandlerTest& ) = delete;
    HandlerTest& operator=( const HandlerTest& ) = delete;

  protected:
    using Operation = std::function<void( Corvid::MountProfileHdlr& )>;

    HandlerTest() { resetPlatform(); }
    ~HandlerTest() override { resetPlatform(); }

    /// Calls an operation in the middle of the parse of an agent file, with the group "all" open.
    static void runDuringParse( Bench& bench, const std::function<void()>& operation ) {
        const ScopedEnvironment testRoot( "K7_CHROOT", "/" );
        Kiv::Embedded::entityIs( configRootPath, new ProbingConfigRoot( operation ) );
        bench.run();
    }

    /// The message that an operation reports when it is called during a parse, less what the parser puts
    /// before it. Answers so when there is no report, or no such prefix.
    static std::string messageOf( const Operation& operation ) {
        Bench bench( "agentName: A\ninclude: ConfigMountProfile\n", false, entityManager() );
        std::string group;
        runDuringParse( bench, [&] {
            operation( bench.hdlr );
            group = bench.hdlr.currMgName();
        } );
        const std::string prefix = " In mount group '" + group + "' ,  near '\\n', ";
        if ( bench.hdlr.validProfileFile() )
            return "no report";
        if ( !bench.description().starts_with( prefix ) )
            return "strange prefix: " + bench.description();
        return bench.description().substr( prefix.size() );
    }

    static Kiv::Ptr<const Corvid::EntityManager> entityManager() {
        return Kiv::Embedded::newEntityManager( systemName, false );
    }

  private:
    static void resetPlatform() {
        Kiv::Embedded::entitiesDel();
        Kiv::Embedded::cellIdIs( 1 );
    }

    ScopedEnvironment testRoot_{ "K7_CHROOT" };
    ScopedEnvironment waitForReady_{ "AGENT_WAIT_FOR_READY" };
    ScopedEnvironment activeCell_{ "ACTIVE_CELLID" };
};

} // namespace CorvidTest

/// Expects a statement to stop the process on an assertion of the handler with exactly this text.
#ifdef KIV_NO_ASSERTIONS
#define EXPECT_ASSERTION( statement, text ) GTEST_SKIP() << "compiled out: " << ( text )
#else
#define EXPECT_ASSERTION( statement, text )                                                                  \
    EXPECT_EXIT( statement, testing::KilledBySignal( SIGABRT ),                                              \
                 testing::HasSubstr( std::string( "ProfileParser/MountProfileHdlr: assertion failed: " ) +   \
                                     ( text ) + " (" ) )
#endif
