// What the command tells when memory runs out or the system refuses something. Every run is a child of its
// own.

#include "AllocationFaults.h"
#include "SystemFaults.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

/// The command's own main(), compiled under this name.
int mountprofileMain( int argc, char** argv );

using namespace CorvidTest;

namespace {

struct Answer {
    int exitStatus = -1;
    std::string out;
    std::string err;
    bool hasFailed = false; ///< whether what was to fail did
};

bool sameForTheUser( const Answer& one, const Answer& other ) {
    return one.exitStatus == other.exitStatus && one.out == other.out && one.err == other.err;
}

bool isComplaint( const Answer& answer ) {
    std::string_view line = answer.err; // the last one: `check` tells of each file as soon as it can
    line.remove_prefix( line.find_last_of( '\n', line.size() - 2 ) + 1 );
    return answer.exitStatus == 2 && answer.out.empty() && line.starts_with( "mountprofile: " ) &&
           ( line.ends_with( ": Cannot allocate memory [MP090]\n" ) ||
             line.ends_with( ": Cannot allocate memory [MP092]\n" ) ||
             line == "mountprofile: Cannot allocate memory [MP094]\n" ||
             line == "mountprofile: std::bad_alloc [MP094]\n" );
}

void PrintTo( const Answer& answer, std::ostream* out ) {
    *out << "exit status " << answer.exitStatus << "\nstandard output:\n"
         << answer.out << "standard error:\n"
         << answer.err;
}

using File = std::unique_ptr<std::FILE, int ( * )( std::FILE* )>;

std::string contentOf( const File& file ) {
    std::string content;
    std::rewind( file.get() );
    for ( int c = 0; ( c = std::fgetc( file.get() ) ) != EOF; )
        content += static_cast<char>( c );
    return content;
}

/// One fault, set up in the child. Answers at its end whether it came to it.
using Fault = std::function<bool( const std::function<void()>& run )>;

Fault failingAllocation( long n ) {
    return [n]( const std::function<void()>& run ) {
        const FailingAllocation failing( n );
        run();
        return failing.hasFailed();
    };
}

/// Lets the function succeed again: the child's end may need it. @return whether it came to the fault.
bool ended( FaultyFunction& function ) {
    const bool hasFailed = function.hasFailed();
    function.failAt( 0 );
    return hasFailed;
}

Fault failingCall( FaultyFunction& function, long n, int error ) {
    return [&function, n, error]( const std::function<void()>& run ) {
        function.failAt( n, error );
        run();
        return ended( function );
    };
}

class CommandFaultsTest : public testing::Test {
  protected:
    [[nodiscard]] Answer answer( std::vector<std::string> arguments, const Fault& fault ) const {
        const File out( std::tmpfile(), &std::fclose );
        const File err( std::tmpfile(), &std::fclose );
        auto* const hasFailed = static_cast<bool*>(
            ::mmap( nullptr, sizeof( bool ), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0 ) );
        arguments.insert( arguments.begin(), "mountprofile" );
        std::vector<char*> pointers;
        for ( std::string& argument : arguments )
            pointers.push_back( argument.data() );
        pointers.push_back( nullptr );
        const pid_t child = ::fork();
        if ( child == 0 ) {
            ::dup2( ::fileno( out.get() ), STDOUT_FILENO );
            ::dup2( ::fileno( err.get() ), STDERR_FILENO );
            int status = -1;
            *hasFailed = fault(
                [&] { status = mountprofileMain( static_cast<int>( arguments.size() ), pointers.data() ); } );
            ::_exit( status );
        }
        int status = 0;
        EXPECT_EQ( ::waitpid( child, &status, 0 ), child );
        Answer result{ WIFEXITED( status ) ? WEXITSTATUS( status ) : 128 + WTERMSIG( status ),
                       contentOf( out ), contentOf( err ), *hasFailed };
        ::munmap( hasFailed, sizeof( bool ) );
        return result;
    }

