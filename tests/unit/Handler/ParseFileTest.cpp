// Which files are parsed, which are refused, and which parser runs when.

#include "HandlerTesting.h"
#include "ProfileParser/InputFile.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace CorvidTest;
using Corvid::MountProfileHdlr;

namespace {

/// As root, somebody else as long as it lives: root may read everything.
class UnprivilegedUser {
  public:
    UnprivilegedUser() : isOther_( ::geteuid() == 0 && ::seteuid( 65534 ) == 0 ) {}
    UnprivilegedUser( const UnprivilegedUser& ) = delete;
    UnprivilegedUser& operator=( const UnprivilegedUser& ) = delete;
    ~UnprivilegedUser() {
        if ( isOther_ ) {
            EXPECT_EQ( ::seteuid( 0 ), 0 );
        }
    }

  private:
    bool isOther_;
};

class ParseFileTest : public HandlerTest {
  protected:
    /// The text of the std::runtime_error that refuses a file.
    static std::string refusalOf( const std::string& fileName, std::size_t maxFileSize, bool isInclude ) {
        MountProfileHdlr hdlr( "Agent", new Corvid::PassiveAgentProfileDir, nullptr, false );
        hdlr.maxFileSizeIs( maxFileSize );
        try {
            hdlr.parseFile( fileName, isInclude );
        } catch ( const std::runtime_error& error ) {
            EXPECT_TRUE( hdlr.validProfileFile() );
            EXPECT_EQ( hdlr.agentProfile(), nullptr );
            return error.what();
        }
        return "parsed";
    }
    static void expectRefused( const std::string& fileName,
                               std::size_t maxFileSize = MountProfileHdlr::defaultMaxFileSize ) {
        const Deadline deadline( 30 );
        for ( const bool isInclude : { false, true } )
            EXPECT_EQ( refusalOf( fileName, maxFileSize, isInclude ),
                       "void Corvid::MountProfileHdlr::parseFile(const string&, bool): "
                       "Antlr failed to create file stream for " +
                           fileName );
        EXPECT_FALSE( Corvid::readInputFile( fileName, maxFileSize ).has_value() );
    }

