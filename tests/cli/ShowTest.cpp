#include "cli/CommandTest.h"

#include <nlohmann/json.hpp>

namespace Corvid::Testing {

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using Environment = std::vector<std::pair<std::string, std::string>>;

class ShowTest : public CommandTest {
  protected:
    /// The document of a file that the command can read; checks that the exit status suits it.
    [[nodiscard]] json document( std::vector<std::string> arguments,
                                 const Environment& environment = {} ) const {
        arguments.insert( arguments.begin(), { "show", "--json" } );
        const auto result = run( arguments, environment );
        json parsed = json::parse( result.out );
        EXPECT_EQ( result.exitStatus, parsed.at( "outcome" ) == "valid" ? 0 : 1 ) << result.err;
        return parsed;
    }
    /// "path type flags" of a group's mounts in their order.
    [[nodiscard]] static std::vector<std::string> mountsOf( const json& document, const std::string& group ) {
        std::vector<std::string> all;
        for ( const json& mount :
              document.at( "profile" ).at( "mountGroup" ).at( group ).at( "mountProfile" ) )
            all.push_back( mount.at( "path" ).get<std::string>() + " " +
                           mount.at( "type" ).get<std::string>() + " " +
                           mount.at( "flags" ).get<std::string>() );
        return all;
    }
    [[nodiscard]] static std::vector<std::string> groupsOf( const json& document ) {
        std::vector<std::string> all;
        for ( const auto& [name, group] : document.at( "profile" ).at( "mountGroup" ).items() )
            all.push_back( name );
        return all;
    }
    [[nodiscard]] static bool hasMount( const json& document, const std::string& group,
                                        const std::string& mount ) {
        return testing::Matches( testing::Contains( mount ) )( mountsOf( document, group ) );
    }
};

TEST_F( ShowTest, theDocumentHasItsKeysInAFixedOrderAndEndsWithALineEnd ) {
    write( "agents/Fan", "agentName: Fan-%slot\nalias: %b = %slot\nalias: %a = %slot\n"
                         "mountFilter: f\nstate\nname, \"x\"\nmountGroup: g\ncondition: %slot == /s.i\n"
                         "/m, Kiv::Entity, r, f\n" );
    const auto result = run( { "show", "--json", "--no-defaults", "agents/Fan" } );
    const std::string noError =
        R"({"fileName": "", "includeFileName": "", "line": 0, "charPositionInLine": 0, "exceptionType": 0, )"
        R"("recognizer": "", "description": "", "sourceLine": ""})";
    const std::string expected =
        R"({"agentFile": "agents/Fan", "outcome": "valid", "profile": {"name": "Fan-", "validProfile": true, )"
        R"("errorDesc": )" +
        noError +
        R"(, "rootFlags": "", "hybridMount": false, "lowMountPrio": false, "noDefaultMountGroup": false, )"
        R"("templateKey": ["%slot"], "aliasKey": {"%a": "%slot", "%b": "%slot"}, "mountGroup": {)"
        R"("all": {"priority": 99, "blockingConditional": false, "entireCondition": "", "conditionCol": [], )"
        R"("templateConditionCol": {}, "mountProfile": []}, )"
        R"("g": {"priority": 99, "blockingConditional": false, "entireCondition": "%slot == /s.i", )"
        R"("conditionCol": ["%slot == /s.i"], "templateConditionCol": {}, "mountProfile": [)"
        R"({"path": "m", "type": "Kiv::Entity", "flags": "r", )"
        R"("mountFilter": {"enabled": true, "attrFilter": {"name": "x", "state": ""}}}]}}}, )"
        R"("subAgents": [], "errorDesc": )" +
        noError + "}";
    EXPECT_THAT( result, Answers( 0, EndsWith( "}\n" ), "" ) );
    EXPECT_EQ( nlohmann::ordered_json::parse( result.out ).dump(),
               nlohmann::ordered_json::parse( expected ).dump() );
}

TEST_F( ShowTest, everyByteOfATextComesBackFromTheDocument ) {
    std::string text;
    std::string escaped; // the code point of a byte's value, for each of them
    for ( int byte = 1; byte < 256; ++byte ) {
        if ( byte == '"' || byte == '\n' )
            continue;
        text += static_cast<char>( byte );
        if ( byte >= 0x80 )
            escaped += static_cast<char>( 0xC0 | byte >> 6 );
        escaped += static_cast<char>( byte >= 0x80 ? 0x80 | ( byte & 0x3F ) : byte );
    }
    write( "agent", "agentName: Fan\nmountFilter: f\nname, \"" + text + "\"\n/a, Kiv::Entity, r, f\n" );
    const auto result = run( { "show", "--json", "--no-defaults", "agent" } );
    ASSERT_EQ( result.exitStatus, 0 ) << result.err;
    EXPECT_THAT( result.out, Not( testing::Contains( testing::Lt( '\0' ) ) ) ) << "the document is not ASCII";
    EXPECT_THAT( result.out, HasSubstr( R"(\u0001\u0002)" ) );
    EXPECT_THAT( result.out, HasSubstr( R"(\u007F\u0080)" ) );
    const json filter =
        json::parse( result.out )
            .at( "/profile/mountGroup/all/mountProfile/0/mountFilter/attrFilter"_json_pointer );
    EXPECT_EQ( filter.at( "name" ).get<std::string>(), escaped );
}

TEST_F( ShowTest, anInvalidFileHasAProfileWithTheError ) {
    write( "agent", "agentName: Fan\n/a, Kiv::Entity, r\n/b, kiv, r\n" );
    const json invalid = document( { "--no-defaults", "agent" } );
    EXPECT_EQ( invalid.at( "outcome" ), "invalid" );
    EXPECT_EQ( invalid.at( "profile" ).at( "validProfile" ), false );
    EXPECT_EQ( invalid.at( "profile" ).at( "errorDesc" ), invalid.at( "errorDesc" ) );
    EXPECT_EQ( invalid.at( "errorDesc" ).at( "line" ), 3 );
    EXPECT_EQ( invalid.at( "errorDesc" ).at( "charPositionInLine" ), 4 );
    EXPECT_THAT( mountsOf( invalid, "all" ), ElementsAre( "a Kiv::Entity r" ) );
}

TEST_F( ShowTest, aFileWithoutATitleLineHasNoProfile ) {
    const std::string notAnAgent = ": not an agent file: it does not begin with an agent title line "
                                   "(agentName: NAME) [MP091]\n";
    write( "inc\t", "/a, Kiv::Entity, r\n" );
    EXPECT_EQ( document( { "inc\t" } ).at( "outcome" ), "notAgentFile" );
    EXPECT_TRUE( document( { "inc\t" } ).at( "profile" ).is_null() );
    EXPECT_THAT( run( { "show", "inc\t" } ), Answers( 1, "", "mountprofile: inc\\x09" + notAnAgent ) );

    write( "broken", "{\n" );
    EXPECT_EQ( document( { "broken" } ).at( "outcome" ), "invalid" );
    EXPECT_TRUE( document( { "broken" } ).at( "profile" ).is_null() );
}

TEST_F( ShowTest, anUnreadableFileHasADocumentOfItsOwn ) {
    EXPECT_THAT( run( { "show", "--json", "nowhere" } ),
                 Answers( 2,
                          "{\"agentFile\": \"nowhere\",\n \"outcome\": \"unreadable\",\n \"exception\": "
                          "\"void Corvid::MountProfileHdlr::parseFile(const string&, bool): "
                          "Antlr failed to create file stream for nowhere\"}\n",
                          "mountprofile: nowhere: No such file or directory [MP090]\n" ) );
}

TEST_F( ShowTest, aFileAboveTheSizeLimitIsUnreadable ) {
    write( "agent", "agentName: Fan\n" );
    std::filesystem::resize_file( directory() / "agent", ( 16 << 20 ) + 1 );
    EXPECT_THAT( run( { "show", "agent" } ),
                 Answers( 2, "", "mountprofile: agent: Larger than 16777216 bytes [MP090]\n" ) );
}

TEST_F( ShowTest, anUnreadableIncludeFileIsTold ) {
    write( "agent", "agentName: Fan\ninclude: inc\n" );
    std::filesystem::create_directory( directory() / "inc" );
    EXPECT_THAT( run( { "show", "agent" } ),
                 Answers( 2, "",
                          "mountprofile: agent: inc, included in line 2: Is a directory [MP090]\n"
                          "    2 | include: inc\n"
                          "      | ^~~~~~~~~~~~\n" ) );
    write( "d/agent", "agentName: Fan\n\ninclude: *.inc\n" );
    write( "d/1.inc", "/a, T, r\n" );
    std::filesystem::create_symlink( "nowhere", directory() / "d" / "2.inc" );
    const std::string text = "agentName: Fan\ninclude: *.inc\n";
    EXPECT_THAT( runWithInput( text, { "show", "--stdin-path", "d/new", "-" } ).err,
                 testing::EndsWith( "\n    2 | include: *.inc\n      | ^~~~~~~~~~~~~~\n" ) );
    EXPECT_THAT( run( { "show", "d/agent" } ),
                 Answers( 2, "",
                          "mountprofile: d/agent: d/2.inc, included in line 3: No such file or directory "
                          "[MP090]\n"
                          "    3 | include: *.inc\n"
                          "      | ^~~~~~~~~~~~~~\n" ) );
}

TEST_F( ShowTest, moreIncludeFilesThanARunReadsAreTold ) {
    std::string text = "agentName: Fan\n";
    for ( int i = 0; i < 10'001; ++i )
        text += "include: inc\n";
    write( "agent", text );
    write( "inc", "/a, T, r\n" );
    EXPECT_THAT(
        run( { "show", "agent" } ).err,
        testing::StartsWith(
            "mountprofile: agent: inc, included in line 10002: More than 10000 include files [MP090]\n" ) );
}

TEST_F( ShowTest, configuredPathsThatAreNotKnownAreToldWithWhatToDo ) {
    write( "agent", "agentName: Fan\n\tinclude: ConfigMountProfile \n" );
    const std::string told = "mountprofile: agent: ConfigMountProfile, included in line 2: The configured "
                             "paths are not known [MP090]\n"
                             "    2 |         include: ConfigMountProfile \n"
                             "      |         ^~~~~~~~~~~~~~~~~~~~~~~~~~~\n"
                             "      = hint: K7_CHROOT is set: give the configured paths with --system and "
                             "--config-root\n";
    for ( const std::vector<std::string>& command :
          { std::vector<std::string>{ "show", "agent" }, { "show", "--system", "ar", "agent" } } )
        EXPECT_THAT( run( command, { { "K7_CHROOT", "/" } } ), Answers( 2, "", told ) );
}

TEST_F( ShowTest, theTreeIsAligned ) {
    write(
        "agent",
        "agentName: Fan-%slot\nhybridMount\nnoDefaultMountGroup\nsubAgent: Probe\nalias: %peer = %slot\n"
        "rootFlags: rw\nmountFilter: f\nmountFilter: g\nname, \"fan 1\"\nstate\n"
        "mountGroup: late, 7\nconditionBlocker: 1 == /a.b and 2 == /c.d\n"
        "/a/longer/path, Kiv::Entity, r\n\"/\xC3\xA9\", Kiv::E, rwi, f\n\"/\xE4\xBA\x8C\", Kiv::E, w, g\n" );
    EXPECT_THAT( run( { "show", "agent" } ),
                 Answers( 0,
                          "agent Fan-  valid\n"
                          "  switches              hybridMount, noDefaultMountGroup\n"
                          "  root flags            rw\n"
                          "  template keys         %slot\n"
                          "  alias                 %peer = %slot\n"
                          "  sub-agents            Probe\n"
                          "\n"
                          "mount group all  priority 99, 0 mounts\n"
                          "\n"
                          "mount group late  priority 7, 3 mounts\n"
                          "  blocked until         1 == /a.b and 2 == /c.d\n"
                          "    condition           1 == /a.b\n"
                          "    condition           2 == /c.d\n"
                          "    a/longer/path  Kiv::Entity  r\n"
                          "    \xC3\xA9              Kiv::E       rwi  where (no attribute)\n"
                          "    \xE4\xBA\x8C             Kiv::E       w    where name = \"fan 1\", state\n",
                          "" ) );
    EXPECT_EQ( run( { "show", "agent" } ).out, run( { "show", "--tree", "agent" } ).out );
}

TEST_F( ShowTest, aLongPathDoesNotPushTheOtherLines ) {
    const std::string longPath( 70, 'p' );
    write( "agent", "agentName: Fan\n/a, K, r\n/" + longPath + ", K, r\n" );
    EXPECT_THAT( run( { "show", "--no-defaults", "agent" } ).out,
                 EndsWith( "\n    a" + std::string( 59, ' ' ) + "  K  r\n    " + longPath + "  K  r\n" ) );
}

TEST_F( ShowTest, aPathThatIsLongerThanWhatIsWrittenAtOnceIsShownWhole ) {
    const std::string longPath( 100000, 'p' );
    write( "agent", "agentName: Fan\n/" + longPath + ", K, r\n" );
    EXPECT_THAT( run( { "show", "--no-defaults", "agent" } ).out, EndsWith( longPath + "  K  r\n" ) );
}

TEST_F( ShowTest, onlyATerminalGetsColours ) {
    write( "agent", "agentName: Fan\n" );
    write( "bad", "agentName: Fan\n{\n" );
    const auto onTerminal = [this]( const std::string& file, const Environment& environment ) {
        return run( { "show", file }, environment, OutputTo::terminal ).out;
    };
    EXPECT_THAT( onTerminal( "agent", {} ), StartsWith( "agent \033[1mFan\033[0m  \033[32mvalid\033[0m" ) );
    EXPECT_THAT( onTerminal( "bad", {} ), HasSubstr( "\033[31minvalid\033[0m" ) );
    EXPECT_THAT( onTerminal( "bad", {} ), HasSubstr( "\033[1;31m^\033[0m" ) );
    EXPECT_THAT( onTerminal( "agent", { { "NO_COLOR", "" } } ), HasSubstr( "\033[" ) );
    for ( const Environment& plain :
          { Environment{ { "NO_COLOR", "1" } }, Environment{ { "TERM", "dumb" } } } )
        for ( const std::string file : { "agent", "bad" } )
            EXPECT_THAT( onTerminal( file, plain ), Not( HasSubstr( "\033" ) ) ) << plain.front().first;
    ProgramCall call{
        { "/bin/sh", "-c", "unset TERM; exec " MOUNTPROFILE_COMMAND " show agent" }, {}, directory() };
    call.output = OutputTo::terminal;
    EXPECT_THAT( runProgram( call ).out, HasSubstr( "\033[" ) )
        << "a terminal of no name is taken for a capable one";
    EXPECT_THAT( run( { "show", "bad" } ),
                 Answers( 1, Not( HasSubstr( "\033" ) ), Not( HasSubstr( "\033" ) ) ) );
}

TEST_F( ShowTest, noDefaultsLeavesOutTheDefaultGroup ) {
    write( "agent", "agentName: Fan\n" );
    EXPECT_THAT( groupsOf( document( { "agent" } ) ), ElementsAre( "all", "default" ) );
    EXPECT_THAT( groupsOf( document( { "--no-defaults", "agent" } ) ), ElementsAre( "all" ) );
}

TEST_F( ShowTest, theCellIsPartOfTheDefaultPaths ) {
    write( "agent", "agentName: Fan\n" );
    const std::string mount = "Corvid/localStatus Redundancy::LocalCellStatus r";
    EXPECT_TRUE( hasMount( document( { "agent" } ), "default", "cell/1/" + mount ) );
    EXPECT_TRUE( hasMount( document( { "--cell", "1", "agent" } ), "default", "cell/1/" + mount ) );
    EXPECT_TRUE( hasMount( document( { "--cell", "2", "agent" } ), "default", "cell/2/" + mount ) );
    EXPECT_TRUE( hasMount( document( { "--cell", "0", "agent" } ), "default", mount ) );
}

TEST_F( ShowTest, onlyARedundantSystemHasAPeer ) {
    write( "agent", "agentName: Fan\n" );
    const std::string peer = "agent/status/%agentString Agent::Status rD";
    for ( const std::string cell : { "0", "1", "2" } ) {
        const json alone = document( { "--system", "ar", "--cell", cell, "agent" } );
        EXPECT_THAT( groupsOf( alone ), ElementsAre( "all", "default" ) );
        EXPECT_EQ( alone.at( "profile" ), document( { "--cell", cell, "agent" } ).at( "profile" ) );

        const std::string other = std::to_string( 3 - std::stoi( cell ) );
        const json pair = document( { "--system", "ar", "--redundancy", "--cell", cell, "agent" } );
        EXPECT_THAT( groupsOf( pair ), ElementsAre( "all", "default", "peerReady" ) );
        EXPECT_TRUE( hasMount( pair, "default", "cell/" + other + "/" + peer ) ) << pair;
    }
}

TEST_F( ShowTest, theEnvironmentDecidesAboutThePeer ) {
    write( "agent", "agentName: Fan\n" );
    const std::vector<std::string> pair = { "--system", "ar", "--redundancy", "agent" };
    EXPECT_THAT( groupsOf( document( pair, { { "K7_CHROOT", "" } } ) ), ElementsAre( "all", "default" ) );
    EXPECT_THAT( groupsOf( document( pair, { { "K7_CHROOT", "1" }, { "AGENT_WAIT_FOR_READY", "" } } ) ),
                 ElementsAre( "all", "default", "peerReady" ) );
    EXPECT_TRUE( hasMount( document( pair, { { "ACTIVE_CELLID", "7" } } ), "default",
                           "cell/7/agent/status/%agentString Agent::Status rD" ) );
}

TEST_F( ShowTest, theConfigRootStandsInForAMissingIncludeFile ) {
    write( "agent", "agentName: Fan\ninclude: ConfigMountProfile\n" );
    write( "root", "sys/b Sys::B irw\n  sys/a\tSys::A   w\r\n\n \t\nsys/c Sys::C" );
    const std::vector<std::string> arguments = { "--no-defaults", "--system", "ar",
                                                 "--config-root", "root",     "agent" };
    const json configured = document( arguments, { { "K7_CHROOT", "" } } );
    EXPECT_THAT( mountsOf( configured, "all" ),
                 ElementsAre( "sys/a Sys::A w", "sys/b Sys::B wi", "sys/c Sys::C w" ) );
    EXPECT_EQ( document( arguments ).at( "outcome" ), "invalid" );
}

TEST_F( ShowTest, configuredPathsAreMountedInTheOrderOfTheirFile ) {
    write( "agent", "agentName: Fan\ninclude: ConfigMountProfile\n" );
    write( "root", "x/2 Sys::B w\nbad/%key Sys::A w\nx/1 Sys::C w\n" );
    const std::vector<std::string> arguments = { "--no-defaults", "--system", "ar",
                                                 "--config-root", "root",     "agent" };
    EXPECT_THAT( mountsOf( document( arguments, { { "K7_CHROOT", "" } } ), "all" ),
                 ElementsAre( "bad/%key Sys::A w", "x/1 Sys::C w", "x/2 Sys::B w" ) );
}

} // namespace

} // namespace Corvid::Testing