    TempDir dir;
    const std::string agent =
        dir.file( "Agent", "agentName: A-%slot\nmountFilter: f\n  acknowledged, "
                           "\"a long text of a key\"\n/a/b/c/of/some/length, T::T, r, f\n"
                           "include: *.inc\nmountGroup: g\nconditionBlocker: "
                           "%slot == %slot\n/d, T::T, w\n" );
    const std::string include = dir.file( "a.inc", "/from/the/include/file, T::T, r\n" );
    const std::string invalid = dir.file( "Invalid", "agentName: B\n/a, T::T, X\n" );
    const std::string configured = dir.file( "configured", "a/long/path/of/the/configured T::T rwifn\n" );
};

TEST_F( CommandFaultsTest, MemoryThatRunsOutIsToldInOneLine ) {
    const std::vector<std::vector<std::string>> commands{
        { "--version" },
        { "show", agent },
        { "show", "--json", "--system", "ar", "--redundancy", "--config-root", configured, agent },
        { "show", invalid },
        { "show", "--origin", agent },
        { "show", "--json", "--origin", agent },
        { "show", "--json", "--depfile", dir.path() + "/deps", agent },
        { "check", "--jobs", "1", dir.path() },
        { "check", "--jobs", "1", "--format", "json", invalid },
        { "check", "--jobs", "1", "--format", "sarif", invalid },
        { "check", "--jobs", "1", "--format", "gcc", invalid },
        { "check", "--jobs", "1", "--format", "github", invalid },
        { "check", "--list-files", invalid },
        { "tokens", agent },
        { "why", agent, "/a/b/c/of/some/length" },
        { "explain", "MP042" },
    };
    long start = 0; // making the program's options is the same for all commands
    for ( const auto& command : commands ) {
        const Answer sound = answer( command, failingAllocation( 0 ) );
        long n = start;
        long complaints = 0;
        for ( Answer faulty; n == start || faulty.hasFailed; ) {
            faulty = answer( command, failingAllocation( ++n ) );
            if ( sameForTheUser( faulty, sound ) ) // sorting, for one, also works without memory of its own
                continue;
            ++complaints;
            ASSERT_TRUE( isComplaint( faulty ) ) << testing::PrintToString( command ) << ", allocation " << n
                                                 << ": " << testing::PrintToString( faulty );
        }
        EXPECT_GT( complaints, ( n - start ) * 9 / 10 ) << testing::PrintToString( command );
        EXPECT_GT( n, start + 20 );
        if ( start == 0 )
            start = n - 100;
    }
}

TEST_F( CommandFaultsTest, AFileThatCannotBeReadIsToldWithTheReason ) {
    const struct {
        FaultyFunction& function;
        int error;
        const char* reason;
    } rows[] = {
        { systemRead, EIO, "Input/output error" },
        { systemOpen, EMFILE, "Too many open files" },
    };
    for ( const auto& [function, error, reason] : rows )
        for ( const std::string command : { "show", "check", "tokens" } ) {
            const auto always = [&function = function, error = error]( const std::function<void()>& run ) {
                function.failFrom( 1, error );
                run();
                return ended( function );
            };
            const Answer faulty = answer( { command, agent }, always );
            EXPECT_EQ( faulty.exitStatus, 2 ) << function.name;
            EXPECT_THAT( faulty.err, testing::StartsWith( "mountprofile: " + agent + ": " ) );
            EXPECT_THAT( faulty.err, testing::EndsWith( std::string( reason ) + " [MP090]\n" ) )
                << function.name;
            EXPECT_EQ( faulty.out, command == "check" ? "1 file checked: 0 valid, 1 unreadable\n" : "" );
        }
}

TEST_F( CommandFaultsTest, AFileThatItIncludesAndThatCannotBeReadIsToldAsSuch ) {
    const Answer faulty = answer( { "show", agent }, failingCall( systemOpen, 2, EMFILE ) );
    EXPECT_EQ( faulty.exitStatus, 2 );
    EXPECT_EQ( faulty.out, "" );
    EXPECT_EQ( faulty.err, "mountprofile: " + agent + ": " + include +
                               ", included in line 5: It cannot be read [MP090]\n"
                               "    5 | include: *.inc\n"
                               "      | ^~~~~~~~~~~~~~\n" );
}

TEST_F( CommandFaultsTest, AFileThatItIncludesAndThatIsNotFoundAgainIsToldByThePattern ) {
    const auto notExpandedAgain = []( const std::function<void()>& run ) {
        systemOpen.failAt( 2, EMFILE );
        systemGlob.failAt( 2 );
        run();
        return ended( systemOpen ) && ended( systemGlob );
    };
    const auto oneMoreNow = [this]( const std::function<void()>& run ) {
        int filesRead = 0;
        atTheEndOfFilesDo( [&] {
            if ( ++filesRead == 2 )
                dir.file( "b.inc", "" );
        } );
        systemFstat.failAt( 4, EIO );
        run();
        atTheEndOfFilesDo( {} );
        return ended( systemFstat );
    };
    for ( const Fault& fault : { Fault( notExpandedAgain ), Fault( oneMoreNow ) } ) {
        const Answer faulty = answer( { "show", agent }, fault );
        EXPECT_TRUE( faulty.hasFailed );
        EXPECT_EQ( faulty.exitStatus, 2 );
        EXPECT_THAT( faulty.err, testing::HasSubstr( dir.path() + "/*.inc, included in line 5: "
                                                                  "No such file or directory [MP090]\n" ) );
    }
}

TEST_F( CommandFaultsTest, ADirectoryThatCannotBeListedToItsEndIsTold ) {
    const Answer faulty =
        answer( { "check", "--jobs", "1", dir.path() }, failingCall( systemReaddir, 2, EIO ) );
    EXPECT_EQ( faulty.exitStatus, 2 );
    EXPECT_THAT( faulty.out, testing::HasSubstr( ", 1 unreadable" ) );
    EXPECT_THAT( faulty.err,
                 testing::HasSubstr( "mountprofile: " + dir.path() + ": Input/output error [MP090]\n" ) );
}

TEST_F( CommandFaultsTest, ADepfileThatCannotBeWrittenIsTold ) {
    const std::string depfile = dir.path() + "/deps";
    const std::vector<std::string> command{ "show", "--depfile", depfile, agent };
    const Answer sound = answer( command, failingAllocation( 0 ) );
    ASSERT_EQ( sound.exitStatus, 0 );
    for ( FaultyFunction* function :
          { &systemWrite, &systemFchmod, &systemFstat, &systemClose, &systemRename } ) {
        int complaints = 0;
        Answer faulty;
        for ( long n = 1; n == 1 || faulty.hasFailed; ++n ) {
            faulty = answer( command, failingCall( *function, n, ENOSPC ) );
            if ( faulty.err.find( "deps: No space left on device" ) != std::string::npos )
                complaints += faulty.exitStatus == 2 && faulty.out == sound.out;
        }
        EXPECT_EQ( complaints, 1 ) << function->name;
    }
    for ( const auto& entry : std::filesystem::directory_iterator( dir.path() ) )
        EXPECT_THAT( entry.path().string(), testing::Not( testing::HasSubstr( "deps." ) ) ) << "left behind";
}

TEST_F( CommandFaultsTest, WithoutALocaleOfUtf8AllThatIsNotAsciiIsEscaped ) {
    const std::string named = dir.file( "\xC3\xA9", "agentName: A\n\"/\xC3\xA9\", T::T, r\n" );
    const Fault noLocale = failingCall( systemNewlocale, 1, ENOENT );
    EXPECT_THAT( answer( { "show", named }, noLocale ).out,
                 testing::HasSubstr( "    \\xC3\\xA9  T::T  r\n" ) );
    EXPECT_THAT( answer( { "check", "--format", "json", named }, noLocale ).out,
                 testing::HasSubstr( "/\\\\xC3\\\\xA9\"" ) );
}

TEST_F( CommandFaultsTest, AReadOfStandardInputThatIsInterruptedIsRepeated ) {
    const auto interrupted = [this]( const std::function<void()>& run ) {
        ::dup2( ::open( agent.c_str(), O_RDONLY ), STDIN_FILENO );
        systemRead.failAt( 1, EINTR );
        run();
        return ended( systemRead );
    };
    const Answer faulty = answer( { "show", "--stdin-path", agent, "-" }, interrupted );
    EXPECT_TRUE( faulty.hasFailed );
    EXPECT_TRUE( sameForTheUser( faulty, answer( { "show", agent }, failingAllocation( 0 ) ) ) )
        << faulty.err;
}

TEST_F( CommandFaultsTest, AFileThatCanBeReadAgainIsToldInTheLibrarysWords ) {
    const auto onlyOnce = []( const std::function<void()>& run ) {
        systemFstat.failAt( 1, EIO );
        systemRead.failAt( 1, EINTR ); // looking for the reason repeats that
        run();
        return ended( systemFstat ) && ended( systemRead );
    };
    const Answer faulty = answer( { "show", agent }, onlyOnce );
    EXPECT_TRUE( faulty.hasFailed );
    EXPECT_EQ( faulty.exitStatus, 2 );
    EXPECT_THAT( faulty.err,
                 testing::EndsWith( "Antlr failed to create file stream for " + agent + " [MP090]\n" ) );
}

TEST_F( CommandFaultsTest, ADirectoryThatDoesNotTellWhatItsEntriesAreIsListedAllTheSame ) {
    std::filesystem::create_directory( dir.path() + "/below" );
    dir.file( "below/Agent", "agentName: C\n" );
    std::filesystem::create_directory_symlink( ".", dir.path() + "/below/loop" );
    std::filesystem::create_symlink( "Agent", dir.path() + "/below/link" );
    const auto hidden = []( const std::function<void()>& run ) {
        entryTypesAreHidden( true );
        run();
        entryTypesAreHidden( false );
        return false;
    };
    const std::vector<std::string> check{ "check", "--jobs", "1", dir.path() };
    const Answer sound = answer( check, failingAllocation( 0 ) );
    EXPECT_THAT( sound.out, testing::HasSubstr( "4 files checked: 3 valid, 1 invalid; 2 other" ) );
    EXPECT_TRUE( sameForTheUser( answer( check, hidden ), sound ) );
    const auto gone = [&hidden]( const std::function<void()>& run ) {
        systemLstat.failFrom( 1, ENOENT );
        hidden( run );
        return ended( systemLstat );
    };
    const Answer withoutDirectories = answer( check, gone ); // they are looked for by lstat() alone
    EXPECT_TRUE( withoutDirectories.hasFailed );
    EXPECT_THAT( withoutDirectories.out,
                 testing::HasSubstr( "2 files checked: 1 valid, 1 invalid; 2 other" ) );
}

TEST_F( CommandFaultsTest, ThreadsThatTheSystemDoesNotGrantAreDoneWithout ) {
    const std::vector<std::string> check{ "check", "--jobs", "3", dir.path() };
    const Answer sound = answer( check, failingAllocation( 0 ) );
    for ( const int refused : { 1, 2 } ) {
        const Answer faulty = answer( check, failingCall( newThread, refused, EAGAIN ) );
        EXPECT_TRUE( faulty.hasFailed );
        EXPECT_TRUE( sameForTheUser( faulty, sound ) ) << faulty.err;
    }
}

TEST_F( CommandFaultsTest, AWriteThatFailsIsNotClaimedAndOneThatIsInterruptedIsRepeated ) {
    const Answer sound = answer( { "show", agent }, failingAllocation( 0 ) );
    EXPECT_EQ( sound.exitStatus, 0 );
    EXPECT_EQ( answer( { "show", agent }, failingCall( systemWrite, 1, EINTR ) ).out, sound.out );
    const Answer faulty = answer( { "show", agent }, failingCall( systemWrite, 1, ENOSPC ) );
    EXPECT_EQ( faulty.exitStatus, 2 );
    EXPECT_EQ( faulty.out, "" );
    EXPECT_EQ( faulty.err,
               "mountprofile: cannot write to standard output: No space left on device [MP094]\n" );
}

} // namespace
