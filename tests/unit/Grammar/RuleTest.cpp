// The parser's rules run one by one: what each takes, where it stops, and under which number it reports.

#include <gtest/gtest.h>

#include <map>

#include "RuleRun.h"

namespace CorvidTest {

namespace {

using RuleCall = std::function<void( Parser* )>;

#define RULE( name )                                                                                         \
    {                                                                                                        \
#name, []( Parser * parser ) { parser->name( parser ); }                                             \
    }
const std::map<std::string, RuleCall>& rules() {
    static const std::map<std::string, RuleCall> calls{
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
    return calls;
}
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
        { "includeFile", "/a, T, r\n)", "2", 10, "CLOSEPAREN" },
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
        { "mountEntry", "/a? T, r", "21", 10, "UIDENT" },
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
        { "rvalue", "len( /a.b", "37", 10, "NEWLN" },
    };
    for ( const Failure& row : failures ) {
        SCOPED_TRACE( std::string( row.rule ) + " over " + row.text );
        const RuleRun run( rules().at( row.rule ), row.text );
        EXPECT_EQ( run.reports(), row.reports );
        EXPECT_EQ( run.error().kind, row.kind );
        EXPECT_EQ( run.error().token, row.token );
    }
}

} // namespace

} // namespace CorvidTest
