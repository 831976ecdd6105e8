#include "cli/CommandTest.h"

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Corvid::Testing {

namespace {

using testing::_;
using testing::HasSubstr;
using testing::StartsWith;

class DepfileTest : public CommandTest {
  protected:
    DepfileTest() {
        write( "dir/inc1", "/a, K, r\n" );
        write( "dir/inc2", "/b, K, r\n" );
        write( "dir/agent", "agentName: Fan\ninclude: inc*\n" );
    }
    [[nodiscard]] std::string contentOf( const std::string& name ) const {
        return readFile( directory() / name );
    }
    [[nodiscard]] ProgramResult checkWith( const std::string& depfile ) const {
        return run( { "check", "--depfile", depfile, "dir/agent" } );
    }
    void expectRefused( const std::string& depfile, const std::string& complaint ) const {
        EXPECT_THAT( checkWith( depfile ),
                     Answers( 2, _, "mountprofile: " + depfile + ": " + complaint + " [MP092]\n" ) );
    }
    [[nodiscard]] int exitStatusOf( const std::string& tool ) const {
        return runProgram( { { "/bin/sh", "-c", tool + " >/dev/null 2>&1" }, {}, directory() } ).exitStatus;
    }
};

const std::string ruleOfStamp = "stamp: \\\n  dir/agent \\\n  dir/inc1 \\\n  dir/inc2\n";

TEST_F( DepfileTest, itIsARule ) {
    EXPECT_THAT( checkWith( "stamp.d" ), Answers( 0, "1 file checked: 1 valid\n", "" ) );
    EXPECT_EQ( contentOf( "stamp.d" ), ruleOfStamp );
    EXPECT_THAT( run( { "show", "--depfile", "deps", "dir/inc1" } ), Answers( 1, "", _ ) );
    EXPECT_EQ( contentOf( "deps" ), "deps: \\\n  dir/inc1\n" );
    EXPECT_THAT( checkWith( ".d" ), Answers( 0, _, "" ) );
    EXPECT_THAT( contentOf( ".d" ), StartsWith( ".d: \\\n  dir/agent" ) );
    std::filesystem::create_directory( directory() / "empty" );
    for ( int times = 0; times < 2; ++times ) {
        EXPECT_THAT( run( { "check", "--depfile", "none.d", "empty" } ), Answers( 0, _, "" ) );
        EXPECT_EQ( contentOf( "none.d" ), "none:\n" );
    }
}

TEST_F( DepfileTest, aTargetDoesNotDependOnItselfOrItsRule ) {
    write( "dir/stamp", "" );
    for ( const std::string depfile : { "dir/stamp.d", "./dir/stamp.d" } ) {
        std::filesystem::remove( directory() / "dir/stamp.d" );
        for ( int times = 0; times < 2; ++times )
            EXPECT_THAT( run( { "check", "--depfile", depfile, "dir" } ), Answers( 0, _, "" ) );
        EXPECT_THAT( contentOf( "dir/stamp.d" ),
                     testing::EndsWith( ": \\\n  dir/agent \\\n  dir/inc1 \\\n  dir/inc2\n" ) );
    }
}

TEST_F( DepfileTest, itIsWrittenWholeOrNotAtAll ) {
    write( "stamp.d", "stamp:\n" );
    EXPECT_THAT( run( { "check", "--depfile", "stamp.d", "dir/agent", "nowhere" } ), Answers( 2, _, _ ) );
    EXPECT_EQ( contentOf( "stamp.d" ), "stamp:\n" );
    expectRefused( "out/stamp.d", "No such file or directory" );
    EXPECT_THAT( run( { "show", "--depfile", "out/stamp.d", "dir/agent" } ),
                 Answers( 2, HasSubstr( "agent Fan" ), HasSubstr( "No such file or directory [MP092]\n" ) ) );
    EXPECT_THAT( run( { "check", "--list-files", "--depfile", "out/stamp.d", "dir/agent" } ),
                 Answers( 2, "dir/agent\ndir/inc1\ndir/inc2\n",
                          "mountprofile: out/stamp.d: No such file or directory [MP092]\n" ) );
    std::filesystem::create_directory( directory() / "taken.d" );
    expectRefused( "taken.d", "Is a directory" );
    for ( const auto& entry : std::filesystem::directory_iterator( directory() ) )
        EXPECT_THAT( entry.path().filename().string(), testing::Not( HasSubstr( ".d." ) ) ) << "left behind";
}

TEST_F( DepfileTest, onlyARuleOfItsTargetIsReplaced ) {
    for ( const std::string content : { "", "stamp:\n", "stamp: \\\n  gone\n" } ) {
        write( "stamp.d", content );
        EXPECT_THAT( checkWith( "stamp.d" ), Answers( 0, _, "" ) ) << content;
        EXPECT_EQ( contentOf( "stamp.d" ), ruleOfStamp );
    }
    for ( const std::string content :
          { "agentName: Fan\n", "s", "stamp", "stamp:", "stamp: x\n", "other:\n" } ) {
        write( "stamp.d", content );
        expectRefused( "stamp.d", "holds something else than a rule of stamp, and stays as it is" );
        EXPECT_EQ( contentOf( "stamp.d" ), content );
    }
    for ( const std::string name : { "dir/agent", "dir/inc2" } )
        expectRefused( name, "holds something else than a rule of " + name + ", and stays as it is" );
}

TEST_F( DepfileTest, aValueThatIsEmptyTakesNoFile ) {
    for ( const std::vector<std::string>& option :
          { std::vector<std::string>{ "--depfile=" }, { "--depfile", "" } } ) {
        std::vector<std::string> arguments = { "check" };
        arguments.insert( arguments.end(), option.begin(), option.end() );
        arguments.insert( arguments.end(), { "dir/agent", "dir/agent" } );
        EXPECT_THAT( run( arguments ), Answers( 2, "", "mountprofile: --depfile: is empty [MP092]\n" ) );
    }
    EXPECT_EQ( contentOf( "dir/agent" ), "agentName: Fan\ninclude: inc*\n" );
}

TEST_F( DepfileTest, linksAreFollowedAndModesKept ) {
    std::filesystem::create_directory( directory() / "real" );
    std::filesystem::create_symlink( "real/rule", directory() / "stamp.d" );
    const auto rule = directory() / "real/rule";
    for ( const mode_t mode : { 0U, 0640U } ) {
        if ( mode )
            ::chmod( rule.c_str(), mode );
        EXPECT_THAT( checkWith( "stamp.d" ), Answers( 0, _, "" ) );
        EXPECT_TRUE( std::filesystem::is_symlink( directory() / "stamp.d" ) );
        EXPECT_EQ( readFile( rule ), ruleOfStamp );
    }
    struct stat status {};
    ASSERT_EQ( ::stat( rule.c_str(), &status ), 0 );
    EXPECT_EQ( status.st_mode & 07777U, 0640U );
}

TEST_F( DepfileTest, aNewOneIsForWhomTheUsersMaskAllows ) {
    const mode_t mask = ::umask( 027 );
    EXPECT_THAT( checkWith( "stamp.d" ), Answers( 0, _, "" ) );
    ::umask( mask );
    struct stat status {};
    ASSERT_EQ( ::stat( ( directory() / "stamp.d" ).c_str(), &status ), 0 );
    EXPECT_EQ( status.st_mode & 07777U, 0640U );
}

TEST_F( DepfileTest, aPipeIsWrittenTo ) {
    const std::string pipe = directory() / "pipe";
    ASSERT_EQ( ::mkfifo( pipe.c_str(), 0600 ), 0 );
    const int reader = ::open( pipe.c_str(), O_RDONLY | O_NONBLOCK );
    EXPECT_THAT( checkWith( "pipe" ), Answers( 0, _, "" ) );
    std::string text( 4096, '\0' );
    const ssize_t size = ::read( reader, text.data(), text.size() );
    ::close( reader );
    ASSERT_GT( size, 0 );
    EXPECT_EQ( text.substr( 0, static_cast<std::size_t>( size ) ),
               "pipe: \\\n  dir/agent \\\n  dir/inc1 \\\n  dir/inc2\n" );
    EXPECT_TRUE( std::filesystem::is_fifo( pipe ) );
}

TEST_F( DepfileTest, whatMakeOrNinjaWouldMisreadIsRefused ) {
    const std::string complaint = "x.d: this name cannot be part of a rule that make and ninja read: ";
    for ( const std::string name :
          { "a\nb", "a\tb", "a;id>pwned", "a=b",   "a|b",   "a*",    "a?b",  "[a]", "a<b",
            "a>b",  "a&b",  "'a'",        "\"a",   "`a",    "a^b",   "~",    "~a",  "a ",
            "a:",   "a\\",  "a(b)",       "a\\ b", "a\\#b", "a\x7F", "a\\:b" } ) {
        write( name, "agentName: Fan\n" );
        EXPECT_THAT( run( { "check", "--depfile", "x.d", "--", name } ),
                     Answers( 2, _, HasSubstr( complaint ) ) )
            << name;
        EXPECT_FALSE( std::filesystem::exists( directory() / "x.d" ) );
    }
    expectRefused( "a;b.d", "this name cannot be part of a rule that make and ninja read: a;b" );
    expectRefused( "a%b.d", "make takes a target with '%' for a pattern" );
}

/// Has make and ninja look whether a stamp is older than the files of its depfile.
class ToolsTest : public DepfileTest {
  protected:
    static constexpr char stamp[] = "a stamp";

    ToolsTest() {
        write( "Makefile", "a\\ stamp:\n\t@touch 'a stamp'\ninclude a\\ stamp.d\n" );
        write( "build.ninja", "rule check\n  command = cp 'a stamp.d' read.d; touch 'a stamp'\n"
                              "  depfile = read.d\nbuild a$ stamp: check\n" );
    }
    /// @param age in minutes
    void touch( const std::string& name, int age ) const {
        std::filesystem::last_write_time( directory() / name, std::filesystem::file_time_type::clock::now() -
                                                                  std::chrono::minutes( age ) );
    }
    [[nodiscard]] bool isUpToDateForMake() const {
        const int status = exitStatusOf( "make -q 'a stamp'" );
        EXPECT_LE( status, 1 );
        return status == 0;
    }
    [[nodiscard]] bool isUpToDateForNinja() const {
        return exitStatusOf( "ninja -n | grep -q 'no work'" ) == 0;
    }
};

TEST_F( ToolsTest, makeAndNinjaReadTheNames ) {
    const std::vector<std::string> names = {
        "a b",      " x",  "a#b", "a:b", "$a", "$(a)b", "back\\slash", "\\x", "d/a%{b},@!+-~_",
        "\xC3\xA9", "a: b" };
    std::vector<std::string> arguments = { "check", "--depfile", std::string( stamp ) + ".d" };
    for ( const std::string& name : names ) {
        write( name, "agentName: Fan\n" );
        arguments.push_back( name );
    }
    ASSERT_THAT( run( arguments ), Answers( 0, _, "" ) );
    const bool hasMake = exitStatusOf( "make --version" ) == 0;
    const bool hasNinja = exitStatusOf( "ninja --version" ) == 0;
    if ( !hasMake && !hasNinja )
        GTEST_SKIP() << "neither make nor ninja is there";
    for ( const std::string& newer : names ) {
        for ( const std::string& name : names )
            touch( name, 10 );
        if ( hasNinja )
            ASSERT_EQ( exitStatusOf( "ninja" ), 0 );
        else
            write( stamp, "" );
        touch( stamp, 5 );
        EXPECT_TRUE( !hasMake || isUpToDateForMake() ) << newer;
        EXPECT_TRUE( !hasNinja || isUpToDateForNinja() ) << newer;
        touch( newer, -5 );
        EXPECT_FALSE( hasMake && isUpToDateForMake() ) << newer;
        EXPECT_FALSE( hasNinja && isUpToDateForNinja() ) << newer;
    }
}

} // namespace

} // namespace Corvid::Testing
