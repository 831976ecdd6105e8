// show --origin: which line gave what. The text for people is shown by the cases in conformance/origins.

#include "cli/CommandTest.h"

#include <nlohmann/json.hpp>

namespace Corvid::Testing {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

class OriginTest : public CommandTest {
  protected:
    [[nodiscard]] json document( const std::vector<std::string>& arguments ) const {
        std::vector<std::string> all = { "show", "--json" };
        all.insert( all.end(), arguments.begin(), arguments.end() );
        return json::parse( run( all ).out );
    }
    [[nodiscard]] json origin( const std::string& file ) const {
        return document( { "--origin", "--no-defaults", file } ).at( "origin" );
    }
    static json line( int number, const std::string& file = "agent" ) {
        return { { "kind", "line" }, { "file", file }, { "line", number } };
    }
};

TEST_F( OriginTest, theDocumentOnlyGetsOneMoreKeyAtItsEnd ) {
    write( "agent", "agentName: Fan\n/a, Fan::A, r\n" );
    const std::string without = run( { "show", "--json", "agent" } ).out;
    const std::string with = run( { "show", "--json", "--origin", "agent" } ).out;
    ASSERT_TRUE( without.ends_with( "}}\n" ) );
    EXPECT_TRUE( with.starts_with( without.substr( 0, without.size() - 2 ) + ",\n \"origin\": {" ) ) << with;
    EXPECT_FALSE( json::parse( without ).contains( "origin" ) );
}

TEST_F( OriginTest, statementsAboutTheAgentHaveTheirLines ) {
    write( "agent", "agentName: Fan-%slot\nhybridMount\nrootFlags: r\nrootFlags: w\nsubAgent: S\n"
                    "alias: %a = %slot\nhybridMount\n" );
    const json found = origin( "agent" );
    EXPECT_EQ( found.at( "agentName" ), json( { { { "text", "Fan-" }, { "origin", line( 1 ) } } } ) );
    EXPECT_EQ( found.at( "templateKey" ), json( { { { "text", "%slot" }, { "origin", line( 1 ) } } } ) );
    EXPECT_EQ( found.at( "hybridMount" ),
               json( { { { "origin", line( 2 ) } }, { { "origin", line( 7 ) } } } ) );
    EXPECT_EQ( found.at( "lowMountPrio" ), json::array() );
    EXPECT_EQ( found.at( "rootFlags" ), json( { { { "text", "r" }, { "origin", line( 3 ) } },
                                                { { "text", "w" }, { "origin", line( 4 ) } } } ) );
    EXPECT_EQ( found.at( "subAgents" ), json( { { { "text", "S" }, { "origin", line( 5 ) } } } ) );
    EXPECT_EQ( found.at( "aliasKey" ), json( { { { "text", "%a" }, { "origin", line( 6 ) } } } ) );
}

TEST_F( OriginTest, aMountHasAllItsLines ) {
    write( "agent", "agentName: Fan\nmountFilter: f\nstate, up\n/a, Fan::A, ri, f\n/a/, Fan::A, rw\n" );
    const json found = origin( "agent" );
    EXPECT_EQ(
        found.at( "mountGroup" ).at( "all" ).at( "mountProfile" ).at( "a" ),
        json( { { { "flags", "ri" }, { "added", "ri" }, { "mountFilter", "f" }, { "origin", line( 4 ) } },
                { { "flags", "rw" }, { "added", "w" }, { "mountFilter", "" }, { "origin", line( 5 ) } } } ) );
    EXPECT_EQ( found.at( "mountFilter" ).at( "f" ).at( "origin" ), line( 2 ) );
    EXPECT_EQ( found.at( "mountFilter" ).at( "f" ).at( "attrFilter" ).at( "state" ),
               json( { { { "filterKey", "up" }, { "origin", line( 3 ) } } } ) );
}

TEST_F( OriginTest, aGroupHasItsOpeningsAndItsConditions ) {
    write( "agent", "agentName: Fan-%k\nmountGroup: g, 5\nconditionBlocker: 1 == /a.b and x == %k\n"
                    "mountGroup: g, 6\n" );
    const json group = origin( "agent" ).at( "mountGroup" ).at( "g" );
    EXPECT_EQ( group.at( "opened" ), json( { { { "priority", 5 }, { "origin", line( 2 ) } },
                                             { { "priority", 6 }, { "origin", line( 4 ) } } } ) );
    EXPECT_EQ( group.at( "blockingConditional" ), json( { { { "origin", line( 3 ) } } } ) );
    EXPECT_EQ( group.at( "entireCondition" ),
               json( { { { "text", "1 == /a.b and x == %k" }, { "origin", line( 3 ) } } } ) );
    EXPECT_EQ( group.at( "conditionCol" ), json( { { { "text", "1 == /a.b" }, { "origin", line( 3 ) } } } ) );
    EXPECT_EQ( group.at( "templateConditionCol" ),
               json( { { { "text", "x == %k" }, { "origin", line( 3 ) } } } ) );
}

TEST_F( OriginTest, aLineOfAnIncludeFileNamesTheLineThatIncludesIt ) {
    write( "d/agent", "agentName: Fan\n\ninclude: *.inc\n" );
    write( "d/x.inc", "/a, Fan::A, r\n" );
    json expected = line( 1, "d/x.inc" );
    expected["includedFrom"] = { { "file", "d/agent" }, { "line", 3 }, { "pattern", "*.inc" } };
    EXPECT_EQ( origin( "d/agent" )
                   .at( "mountGroup" )
                   .at( "all" )
                   .at( "mountProfile" )
                   .at( "a" )
                   .at( 0 )
                   .at( "origin" ),
               expected );
}

TEST_F( OriginTest, whatNoLineGaveIsTheDefault ) {
    write( "agent", "agentName: Fan\n" );
    const json groups = document( { "--origin", "agent" } ).at( "origin" ).at( "mountGroup" );
    const json byDefault = { { "kind", "default" } };
    EXPECT_EQ( groups.at( "all" ).at( "opened" ).at( 0 ).at( "origin" ), byDefault );
    EXPECT_EQ( groups.at( "default" ).at( "mountProfile" ).at( "logging/config" ).at( 0 ).at( "origin" ),
               byDefault );
}

TEST_F( OriginTest, aConfiguredPathNamesTheLineThatAsksForAll ) {
    write( "agent", "agentName: Fan\ninclude: ConfigMountProfile\n" );
    write( "root", "a Fan::A w\n" );
    const auto shown =
        run( { "show", "--json", "--origin", "--system", "ar", "--config-root", "root", "agent" },
             { { "K7_CHROOT", "/" } } );
    const json steps = json::parse( shown.out ).at( "/origin/mountGroup/all/mountProfile/a"_json_pointer );
    EXPECT_EQ( steps.at( 0 ).at( "origin" ),
               json( { { "kind", "configuredPath" }, { "file", "agent" }, { "line", 2 } } ) );
}

TEST_F( OriginTest, aFileWithoutAProfileHasNoOrigins ) {
    EXPECT_EQ( run( { "show", "--json", "--origin", "nowhere" } ).out,
               run( { "show", "--json", "nowhere" } ).out );
    write( "inc", "/a, Fan::A, r\n" );
    EXPECT_EQ( origin( "inc" ).at( "mountGroup" ), json::object() );
    EXPECT_EQ( run( { "show", "--origin", "inc" } ).out, "" );
}

TEST_F( OriginTest, aFileNameCannotControlTheTerminal ) {
    write( "a\033[2Jgent\xFF", "agentName: Fan\n/a, Fan::A, r\n" );
    const auto shown = run( { "show", "--origin", "a\033[2Jgent\xFF" } );
    EXPECT_THAT( shown.out, HasSubstr( "[a\\x1B[2Jgent\\xFF:2]" ) );
    EXPECT_THAT( shown.out, Not( HasSubstr( "\033" ) ) );
    EXPECT_EQ( origin( "a\033[2Jgent\xFF" ).at( "agentName" ).at( 0 ).at( "origin" ).at( "file" ),
               "a\u001B[2Jgent\u00FF" );
}

} // namespace

} // namespace Corvid::Testing