    TempDir dir;
    const std::string agent = dir.file( "Agent", "agentName: A\n" );
};

/// A file that takes no room: one long hole.
std::string sparseFile( const TempDir& dir, std::size_t size ) {
    std::string path = dir.file( "sparse" + std::to_string( size ), "" );
    std::filesystem::resize_file( path, size );
    return path;
}

std::string socketIn( const TempDir& dir ) {
    std::string path = dir.path() + "/socket";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy( address.sun_path, sizeof address.sun_path - 1 );
    const int descriptor = ::socket( AF_UNIX, SOCK_STREAM, 0 );
    EXPECT_EQ( ::bind( descriptor, reinterpret_cast<const sockaddr*>( &address ), sizeof address ), 0 );
    ::close( descriptor );
    EXPECT_TRUE( std::filesystem::is_socket( path ) );
    return path;
}

TEST_F( ParseFileTest, WhatIsNoRegularFileIsRefusedAtOnce ) {
    expectRefused( dir.path() + "/missing" );
    expectRefused( "" );
    expectRefused( dir.path() );
    expectRefused( agent + "/" );
    expectRefused( "/dev/null" );
    expectRefused( "/dev/zero" );
    const std::string fifo = dir.path() + "/fifo";
    ASSERT_EQ( ::mkfifo( fifo.c_str(), 0600 ), 0 );
    expectRefused( fifo );
    expectRefused( socketIn( dir ) );
    std::filesystem::create_symlink( "loop", dir.path() + "/loop" );
    expectRefused( dir.path() + "/loop" );
    std::filesystem::create_symlink( "nowhere", dir.path() + "/dangling" );
    expectRefused( dir.path() + "/dangling" );
    EXPECT_NE(
        refusalOf( agent + std::string( "\0ignored", 8 ), MountProfileHdlr::defaultMaxFileSize, false ),
        "parsed" )
        << "not the file whose name ends at the NUL";
}

TEST_F( ParseFileTest, AFileThatMayNotBeReadIsRefused ) {
    std::filesystem::permissions( dir.path(), std::filesystem::perms( 0755 ) );
    std::filesystem::permissions( agent, std::filesystem::perms::none );
    const UnprivilegedUser nobody;
    if ( std::ifstream( agent ).good() )
        GTEST_SKIP() << "this user may read everything and cannot be another one";
    expectRefused( agent );
}

TEST_F( ParseFileTest, AFileLargerThanTheLimitIsRefusedUnread ) {
    EXPECT_EQ( refusalOf( agent, 13, false ), "parsed" );
    expectRefused( agent, 12 );
    expectRefused( agent, 0 );
    EXPECT_EQ( refusalOf( dir.file( "empty", "" ), 0, false ), "parsed" );
    expectRefused( sparseFile( dir, MountProfileHdlr::defaultMaxFileSize + 1 ) );
    EXPECT_TRUE( Corvid::readInputFile( sparseFile( dir, MountProfileHdlr::defaultMaxFileSize ),
                                        MountProfileHdlr::defaultMaxFileSize ) );
}

TEST_F( ParseFileTest, AGivenTextLargerThanTheLimitIsRefused ) {
    const std::string text = "agentName: A\n";
    for ( const std::size_t limit : { text.size() - 1, text.size() } ) {
        Bench bench( "" );
        bench.hdlr.agentTextIs( text );
        bench.hdlr.maxFileSizeIs( limit );
        if ( limit < text.size() )
            EXPECT_THROW( bench.run(), std::runtime_error );
        else
            EXPECT_NO_THROW( bench.run() );
        EXPECT_EQ( bench.hdlr.agentProfile() != nullptr, limit == text.size() );
    }
}

TEST_F( ParseFileTest, NoLimitLetsAFileInThatTheParserLibraryWouldCutShort ) {
    constexpr std::size_t fourGiB = std::size_t{ 4 } << 30;
    MountProfileHdlr hdlr( "Agent", new Corvid::PassiveAgentProfileDir, nullptr, false );
    hdlr.maxFileSizeIs( 3 * fourGiB );
    EXPECT_EQ( hdlr.maxFileSize(), fourGiB - 1 );
    const std::string larger = sparseFile( dir, fourGiB + 20 );
    const Deadline deadline( 30 );
    EXPECT_THAT( refusalOf( larger, 3 * fourGiB, false ), testing::EndsWith( "file stream for " + larger ) );
}

TEST_F( ParseFileTest, AFileThatIsNotAsLongAsItSaysIsRefused ) {
    if ( !std::filesystem::exists( "/proc/self/status" ) )
        GTEST_SKIP() << "no /proc here";
    expectRefused( "/proc/self/status" ); // of no length, but with content
    const char* const shorter =
        "/sys/kernel/mm/transparent_hugepage/enabled"; // a page long, with a line of content
    if ( std::filesystem::exists( shorter ) )
        expectRefused( shorter );
}

TEST_F( ParseFileTest, AFileThatGrowsWhileItIsReadIsParsedWholeOrNotAtAll ) {
    // No line spans two pages: the system shows the first part of such a one alone.
    const std::string growing = dir.file( "growing", "agentName: Agen\n" );
    std::atomic<bool> stop = false;
    std::thread writer( [&] {
        std::ofstream out( growing, std::ios::app );
        for ( int i = 0; i < 2000 && !stop; ++i )
            out << "/path, T::T, rw\n" << std::flush; // one write each
    } );
    for ( int i = 0; i < 200; ++i ) {
        const auto content = Corvid::readInputFile( growing, MountProfileHdlr::defaultMaxFileSize );
        if ( !content )
            continue;
        EXPECT_EQ( content->size % 16, 0U );
        EXPECT_EQ( content->data[content->size - 1], '\n' );
    }
    stop = true;
    writer.join();
    EXPECT_TRUE( Corvid::readInputFile( growing, MountProfileHdlr::defaultMaxFileSize ) );
}

TEST_F( ParseFileTest, AFileIsReadByteByByte ) {
    const std::string bytes( "a\0\xff\r\nb", 6 );
    const auto content = Corvid::readInputFile( dir.file( "bytes", bytes ), 6 );
    ASSERT_TRUE( content );
    EXPECT_EQ( std::string( content->data.get(), content->size ), bytes );
    const auto empty = Corvid::readInputFile( dir.file( "empty", "" ), 6 );
    ASSERT_TRUE( empty );
    EXPECT_EQ( empty->size, 0U );
    EXPECT_NE( empty->data, nullptr );
}

TEST_F( ParseFileTest, ALinkToARegularFileIsFollowed ) {
    std::filesystem::create_symlink( "Agent", dir.path() + "/link" );
    EXPECT_EQ( refusalOf( dir.path() + "/link", MountProfileHdlr::defaultMaxFileSize, false ), "parsed" );
}

TEST_F( ParseFileTest, ParsingAloneNeitherPrintsNorAddsDefaultsNorMarksTheProfile ) {
    Bench bench( "agentName: A\n/a, t\n", true );
    const CapturedStandardError standardError;
    bench.hdlr.parseFile( bench.agentFile, false );
    EXPECT_FALSE( bench.hdlr.validProfileFile() );
    EXPECT_EQ( standardError.text(), "" );
    EXPECT_TRUE( bench.hdlr.agentProfile()->validProfile() );
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\n" );
}

TEST_F( ParseFileTest, TheContextHoldsAParserFromItsStartToItsEnd ) {
    int first = 0;
    int second = 0;
    auto* const agentParser = reinterpret_cast<mountProfileParser_Ctx_struct*>( &first );
    auto* const includeParser = reinterpret_cast<mountProfileParser_Ctx_struct*>( &second );
    Corvid::AntlrParserCtx ctx;
    const auto state = [&] {
        const auto name = [&]( const mountProfileParser_Ctx_struct* parser ) {
            return !parser                   ? "none"
                   : parser == agentParser   ? "agent"
                   : parser == includeParser ? "include"
                                             : "?";
        };
        return std::string( name( ctx.agentFileParserCtx ) ) + " '" + ctx.agentFileName + "', " +
               name( ctx.includeFileParserCtx ) + " '" + ctx.includeFileName + "', " +
               ( ctx.parsingIncludeFile ? "include" : "agent" );
    };
    EXPECT_EQ( state(), "none '', none '', agent" );
    EXPECT_FALSE( ctx.hdlrExceptionRaised );
    EXPECT_EQ( ctx.hdlrExceptionMsg, "" );
    ctx.parserStarts( agentParser, "Agent", false );
    EXPECT_EQ( state(), "agent 'Agent', none '', agent" );
    EXPECT_EQ( ctx.getParserCtx(), agentParser );
    ctx.parserStarts( includeParser, "inc", true );
    EXPECT_EQ( state(), "agent 'Agent', include 'inc', include" );
    EXPECT_EQ( ctx.getParserCtx(), includeParser );
    ctx.parserEnds( true );
    EXPECT_EQ( state(), "agent 'Agent', none '', agent" );
    EXPECT_EQ( ctx.getParserCtx(), agentParser );
    ctx.parserEnds( false );
    EXPECT_EQ( state(), "none '', none '', agent" );
}

TEST_F( ParseFileTest, AReportReachesTheParserOfTheFileThatIsParsedRightNow ) {
    struct Row {
        const char* agentText;
        const char* includeText;
        const char* description;
        bool inInclude;
    };
    for ( const Row& row : { Row{ "/a, T::T, X\ninclude: inc\n", "/b, T::T, Y\n",
                                  " In mount group 'all' ,  near '\\n', illegal flag 'X'", false },
                             { "include: inc\n/a, T::T, X\n", "/b, T::T, Y\n",
                               " In include file,  near '\\n', illegal flag 'Y'", true },
                             { "include: inc\n/a, T::T, X\n", "/b, T::T, r\n",
                               " In mount group 'all' ,  near '\\n', illegal flag 'X'", false } } ) {
        Bench bench( std::string( "agentName: A\n" ) + row.agentText );
        const std::string inc = bench.dir.file( "inc", row.includeText );
        bench.run();
        EXPECT_EQ( bench.description(), row.description );
        EXPECT_EQ( bench.hdlr.errorDesc().fileName(), bench.agentFile );
        EXPECT_EQ( bench.hdlr.errorDesc().includeFileName(), row.inInclude ? inc : "" );
    }
}

} // namespace
