// What a run does when the system or the parser library refuses something.

#include "SystemFaults.h"
#include "Brae/Glob.h"
#include "ProfileParser/InputFile.h"
#include "unit/Handler/HandlerTesting.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <new>
#include <stdexcept>

#include <fcntl.h>
#include <sys/resource.h>

using namespace CorvidTest;

namespace {

constexpr char parseFileSignature[] = "void Corvid::MountProfileHdlr::parseFile(const string&, bool): ";

class SystemFaultsTest : public HandlerTest {
  protected:
    ~SystemFaultsTest() override {
        for ( FaultyFunction* function : { &newStringStream, &newLexer, &newTokenStream, &newParser,
                                           &systemOpen, &systemFstat, &systemRead } )
            function->failAt( 0 );
        readsAtMost( 0 );
        afterEachReadDo( {} );
        atTheEndOfFilesDo( {} );
    }

    /// Runs a handler over the agent file, into a directory that holds another profile, which is left alone.
    /// @return what it threw, or what it left behind.
    [[nodiscard]] std::string outcome( bool plainTokens = false ) const {
        const Kiv::Ptr<Corvid::PassiveAgentProfileDir> root( new Corvid::PassiveAgentProfileDir );
        const auto other = root->agentProfileIs( Kiv::Name( "Other" ) );
        other->rootFlagsIs( "rw" );
        const std::string dumpOfOther = dumped( *other );
        std::string result;
        const CapturedStandardError standardError;
        try {
            Corvid::MountProfileHdlr hdlr( agentFile, root, nullptr, false );
            hdlr.plainTokensIs( plainTokens );
            hdlr.run();
            result = hdlr.validProfileFile() ? "valid" : hdlr.errorDesc().description().str();
        } catch ( const std::bad_alloc& ) {
            result = "bad_alloc";
        } catch ( const std::runtime_error& error ) {
            result = error.what();
        }
        EXPECT_EQ( dumped( *other ), dumpOfOther );
        return result;
    }
    [[nodiscard]] std::string notOpened( const std::string& file ) const {
        return std::string( parseFileSignature ) + "Antlr failed to create file stream for " + file;
    }
    /// The agent file's parse ends like this when an include file could not be read.
    [[nodiscard]] std::string includeNotRead() const {
        return std::string( parseFileSignature ) + "runtime error while parsing " + agentFile;
    }

