#include "cli/CommandTest.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Corvid::Testing {

namespace {

using testing::_;
using testing::HasSubstr;
using testing::Not;

class CheckTest : public CommandTest {
  protected:
    CheckTest() {
        write( "valid", "agentName: Fan\n" );
        write( "invalid", "agentName: Fan\n{\n" );
        write( "include", "/a, K, r\n" );
    }
};

const std::string invalidLines =
    ":2:1: error: Unrecongnized character , near '{'\n    2 | {\n      | ^\n"
    "      = hint: this character means nothing outside of comments and quoted texts\n"
    "      = MP001: 'mountprofile explain MP001' tells more\n";

TEST_F( CheckTest, theHighestExitStatusOfAllFilesCounts ) {
    const std::string invalid = "invalid" + invalidLines;
    const std::string include =
        "mountprofile: include: not an agent file: it does not begin with an agent title line "
        "(agentName: NAME) [MP091]\n";
    const std::string nowhere = "mountprofile: nowhere: No such file or directory [MP090]\n";
    const struct {
        std::vector<std::string> paths;
        int exitStatus;
        std::string out;
        std::string err;
    } rows[] = {
        { { "valid" }, 0, "1 file checked: 1 valid\n", "" },
        { { "valid", "valid" }, 0, "2 files checked: 2 valid\n", "" },
        { { "invalid" }, 1, "1 file checked: 0 valid, 1 invalid\n", invalid },
        { { "include" }, 1, "1 file checked: 0 valid, 1 not an agent file\n", include },
        { { "nowhere" }, 2, "1 file checked: 0 valid, 1 unreadable\n", nowhere },
        { { "invalid", "valid" }, 1, "2 files checked: 1 valid, 1 invalid\n", invalid },
        { { "nowhere", "invalid", "valid", "include" },
          2,
          "4 files checked: 1 valid, 1 invalid, 1 not an agent file, 1 unreadable\n",
          nowhere + invalid + include },
        { { "include", "nowhere" },
          2,
          "2 files checked: 0 valid, 1 not an agent file, 1 unreadable\n",
          include + nowhere },
    };
    for ( const auto& [paths, exitStatus, out, err] : rows )
        for ( const std::string jobs : { "1", "2", "7" } ) {
            std::vector<std::string> arguments = { "check", "--format", "text", "--jobs", jobs };
            arguments.insert( arguments.end(), paths.begin(), paths.end() );
            EXPECT_THAT( run( arguments ), Answers( exitStatus, out, err ) )
                << testing::PrintToString( arguments );
        }
}

TEST_F( CheckTest, aDirectoryStandsForTheAgentFilesInItAndBelow ) {
    for ( const std::string name : { "d/b", "d/B", "d/b-x", "d/b.d/z", "d/c/deep/er/agent", "d/.hidden" } )
        write( name, "agentName: Fan\n{\n" );
    write( "d/README", "It's {no} agent.\n" );
    write( "d/inc", "/a, K, r\n" );
    write( "d/empty", "" );
    ASSERT_EQ( ::mkfifo( ( directory() / "d/fifo" ).c_str(), 0600 ), 0 );
    std::filesystem::create_symlink( "../invalid", directory() / "d/link" );
    std::filesystem::create_directory_symlink( "..", directory() / "d/loop" );
    std::filesystem::create_symlink( "nowhere", directory() / "d/dangling" );
    std::string expected;
    for ( const std::string name : { ".hidden", "B", "b", "b-x", "b.d/z", "c/deep/er/agent", "link" } )
        expected += "d/" + name + invalidLines;
    for ( const std::string path : { "d", "d/" } )
        EXPECT_THAT(
            run( { "check", path } ),
            Answers( 1, "7 files checked: 0 valid, 7 invalid; 3 other files passed over\n", expected ) );
    EXPECT_THAT(
        run( { "check", "d/loop/d/c", "valid" } ),
        Answers( 1, "2 files checked: 1 valid, 1 invalid\n", "d/loop/d/c/deep/er/agent" + invalidLines ) )
        << "a link that the user names is followed";
}

TEST_F( CheckTest, whatIsPassedOverDoesNotCount ) {
    write( "d/inc", "/a, K, r\n" );
    EXPECT_THAT( run( { "check", "d" } ),
                 Answers( 0, "0 files checked: 0 valid; 1 other file passed over\n", "" ) );
    EXPECT_THAT( run( { "check", "d", "valid" } ),
                 Answers( 0, "1 file checked: 1 valid; 1 other file passed over\n", "" ) );
    EXPECT_THAT( run( { "check", "d/inc" } ),
                 Answers( 1, "1 file checked: 0 valid, 1 not an agent file\n", _ ) );
}

TEST_F( CheckTest, anUnreadableFileInADirectoryIsTold ) {
    write( "d/big", "agentName: Fan\n" );
    std::filesystem::resize_file( directory() / "d/big", ( 16 << 20 ) + 1 );
    EXPECT_THAT( run( { "check", "d" } ),
                 Answers( 2, "1 file checked: 0 valid, 1 unreadable\n",
                          "mountprofile: d/big: Larger than 16777216 bytes [MP090]\n" ) );
}

TEST_F( CheckTest, aLargeFileInADirectoryIsPassedOverUnlessItHasATitle ) {
    const auto enlarged = [this]( const std::string& name, const std::string& text ) {
        write( name, text );
        std::filesystem::resize_file( directory() / name, ( 16 << 20 ) + 1 );
    };
    enlarged( "d/blob", "" );
    enlarged( "d/mounts", "\n/a, K, r\n" );
    EXPECT_THAT( run( { "check", "d", "valid" } ),
                 Answers( 0, "1 file checked: 1 valid; 2 other files passed over\n", "" ) );
    EXPECT_THAT( run( { "check", "d/blob" } ), Answers( 2, "1 file checked: 0 valid, 1 unreadable\n", _ ) )
        << "it is named";
    enlarged( "d/agent", "# of ours\n\n agentname : Fan\n" );
    write( "d/large", "agentName: Fan\ninclude: blob\n" );
    EXPECT_THAT( run( { "check", "d" } ),
                 Answers( 2, "2 files checked: 0 valid, 2 unreadable; 2 other files passed over\n",
                          "mountprofile: d/agent: Larger than 16777216 bytes [MP090]\n"
                          "mountprofile: d/large: d/blob, included in line 2: Larger than 16777216 bytes "
                          "[MP090]\n"
                          "    2 | include: blob\n"
                          "      | ^~~~~~~~~~~~~\n" ) );
}

TEST_F( CheckTest, aLargeFileIsLookedAtForATitleInItsFirstMiB ) {
    const std::string title = "agentName: Fan\n";
    for ( const std::size_t titleEnd :
          { std::size_t{ 1 } << 20, ( std::size_t{ 1 } << 20 ) + title.size() } ) {
        const std::string comment( titleEnd - title.size() - 1, '#' );
        write( "d/agent", comment + "\n" + title + std::string( 16 << 20, '\n' ) );
        const bool isSeen = titleEnd == std::size_t{ 1 } << 20;
        EXPECT_THAT( run( { "check", "d" } ),
                     isSeen ? Answers( 2, "1 file checked: 0 valid, 1 unreadable\n",
                                       "mountprofile: d/agent: Larger than 16777216 bytes [MP090]\n" )
                            : Answers( 0, "0 files checked: 0 valid; 1 other file passed over\n", "" ) );
    }
}

TEST_F( CheckTest, aDirectoryThatCannotBeListedIsTold ) {
    // Nothing is closed to root, but a path can be too long for everybody.
    const std::string longName( 250, 'n' );
    write( "d/agent", "agentName: Fan\n" );
    int parent = ::open( ( directory() / "d" ).c_str(), O_PATH | O_DIRECTORY );
    for ( int level = 0; level < 18; ++level ) {
        ASSERT_EQ( ::mkdirat( parent, longName.c_str(), 0700 ), 0 );
        const int child = ::openat( parent, longName.c_str(), O_PATH | O_DIRECTORY );
        ::close( parent );
        parent = child;
    }
    ::close( parent );
    const auto result = run( { "check", "d" } );
    EXPECT_THAT( result, Answers( 2, "2 files checked: 1 valid, 1 unreadable\n",
                                  testing::StartsWith( "mountprofile: d/" + longName + "/" ) ) );
    EXPECT_THAT( result.err, testing::EndsWith( "/" + longName + ": File name too long [MP090]\n" ) );
    EXPECT_EQ( lineCount( result.err ), 1U );
}

TEST_F( CheckTest, theOutputIsTheSameForAnyNumberOfJobs ) {
    for ( int i = 0; i < 200; ++i ) {
        std::string agent = "agentName: Fan\n";
        for ( int mount = 0; mount < i * i % 97; ++mount ) // so that the files take unlike times
            agent += "/m/" + std::to_string( mount ) + ", Kiv::Entity, r\n";
        write( "many/" + std::to_string( i ),
               agent + ( i % 3 ? "\n" : "/wrong" + std::to_string( i ) + ", k, r\n" ) );
    }
    const auto one = run( { "check", "--jobs", "1", "many" } );
    EXPECT_THAT( one, Answers( 1, "200 files checked: 133 valid, 67 invalid\n", _ ) );
    EXPECT_EQ( lineCount( one.err ), 67U * 5 );
    for ( const std::string jobs : { "2", "8", "64" } )
        EXPECT_THAT( run( { "check", "--jobs", jobs, "many" } ), Answers( 1, one.out, one.err ) );
}

TEST_F( CheckTest, stageOptionsHoldForEveryFile ) {
    const std::string root = "sys/a Sys::A w\n";
    write( "root", root );
    write( "d/1", "agentName: A\ninclude: ConfigMountProfile\n" );
    write( "d/2", "agentName: B\ninclude: ConfigMountProfile\n" );
    const std::vector<std::string> arguments = {
        "check", "--system", "ar", "--redundancy", "--cell", "2", "--config-root", "root", "d" };
    EXPECT_THAT( run( arguments, { { "K7_CHROOT", "" } } ), Answers( 0, "2 files checked: 2 valid\n", "" ) );
    EXPECT_THAT( run( arguments ), Answers( 1, "2 files checked: 0 valid, 2 invalid\n", _ ) );
}

TEST_F( CheckTest, quickWorkShowsNoProgressOnATerminal ) {
    EXPECT_THAT( run( { "check", "valid", "invalid" }, { { "NO_COLOR", "1" } }, OutputTo::terminal ).out,
                 testing::AllOf( HasSubstr( "2 files checked" ), Not( HasSubstr( "\033" ) ),
                                 Not( HasSubstr( "#" ) ) ) );
}

} // namespace

} // namespace Corvid::Testing
