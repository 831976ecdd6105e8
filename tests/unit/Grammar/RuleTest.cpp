// The parser's rules run one by one: what each takes, where it stops, and under which number it reports.

#include <gtest/gtest.h>

#include <map>

#include "RuleRun.h"

namespace CorvidTest {

namespace {

using RuleCall = std::function<void( Parser* )>;

#define RULE( name ) std::pair( #name, RuleCall( []( Parser* parser ) { parser->name( parser ); } ) )
const std::map<std::string, RuleCall> rules{
    { "profile", []( Parser* parser ) { parser->profile( parser, false ); } },
    { "profile of an include file", []( Parser* parser ) { parser->profile( parser, true ); } },
    RULE( agentFile ),
    RULE( includeFile ),
    RULE( agent ),
    RULE( agentId ),
    RULE( templateKeys ),
    RULE( templateKey ),
    RULE( ident ),
    RULE( keyword ),
    RULE( attrIdent ),
    RULE( typeIdent ),
    RULE( statements ),
    RULE( mountFilter ),
    RULE( mountFilterId ),
    RULE( mountFilterBody ),
    RULE( mountFilterAttrSpec ),
    RULE( mountFilterKey ),
    RULE( property ),
    RULE( subAgent ),
    RULE( alias ),
    RULE( rootFlags ),
    RULE( mountEntry ),
    RULE( include ),
    RULE( includeFilePattern ),
    RULE( path ),
    RULE( pathUnit ),
    RULE( entityType ),
    RULE( mountGroup ),
    RULE( mountGroupId ),
    RULE( mountGroupBody ),
    RULE( entireCondition ),
    RULE( conditions ),
    RULE( condition ),
    RULE( lvalue ),
    RULE( str ),
    RULE( number ),
    RULE( condPath ),
    RULE( rvalue ),
};
#undef RULE

struct Failure {
    const char* rule;
    const char* text;
    const char* reports; ///< the rules' numbers, the innermost first
    std::uint32_t kind;
    const char* token; ///< the offending one
};

// Every rule from 0 to 37 is among those that report, at least once as the innermost one where it can fail by
// itself.
TEST( Rules, ReportTheirPlaceInTheGrammarTheInnermostFirst ) {
    const Failure failures[] = {
        { "profile of an include file", "", "0", 3, "EOF" },
        { "profile of an include file", "agentname:", "0", 3, "AGENTNAME" },
        { "agentFile", "x", "3 1", 2, "LIDENT" },
        { "includeFile", ")", "2", 5, "CLOSEPAREN" },
        { "profile of an include file", "/a, T, r\n)", "2 0", 10, "CLOSEPAREN" },
        { "includeFile", "/a, T, r\nhybridMount", "2", 1, "HYBRIDMOUNT" },
        { "includeFile", "/a, T, r\nlowMountPrio", "2", 1, "LOWMOUNTPRIO" },
        { "includeFile", "/a, T, r\nnoDefaultMountGroup", "2", 1, "NODEFAULTMOUNTGROUP" },
        { "agent", "agentName x", "3", 10, "LIDENT" },
        { "agent", "agentName = :", "3", 9, "EQUAL" },
        { "agent", "agentName: a)", "3", 5, "CLOSEPAREN" },
        { "agent", "agentName: )", "4 3", 3, "CLOSEPAREN" },
        { "agentId", ")", "4", 3, "CLOSEPAREN" },
        { "agentId", "-", "4", 3, "NEWLN" },
        { "templateKeys", ")", "5", 5, "CLOSEPAREN" },
        { "templateKeys", "-x", "6 5", 10, "LIDENT" },
        { "templateKeys", "-%x$ y", "5", 1, "LIDENT" },
        { "templateKey", "=", "6", 2, "EQUAL" },
        { "templateKey", "%7", "7 6", 3, "INT" },
        { "ident", "7", "7", 3, "INT" },
        { "keyword", "x", "8", 4, "LIDENT" },
        { "attrIdent", "X", "9", 3, "UIDENT" },
        { "typeIdent", "x", "10", 3, "LIDENT" },
        { "statements", "=", "11", 3, "EQUAL" },
        { "statements", "/a, T, r\n=", "11", 1, "EQUAL" },
        { "mountFilter", "x", "12", 2, "LIDENT" },
        { "mountFilter", "mountFilter: f)", "12", 5, "CLOSEPAREN" },
        { "mountFilter", "mountFilter: )", "13 12", 5, "CLOSEPAREN" },
        { "mountFilterId", ")", "13", 5, "CLOSEPAREN" },
        { "mountFilterBody", "a, b)", "15 14", 5, "CLOSEPAREN" },
        { "mountFilterAttrSpec", "a, )", "15", 3, "CLOSEPAREN" },
        { "mountFilterAttrSpec", "a)", "15", 5, "CLOSEPAREN" },
        { "mountFilterAttrSpec", "A", "9 15", 3, "UIDENT" },
        { "mountFilterKey", ")", "16", 5, "CLOSEPAREN" },
        { "property", "x", "17", 3, "LIDENT" },
        { "property", "hybridMount x", "17", 5, "LIDENT" },
        { "subAgent", "subAgent: a)", "18", 5, "CLOSEPAREN" },
        { "subAgent", "subAgent: a-%abc$", "18", 5, "DOLLAR" },
        { "alias", "alias: %x = %abc)", "19", 5, "CLOSEPAREN" },
        { "alias", "alias: %x %abc", "19", 10, "PERCENTAGE" },
        { "alias", "alias: %x )", "19", 2, "CLOSEPAREN" },
        { "rootFlags", "rootFlags: rw)", "20", 5, "CLOSEPAREN" },
        { "rootFlags", "rootFlags: )", "7 20", 3, "CLOSEPAREN" },
        { "mountEntry", ")", "21", 3, "CLOSEPAREN" },
        { "mountEntry", "/a, T, r)", "21", 5, "CLOSEPAREN" },
        { "mountEntry", "alias:", "21", 1, "COLON" },
        { "mountEntry", "\"a\":", "21", 1, "COLON" },
        { "mountEntry", "/a ), T, r", "21", 9, "CLOSEPAREN" },
        { "mountEntry", "/a? T", "21", 10, "UIDENT" },
        { "mountEntry", "/a? T, r", "21", 9, "UIDENT" },
        { "mountEntry", "/a, T", "21", 2, "NEWLN" },
        { "mountEntry", "/a, T, r, )", "13 21", 5, "CLOSEPAREN" },
        { "include", "include )", "22", 2, "CLOSEPAREN" },
        { "includeFilePattern", ")", "23", 5, "CLOSEPAREN" },
        { "path", "/", "25 24", 5, "NEWLN" },
        { "pathUnit", ")", "25", 5, "CLOSEPAREN" },
        { "pathUnit", "a%)", "7 6 25", 3, "CLOSEPAREN" },
        { "entityType", "::)", "10 26", 3, "CLOSEPAREN" },
        { "mountGroup", "mountGroup: g)", "27", 5, "CLOSEPAREN" },
        { "mountGroup", "mountGroup: g, x", "27", 2, "LIDENT" },
        { "mountGroup", "mountGroup g", "27", 10, "LIDENT" },
        { "mountGroup", "mountGroup: )", "28 27", 5, "CLOSEPAREN" },
        { "mountGroupId", ")", "28", 5, "CLOSEPAREN" },
        { "mountGroupBody", "condition: )", "33 32 31 30 29", 3, "CLOSEPAREN" },
        { "entireCondition", "x", "30", 3, "LIDENT" },
        { "entireCondition", "condition x", "30", 10, "LIDENT" },
        { "entireCondition", "condition: 1 == /a.b)", "30", 5, "CLOSEPAREN" },
        { "conditions", "1 == /a.b and )", "33 32 31", 3, "CLOSEPAREN" },
        { "condition", "1 )", "32", 2, "CLOSEPAREN" },
        { "condition", "1 /a.b", "32", 10, "SLASH" },
        { "condition", "1 ) == /a.b", "32", 9, "CLOSEPAREN" },
        { "lvalue", "==", "33", 3, "OP" },
        { "lvalue", "-x", "35 33", 4, "LIDENT" },
        { "str", "7", "34", 3, "INT" },
        { "number", "-x", "35", 4, "LIDENT" },
        { "number", "x", "35", 4, "LIDENT" },
        { "condPath", "x", "36", 10, "LIDENT" },
        { "condPath", "=", "36", 2, "EQUAL" },
        { "condPath", "/a/.b", "25 36", 5, "DOT" },
        { "rvalue", "7", "37", 3, "INT" },
        { "rvalue", "name", "37", 1, "NEWLN" },
        { "rvalue", "/a", "37", 2, "NEWLN" },
        { "rvalue", "/a b", "37", 2, "NEWLN" },
        { "rvalue", "len /a.b)", "37", 1, "SLASH" },
        { "rvalue", "len( /a.b = )", "37", 9, "EQUAL" },
        { "rvalue", "len( /a.b = = )", "37", 2, "EQUAL" },
    };
    for ( const Failure& row : failures )
        for ( const auto path : { Corvid::TokenPath::fast, Corvid::TokenPath::plain } ) {
            SCOPED_TRACE( std::string( row.rule ) + " over " + row.text );
            const RuleRun run( rules.at( row.rule ), row.text, path );
            EXPECT_EQ( run.reports(), row.reports );
            EXPECT_EQ( run.error().kind, row.kind );
            EXPECT_EQ( run.error().token, row.token );
        }
}

// The innermost rule reports, then every enclosing one as the parse unwinds, and nothing goes on.
TEST( Rules, UnwindToTheStartRule ) {
    const Failure failures[] = {
        { "profile", "agentName: A\nmountGroup: g\ncondition: -x == /a.b\n/a, T, r",
          "35 33 32 31 30 29 27 11 3 1 0", 4, "LIDENT" },
        { "profile", "agentName: A\nmountGroup: g\ncondition: a == len( /a.b\n/a, T, r",
          "37 32 31 30 29 27 11 3 1 0", 10, "NEWLN" },
        { "profile", "agentName: A\nmountGroup: g\ncondition: a == /a.B", "9 37 32 31 30 29 27 11 3 1 0", 3,
          "UIDENT" },
        { "profile", "agentName: A\nmountFilter: f\na, b)", "15 14 12 11 3 1 0", 5, "CLOSEPAREN" },
        { "profile", "agentName: A\nmountGroup: g\n/a, t, r", "10 26 21 29 27 11 3 1 0", 3, "LIDENT" },
        { "profile", "agentName: A\n/%7, T, r", "7 6 25 24 21 11 3 1 0", 3, "INT" },
        { "profile", "agentName: A-%7", "7 6 5 3 1 0", 3, "INT" },
        { "profile of an include file", "/a, T, 7", "7 21 2 0", 3, "INT" },
    };
    for ( const Failure& row : failures )
        for ( const auto path : { Corvid::TokenPath::fast, Corvid::TokenPath::plain } ) {
            SCOPED_TRACE( std::string( row.rule ) + " over " + row.text );
            const RuleRun run( rules.at( row.rule ), row.text, path );
            EXPECT_EQ( run.reports(), row.reports );
            EXPECT_EQ( run.error().kind, row.kind );
            EXPECT_EQ( run.error().token, row.token );
        }
}

// What is not in the records, seen through a mount that uses it.
TEST( Rules, DeclareWhatTheyDeclareBeforeTheyFail ) {
    const auto mountAfter = []( const char* rule, const char* text, const char* filter ) {
        RuleRun run( rules.at( rule ), text, Corvid::TokenPath::fast );
        EXPECT_NE( run.reports(), "" );
        run.hdlr().addMount( "x", "T", "r", filter );
        const Corvid::Mount* mount = run.hdlr().currMg()->mountProfile( "x" );
        return mount ? mount->mountFilter() : Corvid::MountFilter();
    };
    EXPECT_EQ( mountAfter( "mountFilter", "mountFilter: f)", "f" ).enabled(), 1 );
    Corvid::MountFilter expected;
    expected.enabledIs( 1 );
    expected.newAttrFilter( Corvid::AttrFilter( "a", "b" ) );
    EXPECT_EQ( mountAfter( "mountFilterAttrSpec", "a, b)", "declared" ), expected );

    for ( const auto& [rule, text] :
          { std::pair( "templateKeys", "-%k$ y" ), std::pair( "templateKeys", "-%k-7" ),
            std::pair( "alias", "alias: %k = %abc)" ) } ) {
        RuleRun run( rules.at( rule ), text, Corvid::TokenPath::fast );
        EXPECT_NE( run.reports(), "" );
        EXPECT_TRUE( run.hdlr().validateTemplateKey( "%k" ) ) << text;
    }
}

struct Taken {
    const char* rule;
    const char* text;
    const char* consumed; ///< "(all)" with the appended line end
    const char* next;     ///< the token at which the rule stops
};

void expectTaken( std::initializer_list<Taken> rows ) {
    for ( const Taken& row : rows )
        for ( const auto path : { Corvid::TokenPath::fast, Corvid::TokenPath::plain } ) {
            SCOPED_TRACE( std::string( row.rule ) + " over " + row.text );
            const RuleRun run( rules.at( row.rule ), row.text, path );
            EXPECT_EQ( run.reports(), "" );
            EXPECT_EQ( run.consumed(), row.consumed );
            EXPECT_EQ( run.next(), row.next );
        }
}

TEST( Rules, OfNamesTakeEveryKeywordButTheProperties ) {
    for ( const TokenSample& sample : tokenSamples() ) {
        SCOPED_TRACE( sample.text );
        const bool isAttribute = isKeyword( sample.type ) || sample.type == LIDENT;
        const bool isType = isKeyword( sample.type ) || sample.type == UIDENT;
        const auto runs = [&]( const char* rule, const std::string& text ) {
            return RuleRun( rules.at( rule ), text, Corvid::TokenPath::fast ).reports();
        };
        EXPECT_EQ( runs( "ident", sample.text ), isIdentifier( sample.type ) ? "" : "7" );
        EXPECT_EQ( runs( "keyword", sample.text ), isKeyword( sample.type ) ? "" : "8" );
        EXPECT_EQ( runs( "attrIdent", sample.text ), isAttribute ? "" : "9" );
        EXPECT_EQ( runs( "typeIdent", sample.text ), isType ? "" : "10" );
        EXPECT_EQ( runs( "templateKey", std::string( "%" ) + sample.text ),
                   isIdentifier( sample.type ) ? "" : "7 6" );
        EXPECT_EQ( runs( "property", sample.text ), isProperty( sample.type ) ? "" : "17" );
        EXPECT_EQ( runs( "number", sample.text ),
                   sample.type == FLOAT || sample.type == HEX || sample.type == INT ? "" : "35" );
    }
}

TEST( Rules, OfTheTitleLineStopWhereTheTemplateKeysBegin ) {
    expectTaken( {
        { "agentId", "a", "a", "NEWLN" },
        { "agentId", "A", "A", "NEWLN" },
        { "agentId", "7", "7", "NEWLN" },
        { "agentId", "include", "include", "NEWLN" },
        { "agentId", "my-agent-2", "my-agent-2", "NEWLN" },
        { "agentId", "my agent 2", "my agent 2", "NEWLN" },
        { "agentId", "a-%k", "a", "HYPHEN" },
        { "agentId", "A-%k", "A", "HYPHEN" },
        { "agentId", "7-%k", "7", "HYPHEN" },
        { "agentId", "alias-%k", "alias", "HYPHEN" },
        { "agentId", "a-b-%k", "a-b", "HYPHEN" },
        { "agentId", "a--b-%k", "a--b", "HYPHEN" },
        { "agentId", "-a", "-a", "NEWLN" },
        { "agentId", "--7", "--7", "NEWLN" },
        { "agentId", "a-", "a", "HYPHEN" },
        { "agentId", "a-)", "a", "HYPHEN" },
        { "agentId", "a)", "a", "CLOSEPAREN" },
        { "agentId", "a hybridMount", "a", "HYBRIDMOUNT" },
        { "agentId", "a7A-7a-A alias", "a7A-7a-A alias", "NEWLN" },
        { "templateKeys", "-%a", "-%a", "NEWLN" },
        { "templateKeys", "-%a-%B-%alias", "-%a-%B-%alias", "NEWLN" },
        { "templateKeys", "-%a$", "-%a$", "NEWLN" },
        { "templateKeys", "- % a-%b $", "- % a-%b $", "NEWLN" },
        { "templateKeys", "-%a 7", "-%a", "INT" },
        { "agent", "agentName: a", "(all)", "EOF" },
        { "agent", "agentName: a-%b\n\n\n", "(all)", "EOF" },
        { "agentFile", "agentName: a\n/a, T, r", "(all)", "EOF" },
        { "profile", "\n\nagentName: a", "(all)", "EOF" },
        { "profile", "\n\nagentName a", "\n\n", "AGENTNAME" },
    } );
}

TEST( Rules, OfStatementsTakeTheLineAndTheBlankLinesBehindIt ) {
    expectTaken( {
        { "property", "lowMountPrio\n\n\nx", "lowMountPrio\n\n\n", "LIDENT" },
        { "property", "noDefaultMountGroup\nx", "noDefaultMountGroup\n", "LIDENT" },
        { "property", "hybridMount", "(all)", "EOF" },
        { "subAgent", "subAgent: a\nx", "subAgent: a\n", "LIDENT" },
        { "subAgent", "subAgent: a-b-%abc-%Abc\n\nx", "subAgent: a-b-%abc-%Abc\n\n", "LIDENT" },
        { "alias", "alias: %x = %abc\nx", "alias: %x = %abc\n", "LIDENT" },
        { "alias", "alias: %x = %abc, %Abc, %alias\n\nx", "alias: %x = %abc, %Abc, %alias\n\n", "LIDENT" },
        { "rootFlags", "rootFlags: rw\nx", "rootFlags: rw\n", "LIDENT" },
        { "rootFlags", "rootFlags: S\n\nx", "rootFlags: S\n\n", "LIDENT" },
        { "includeFilePattern", "a", "a", "NEWLN" },
        { "includeFilePattern", "*.inc-7 A alias/", "*.inc-7 A alias", "SLASH" },
        { "mountFilter", "mountFilter: f\n\nA", "mountFilter: f\n\n", "UIDENT" },
        { "mountFilter", "mountFilter: f-1\na\nb, c\n", "(all)", "EOF" },
        { "mountFilterId", "f-1 A alias,", "f-1 A alias", "COMMA" },
        { "mountFilterId", "-", "-", "NEWLN" },
        { "mountFilterAttrSpec", "a\n\nx", "a\n\n", "LIDENT" },
        { "mountFilterAttrSpec", "alias, b-7 C\nx", "alias, b-7 C\n", "LIDENT" },
        { "mountFilterAttrSpec", "a, \"x y\"\nx", "a, \"x y\"\n", "LIDENT" },
        { "mountFilterAttrSpec", "a, \"x\" \"y\"\nx", "a, \"x\" \"y\"\n", "LIDENT" },
        { "mountFilterKey", "a-7A alias)", "a-7A alias", "CLOSEPAREN" },
        { "mountGroup", "mountGroup: g\n\nmountGroup:", "mountGroup: g\n\n", "MOUNTGROUP" },
        { "mountGroup", "mountGroup: g-1, 20\n/a, T, r\n", "(all)", "EOF" },
        { "mountGroupId", "-g7A alias,", "-g7A alias", "COMMA" },
        { "mountGroupBody", "", "", "NEWLN" },
        { "mountGroupBody", "/a, T, r\n/b, T, r\nmountFilter:", "/a, T, r\n/b, T, r\n", "MOUNTFILTER" },
        { "mountGroupBody", "condition: 1 == /a.b\n/a, T, r\n=", "condition: 1 == /a.b\n/a, T, r\n",
          "EQUAL" },
    } );
}

TEST( Rules, OfMountLinesTakePathTypeFlagsAndMaybeAFilter ) {
    expectTaken( {
        { "mountEntry", "/a, T, r\n\nx", "/a, T, r\n\n", "LIDENT" },
        { "mountEntry", "a/b/?, ::T::U, rw, declared\nx", "a/b/?, ::T::U, rw, declared\n", "LIDENT" },
        { "mountEntry", "\"a\", T, r\nx", "\"a\", T, r\n", "LIDENT" },
        { "mountEntry", "\"a\" \"b\", T, r\nx", "\"a\" \"b\", T, r\n", "LIDENT" },
        { "includeFile", "/a, T, r", "(all)", "EOF" },
        { "includeFile", "/a, T, r\n/b, T, r", "(all)", "EOF" },
        { "path", "a", "a", "NEWLN" },
        { "path", "/a", "/a", "NEWLN" },
        { "path", "/a/", "/a/", "NEWLN" },
        { "path", "/a/b/c", "/a/b/c", "NEWLN" },
        { "path", "/a//", "/a/", "SLASH" },
        { "path", "/a?", "/a?", "NEWLN" },
        { "path", "/a/?", "/a/?", "NEWLN" },
        { "path", "/a??", "/a?", "QSNMARK" },
        { "path", "/a?/", "/a?", "SLASH" },
        { "path", "/a/.", "/a/", "DOT" },
        { "path", "/a/\"b\"", "/a/", "STRING" },
        { "pathUnit", "7a-::%abc/", "7a-::%abc", "SLASH" },
        { "pathUnit", "::", "::", "NEWLN" },
        { "pathUnit", "a.b", "a", "DOT" },
        { "entityType", "T", "T", "NEWLN" },
        { "entityType", "::T", "::T", "NEWLN" },
        { "entityType", "Kiv::Entity::alias,", "Kiv::Entity::alias", "COMMA" },
        { "entityType", "T U", "T", "UIDENT" },
    } );
}

TEST( Rules, OfConditionsTakeComparisonsAndTheirSides ) {
    expectTaken( {
        { "entireCondition", "condition: 1 == /a.b\n\nx", "condition: 1 == /a.b\n\n", "LIDENT" },
        { "entireCondition", "conditionBlocker: 1 == /a.b\nx", "conditionBlocker: 1 == /a.b\n", "LIDENT" },
        { "conditions", "1 == /a.b", "1 == /a.b", "NEWLN" },
        { "conditions", "1 == /a.b and x in /c.d and y < %abc)", "1 == /a.b and x in /c.d and y < %abc",
          "CLOSEPAREN" },
        { "condition", "a notin len(/a.b)", "a notin len(/a.b)", "NEWLN" },
        { "lvalue", "-7 x", "-7", "LIDENT" },
        { "lvalue", "0x1F x", "0x1F", "LIDENT" },
        { "lvalue", "1.5 x", "1.5", "LIDENT" },
        { "lvalue", "a-7 A %abc-)", "a-7 A %abc-", "CLOSEPAREN" },
        { "lvalue", "%abc", "%abc", "NEWLN" },
        { "str", "a", "a", "NEWLN" },
        { "str", "%abc%Abc", "%abc%Abc", "NEWLN" },
        { "str", "a 1.5", "a", "FLOAT" },
        { "str", "a/b", "a", "SLASH" },
        { "number", "- 7", "- 7", "NEWLN" },
        { "number", "-1.5", "-1.5", "NEWLN" },
        { "number", "-0x1", "-0x1", "NEWLN" },
        { "condPath", "/a", "/a", "NEWLN" },
        { "condPath", "/a/%abc-7::b.c", "/a/%abc-7::b", "DOT" },
        { "condPath", "/a?", "/a", "QSNMARK" },
        { "rvalue", "/a/b.c", "/a/b.c", "NEWLN" },
        { "rvalue", "/a.alias and", "/a.alias", "AND" },
        { "rvalue", "%abc.", "%abc", "DOT" },
        { "rvalue", "len( /a/b.c )x", "len( /a/b.c )", "LIDENT" },
    } );
}

TEST( Rules, TakeALineOfMoreTokensThanAreKeptAlsoWhenNoRuleCallsThem ) {
    std::string text = "a";
    for ( int i = 0; i < 5000; ++i )
        text += "-a";
    const RuleRun run( rules.at( "agentId" ), text, Corvid::TokenPath::fast );
    EXPECT_EQ( run.reports(), "" );
    EXPECT_EQ( run.consumed(), text );
}

} // namespace

} // namespace CorvidTest
