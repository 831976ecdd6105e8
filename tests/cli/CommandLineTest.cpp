#include "cli/CommandTest.h"

namespace Corvid::Testing {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class CommandLineTest : public CommandTest {};

TEST_F( CommandLineTest, whatIsWrongWithItIsToldInOneLine ) {
    write( "agent", "agentName: Fan\n" );
    write( "words", "/a Kiv::Entity\n\n/b\n" );
    write( "manyWords", "/a Kiv::Entity r more\n" );
    const struct {
        std::vector<std::string> arguments;
        std::string complaint;
    } rows[] = {
        { {}, "no command given; see mountprofile --help" },
        { { "paint" }, "The following argument was not expected: paint" },
        { { "paint", "a", "b]" }, "The following arguments were not expected: paint a b]" },
        { { "show", "agent", "--tidy", "x" }, "The following arguments were not expected: --tidy x" },
        { { "show" }, "FILE is required" },
        { { "tokens" }, "FILE is required" },
        { { "check" }, "PATH is required" },
        { { "show", "agent", "agent" }, "The following argument was not expected: agent" },
        { { "show", "--tidy", "agent" }, "The following argument was not expected: --tidy" },
        { { "show", "--\033[2J", "agent" }, "The following argument was not expected: --\\x1B[2J" },
        { { "show", "--json", "--tree", "agent" }, "--json excludes --tree" },
        { { "show", "--cell", "3", "agent" }, "--cell: Value 3 not in range 0 to 2" },
        { { "show", "--cell", "-1", "agent" }, "--cell: Value -1 not in range 0 to 2" },
        { { "show", "--cell", "one", "agent" }, "--cell: Value one not in range 0 to 2" },
        { { "show", "--redundancy", "agent" }, "--redundancy requires --system" },
        { { "show", "--config-root", "words", "agent" }, "--config-root requires --system" },
        { { "check", "--jobs", "0", "agent" }, "--jobs: Value 0 not in range 1 to 1024" },
        { { "check", "--format", "xml", "agent" }, "--format: xml not in {text,json,sarif,gcc,github}" },
        { { "check", "agent", "--format" }, "--format: 1 required text|json|sarif|gcc|github missing" },
        { { "show", "nowhere" }, "nowhere: No such file or directory [MP090]" },
        { { "show", "." }, ".: Is a directory [MP090]" },
        { { "show", "/dev/null" }, "/dev/null: Not a regular file [MP090]" },
        { { "tokens", "nowhere" }, "nowhere: No such file or directory [MP090]" },
        { { "tokens", "no\nwhere" }, "no\\x0Awhere: No such file or directory [MP090]" },
        { { "show", "--system", "ar", "--config-root", "nowhere", "agent" },
          "nowhere: No such file or directory" },
        { { "show", "--system", "ar", "--config-root", ".", "agent" }, ".: Is a directory" },
        { { "show", "--system", "ar", "--config-root", "/dev/null", "agent" },
          "/dev/null: Not a regular file" },
        { { "show", "--system", "ar", "--config-root", "", "agent" }, "--config-root: is empty" },
        { { "show", "--system=ar", "--config-root=", "agent" }, "--config-root: is empty" },
        { { "check", "--jobs=", "agent" }, "--jobs: Value  not in range 1 to 1024" },
        { { "check", "--format=", "agent" }, "--format:  not in {text,json,sarif,gcc,github}" },
        { { "show", "--cell=", "agent" }, "--cell: Value  not in range 0 to 2" },
        { { "show", "--system", "ar", "--config-root", "words", "agent" },
          "words:3: expected 'path type' or 'path type flags'" },
        { { "check", "--system", "ar", "--config-root", "manyWords", "agent" },
          "manyWords:1: expected 'path type' or 'path type flags'" },
    };
    for ( const auto& [arguments, complaint] : rows )
        EXPECT_THAT( run( arguments ),
                     Answers( 2, "",
                              "mountprofile: " + complaint +
                                  ( complaint.ends_with( "[MP090]" ) ? "\n" : " [MP092]\n" ) ) )
            << testing::PrintToString( arguments );
}

TEST_F( CommandLineTest, everyLevelHasHelpWithAnExample ) {
    EXPECT_THAT( run( { "--help" } ), Answers( 0, HasSubstr( "Examples:\n  mountprofile show" ), "" ) );
    for ( const std::string command : { "show", "check", "tokens", "explain" } ) {
        const std::string usage = "Usage: mountprofile " + command + " ";
        const auto result = run( { command, "--help" } );
        EXPECT_THAT( result, Answers( 0, HasSubstr( usage ), "" ) );
        EXPECT_THAT( result.out, HasSubstr( ":\n  mountprofile " + command + " " ) );
        EXPECT_THAT( result.out, HasSubstr( "Exit status: 0" ) );
        EXPECT_THAT( run( { "--help" } ).out, HasSubstr( "\n  " + command + " " ) );
    }
}

TEST_F( CommandLineTest, theHelpTellsWhatAStageIs ) {
    for ( const std::string command : { "show", "check", "why" } )
        EXPECT_THAT(
            run( { command, "--help" } ).out,
            HasSubstr( "\nStage options (what surrounds the agent: its mounts may depend on it):\n" ) );
}

TEST_F( CommandLineTest, theVersionIsThatOfTheProject ) {
    EXPECT_THAT( run( { "--version" } ), Answers( 0, "mountprofile " MOUNTPROFILE_VERSION "\n", "" ) );
}

TEST_F( CommandLineTest, aFileMayBeNamedLikeACommandOrAnOption ) {
    for ( const std::string name : { "show", "check", "tokens", "--json", "[a,b]" } ) {
        write( name, "agentName: Fan\n" );
        EXPECT_THAT( run( { "show", "--", name } ), Answers( 0, StartsWith( "agent Fan" ), "" ) ) << name;
        EXPECT_THAT( run( { "check", "--", name } ), Answers( 0, "1 file checked: 1 valid\n", "" ) ) << name;
    }
    EXPECT_THAT( run( { "check", "show", "tokens" } ), Answers( 0, "2 files checked: 2 valid\n", "" ) );
}

TEST_F( CommandLineTest, whatFollowsAnEmptyValueIsAnArgumentOfItsOwn ) {
    for ( const std::string name : { "agent", "--system=" } ) {
        write( name, "agentName: Fan\n" );
        EXPECT_THAT( run( { "check", "--system=", "--", name } ),
                     Answers( 0, "1 file checked: 1 valid\n", "" ) );
        EXPECT_THAT( run( { "check", "--system", "", "--", name } ),
                     Answers( 0, "1 file checked: 1 valid\n", "" ) );
    }
}

TEST_F( CommandLineTest, outputThatCannotBeWrittenIsNotClaimed ) {
    write( "agent", "agentName: Fan\n" );
    const struct {
        OutputTo output;
        std::string reason;
    } rows[] = {
        { OutputTo::fullDevice, "No space left on device" },
        { OutputTo::closedPipe, "Broken pipe" },
        { OutputTo::nowhere, "Bad file descriptor" },
    };
    const std::vector<std::vector<std::string>> commands = {
        { "show", "agent" }, { "show", "--json", "agent" }, { "check", "agent" }, { "tokens", "agent" },
        { "--help" },        { "check", "--help" },         { "--version" },
    };
    for ( const auto& [output, reason] : rows )
        for ( const auto& command : commands )
            EXPECT_THAT(
                run( command, {}, output ),
                Answers( 2, "", "mountprofile: cannot write to standard output: " + reason + " [MP094]\n" ) )
                << testing::PrintToString( command );
}

TEST_F( CommandLineTest, aLongDocumentStopsAtTheFirstFailedWrite ) {
    std::string agent = "agentName: Fan\n";
    for ( int i = 0; i < 5000; ++i )
        agent += "/mount/number/" + std::to_string( i ) + ", Kiv::Entity, r\n";
    write( "agent", agent );
    for ( const std::string form : { "--json", "--tree" } )
        EXPECT_THAT(
            run( { "show", form, "agent" }, {}, OutputTo::closedPipe ),
            Answers( 2, "", "mountprofile: cannot write to standard output: Broken pipe [MP094]\n" ) );
}

} // namespace

} // namespace Corvid::Testing