    TempDir dir;
    const std::string agentFile = dir.file( "Agent", "agentName: A\n/a, T::T, r\ninclude: inc*\n" );
    const std::string include = dir.file( "inc1", "/b, T::T, r\n" );
};

TEST_F( SystemFaultsTest, APartThatTheParserLibraryCannotMakeIsOneForWhichThereIsNoMemory ) {
    dir.file( "inc2",
              "\"/c\", T::T, r\n/~, T::T, r\n" ); // in error: the fast token path needs the lexer, too
    for ( const bool plainTokens : { false, true } )
        for ( FaultyFunction* make : { &newStringStream, &newLexer, &newTokenStream, &newParser } ) {
            long n = 1;
            for ( ;; ++n ) {
                make->failAt( n );
                const std::string result = outcome( plainTokens );
                if ( !make->hasFailed() )
                    break;
                EXPECT_EQ( result, "bad_alloc" ) << make->name << ", call " << n;
            }
            EXPECT_GT( n, 1 ) << make->name << " is not called";
            make->failAt( 0 );
        }
}

TEST_F( SystemFaultsTest, AFileOnWhichASystemCallFailsIsNotOpened ) {
    for ( FaultyFunction* call : { &systemOpen, &systemFstat, &systemRead } ) {
        long n = 1;
        for ( std::string result; ( call->failAt( n, EIO ), result = outcome() ) != "valid"; ++n ) {
            ASSERT_TRUE( call->hasFailed() ) << call->name << ": " << result;
            EXPECT_THAT( result, testing::AnyOf( notOpened( agentFile ), includeNotRead() ) )
                << call->name << ", call " << n;
        }
        EXPECT_FALSE( call->hasFailed() ) << call->name << ", call " << n << " failed unnoticed";
        EXPECT_GT( n, 2 ) << call->name << " is called for both files";
        call->failAt( 0 );
    }
}

TEST_F( SystemFaultsTest, AFileThatIsReadInPiecesIsReadWhole ) {
    readsAtMost( 3 );
    for ( const long interrupted :
          { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19 } ) {
        systemRead.failAt( interrupted, EINTR );
        EXPECT_EQ( outcome(), "valid" ) << interrupted;
    }
    for ( const long broken : { 1, 2, 8, 13 } ) {
        systemRead.failAt( broken, EIO );
        EXPECT_EQ( outcome(), notOpened( agentFile ) ) << broken;
    }
}

TEST_F( SystemFaultsTest, AFileThatChangesWhileItIsReadIsNotOpened ) {
    using namespace std::chrono_literals;
    const auto written = std::filesystem::file_time_type( 1000s );
    const std::function<void()> changes[] = {
        [this] { std::ofstream( agentFile, std::ios::app ) << "\n"; },
        [&] { std::filesystem::last_write_time( agentFile, written + 1s ); },
        [&] { std::filesystem::last_write_time( agentFile, written + 1ns ); },
    };
    for ( const auto& change : changes ) {
        std::filesystem::last_write_time( agentFile, written );
        atTheEndOfFilesDo( change );
        EXPECT_EQ( outcome(), notOpened( agentFile ) );
        atTheEndOfFilesDo( {} );
        EXPECT_EQ( outcome(), "valid" );
    }
}

TEST_F( SystemFaultsTest, AFileThatShrinksWhileItIsReadIsNotOpened ) {
    const std::string text = "agentName: A\n/a, T::T, r\ninclude: inc*\n";
    readsAtMost( 10 );
    for ( const std::size_t left : { 0, 5, 10, 15, 38 } ) {
        dir.file( "Agent", text );
        afterEachReadDo( [&] { std::filesystem::resize_file( agentFile, left ); } );
        EXPECT_EQ( outcome(), notOpened( agentFile ) ) << left;
    }
    afterEachReadDo( {} );
    dir.file( "Agent", text );
    EXPECT_EQ( outcome(), "valid" );
}

TEST_F( SystemFaultsTest, APatternForWhichThereIsNoMemoryIsNotExpanded ) {
    std::vector<std::string> matches{ "left from another call" };
    systemGlob.failAt( 1 );
    EXPECT_FALSE( Brae::getGlobResult( include, matches ) );
    systemGlob.failAt( 0 );
    EXPECT_THAT( matches, testing::IsEmpty() );
    EXPECT_TRUE( Brae::getGlobResult( include, matches ) );
    EXPECT_THAT( matches, testing::ElementsAre( include ) );
}

TEST_F( SystemFaultsTest, WithoutAFileDescriptorNoFileIsOpened ) {
    rlimit before{};
    ASSERT_EQ( ::getrlimit( RLIMIT_NOFILE, &before ), 0 );
    const int lowestFree = ::open( "/dev/null", O_RDONLY | O_CLOEXEC );
    ASSERT_GE( lowestFree, 0 );
    ::close( lowestFree );
    const auto outcomeWith = [&]( int descriptors ) {
        rlimit low = before;
        low.rlim_cur = static_cast<rlim_t>( lowestFree ) + static_cast<rlim_t>( descriptors );
        EXPECT_EQ( ::setrlimit( RLIMIT_NOFILE, &low ), 0 );
        std::string result = outcome();
        EXPECT_EQ( ::setrlimit( RLIMIT_NOFILE, &before ), 0 );
        return result;
    };
    // Both outcomes first where there are some: the undefined behaviour sanitizer needs descriptors to look
    // at a type that it has not met.
    EXPECT_EQ( outcomeWith( 3 ), "valid" );
    systemOpen.failAt( 1, EMFILE );
    EXPECT_EQ( outcomeWith( 3 ), notOpened( agentFile ) );
    EXPECT_EQ( outcomeWith( 1 ), "valid" ); // a file is closed before the next one is opened
    EXPECT_EQ( outcomeWith( 0 ), notOpened( agentFile ) );
}

TEST_F( SystemFaultsTest, DescriptorsAreGivenBackWhateverFails ) {
    const auto openDescriptors = [] {
        return std::distance( std::filesystem::directory_iterator( "/proc/self/fd" ), {} );
    };
    const auto before = openDescriptors();
    for ( FaultyFunction* call : { &systemOpen, &systemFstat, &systemRead, &newParser } )
        for ( const long n : { 1, 2, 3 } ) {
            call->failAt( n, EIO );
            static_cast<void>( outcome() );
            call->failAt( 0 );
        }
    EXPECT_EQ( openDescriptors(), before );
}

} // namespace
