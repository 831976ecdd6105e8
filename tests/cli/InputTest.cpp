#include "cli/CommandTest.h"

namespace Corvid::Testing {

namespace {

using testing::_;
using testing::HasSubstr;
using testing::StartsWith;

class InputTest : public CommandTest {
  protected:
    InputTest() {
        write( "dir/inc1", "/a, K, r\n" );
        write( "dir/inc2", "/b, K, r\n" );
        write( "dir/agent", "agentName: Saved\n" );
    }
};

TEST_F( InputTest, aFileCanBeReadFromStandardInput ) {
    EXPECT_THAT(
        runWithInput( "agentName: Fan\n/x, K, r\n", { "show", "--no-defaults", "-" } ),
        Answers( 0, HasSubstr( "agent Fan  valid\n\nmount group all  priority 99, 1 mount\n    x  K  r\n" ),
                 "" ) );
    EXPECT_THAT( runWithInput( "agentName: Fan\n", { "check", "-", "dir/agent" } ),
                 Answers( 0, "2 files checked: 2 valid\n", "" ) );
    EXPECT_THAT( runWithInput( "/x, K, r\n", { "check", "-" } ),
                 Answers( 1, "1 file checked: 0 valid, 1 not an agent file\n",
                          StartsWith( "mountprofile: <stdin>: not an agent file" ) ) );
}

TEST_F( InputTest, includesOfStandardInputLieBesideItsPath ) {
    const std::string agent = "agentName: Fan\ninclude: inc*\n";
    EXPECT_THAT( runWithInput( agent, { "show", "--no-defaults", "--stdin-path", "dir/new", "-" } ),
                 Answers( 0, HasSubstr( "2 mounts\n    a  K  r\n    b  K  r\n" ), "" ) );
    EXPECT_THAT( runWithInput( agent, { "check", "-" } ), Answers( 1, _, HasSubstr( "matching inc*\n" ) ) )
        << "without a path they lie in the working directory";
    write( "inc3", "/c, K, r\n" );
    EXPECT_THAT( runWithInput( agent, { "check", "-" } ), Answers( 0, _, "" ) );
}

TEST_F( InputTest, anErrorInStandardInputIsShownInItsText ) {
    EXPECT_THAT(
        runWithInput( "agentName: Fan\n/a, k, r\n", { "check", "--stdin-path", "dir/agent", "-" } ),
        Answers( 1, _,
                 StartsWith( "dir/agent:2:5: error: In mount group 'all' ,  near 'k', Invalid kiv type.\n"
                             "    2 | /a, k, r\n      |     ^\n      = hint: " ) ) );
    write( "dir/inc2", "/b, K, r\n/c, kiv, r\n" );
    EXPECT_THAT(
        runWithInput( "agentName: Fan\n\ninclude: inc*\n", { "show", "--stdin-path", "dir/agent", "-" } ),
        Answers( 1, _,
                 "dir/inc2:2:5: error: In include file,  near 'kiv', Invalid kiv type. (included from "
                 "dir/agent)\n    2 | /c, kiv, r\n      |     ^~~\n"
                 "      = included from dir/agent:3 (pattern inc*, match 2 of 2)\n"
                 "      = hint: each part of a type begins with a capital letter: did you mean 'Kiv'?\n"
                 "      = MP041: 'mountprofile explain MP041' tells more\n" ) );
}

TEST_F( InputTest, standardInputHasTheDocumentOfAFileOfItsPath ) {
    const std::string agent = "agentName: Fan\n/x, K, r\n";
    write( "dir/agent", agent );
    EXPECT_EQ( runWithInput( agent, { "show", "--json", "--stdin-path", "dir/agent", "-" } ).out,
               run( { "show", "--json", "dir/agent" } ).out );
}

TEST_F( InputTest, standardInputThatCannotBeReadIsUnreadable ) {
    EXPECT_THAT( runWithInput( std::string( ( 16 << 20 ) + 1, '\n' ), { "show", "-" } ),
                 Answers( 2, "", "mountprofile: <stdin>: Larger than 16777216 bytes [MP090]\n" ) );
    EXPECT_THAT( runWithInput( "#" + std::string( ( 16 << 20 ) - 1, 'x' ), { "check", "-" } ),
                 Answers( 1, _, _ ) );
    ProgramCall call{ { "/bin/sh", "-c", MOUNTPROFILE_COMMAND " check - <." }, {}, directory() };
    EXPECT_THAT( runProgram( call ), Answers( 2, "1 file checked: 0 valid, 1 unreadable\n",
                                              "mountprofile: <stdin>: Is a directory [MP090]\n" ) );
}

TEST_F( InputTest, whatIsAskedOfStandardInputMustMakeSense ) {
    EXPECT_THAT( runWithInput( "", { "check", "-", "-" } ),
                 Answers( 2, "", "mountprofile: standard input can be read only once [MP092]\n" ) );
    for ( const std::string command : { "check", "show" } )
        EXPECT_THAT(
            runWithInput( "", { command, "--stdin-path", "x", "dir/agent" } ),
            Answers( 2, "", "mountprofile: --stdin-path is about a file that is given as - [MP092]\n" ) );
    EXPECT_THAT( runWithInput( "{", { "check", "--stdin-path", "", "-" } ),
                 Answers( 2, "", "mountprofile: --stdin-path: is empty [MP092]\n" ) );
    write( "-", "agentName: Fan\n" );
    EXPECT_THAT( runWithInput( "{", { "check", "./-" } ), Answers( 0, "1 file checked: 1 valid\n", "" ) );
}

TEST_F( InputTest, theFilesThatAreReadCanBeListed ) {
    write( "dir/agent", "agentName: Fan\ninclude: inc*\ninclude: inc1\n" );
    EXPECT_THAT( run( { "show", "--list-files", "dir/agent" } ),
                 Answers( 0, "dir/agent\ndir/inc1\ndir/inc2\n", "" ) );
    EXPECT_THAT( run( { "check", "--list-files", "dir" } ),
                 Answers( 0, "dir/agent\ndir/inc1\ndir/inc2\n", "" ) );
    EXPECT_THAT( runWithInput( "agentName: Fan\ninclude: inc2\n",
                               { "check", "--list-files", "--stdin-path", "dir/agent", "-" } ),
                 Answers( 0, "dir/inc2\n", "" ) )
        << "the file of that path is not read";
    write( "dir/inc1", "/a, k, r\n" );
    EXPECT_THAT( run( { "show", "--list-files", "dir/agent" } ),
                 Answers( 1, "dir/agent\ndir/inc1\n", StartsWith( "dir/inc1:1:5: error: " ) ) )
        << "what comes behind an error is not read";
    write( "dir/a\nb", "agentName: Fan\n" );
    EXPECT_THAT( run( { "show", "--list-files", "dir/a\nb" } ), Answers( 0, "dir/a\\x0Ab\n", "" ) );
}

TEST_F( InputTest, theFileOfTheConfiguredPathsIsRead ) {
    write( "paths", "x/y A::B w\n" );
    write( "dir/agent", "agentName: Fan\ninclude: inc*\n" );
    for ( const std::string command : { "show", "check" } )
        EXPECT_THAT( run( { command, "--system", "s", "--config-root", "paths", "--list-files", "--depfile",
                            "stamp.d", "dir/agent" } ),
                     Answers( 0, "paths\ndir/agent\ndir/inc1\ndir/inc2\n", "" ) );
    EXPECT_EQ( readFile( directory() / "stamp.d" ),
               "stamp: \\\n  paths \\\n  dir/agent \\\n  dir/inc1 \\\n  dir/inc2\n" );
}

TEST_F( InputTest, theFilesThatAreReadAreTheSameForAnyNumberOfJobs ) {
    std::string expected;
    for ( int i = 100; i < 160; ++i ) {
        write( "many/" + std::to_string( i ) + ".agent", "agentName: Fan\ninclude: x*.inc\n" );
        expected += "many/" + std::to_string( i ) + ".agent\n" + ( i == 100 ? "many/x.inc\n" : "" );
    }
    write( "many/x.inc", "/a, K, r\n" );
    for ( const std::string jobs : { "1", "8" } )
        EXPECT_THAT( run( { "check", "--list-files", "--jobs", jobs, "many" } ), Answers( 0, expected, "" ) );
}

TEST_F( InputTest, theListStandsAlone ) {
    for ( const std::vector<std::string>& arguments :
          { std::vector<std::string>{ "check", "--format", "json", "--list-files", "dir/agent" },
            { "show", "--json", "--list-files", "dir/agent" },
            { "show", "--tree", "--list-files", "dir/agent" },
            { "show", "--origin", "--list-files", "dir/agent" },
            { "show", "--origin", "--depfile", "x", "dir/agent" } } ) {
        const auto result = run( arguments );
        EXPECT_EQ( result.exitStatus, 2 );
        EXPECT_THAT( result.out + result.err, HasSubstr( " excludes --" ) )
            << testing::PrintToString( arguments );
    }
    EXPECT_FALSE( std::filesystem::exists( directory() / "x" ) );
}

TEST_F( InputTest, bracketsInANameAreNoList ) {
    for ( const std::string name : { "[a,b]", "[x]", "[]", "dir/[a]", "[" } ) {
        write( name, "agentName: Fan\n" );
        EXPECT_THAT( run( { "check", name, "dir/agent" } ), Answers( 0, "2 files checked: 2 valid\n", "" ) )
            << name;
        EXPECT_THAT( run( { "show", name } ), Answers( 0, StartsWith( "agent Fan" ), "" ) ) << name;
        EXPECT_THAT( run( { "tokens", name } ), Answers( 0, StartsWith( "5 AGENTNAME" ), "" ) ) << name;
        EXPECT_THAT( run( { "check", "[no]", name } ),
                     Answers( 2, _, "mountprofile: [no]: No such file or directory [MP090]\n" ) );
        EXPECT_THAT( run( { "check", "--depfile", "[d].d", name } ),
                     Answers( 2, _, StartsWith( "mountprofile: [d].d: this name cannot be part" ) ) );
    }
    write( "[paths]", "sys/a Sys::A w\n" );
    write( "root", "agentName: Fan\ninclude: ConfigMountProfile\n" );
    EXPECT_THAT( run( { "show", "--system=[ar]", "--config-root=[paths]", "root" }, { { "K7_CHROOT", "" } } ),
                 Answers( 0, HasSubstr( "sys/a  Sys::A  w" ), "" ) );
    EXPECT_THAT( run( { "show", "[x]", "[y]" } ),
                 Answers( 2, "", "mountprofile: The following argument was not expected: [y] [MP092]\n" ) );
}

} // namespace

} // namespace Corvid::Testing
