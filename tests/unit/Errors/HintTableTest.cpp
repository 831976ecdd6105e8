#include "support/ParsedProfile.h"

#include "ProfileParser/ErrorWording.h"

#include <array>
#include <set>
#include <span>

#include "unit/Errors/ParserScene.h"

namespace {

using namespace CorvidTest;
namespace Wording = Corvid::ErrorWording;

/// A file that brings a rule to fail in one way.
struct Provocation {
    std::string lines;  ///< of the agent file, below its title line unless they begin with it
    std::string before; ///< what the description tells in front of the hint
    std::uint32_t line;
    std::int32_t position;
    std::map<std::string, std::string> files = {};
};

/// One hint, its text spelled out a second time: users' scripts compare these texts.
struct Row {
    std::int32_t rule;
    std::uint32_t kind;
    std::string hint;
    Provocation by;
};

const std::string inAll = " In mount group 'all' , ";
const std::string inG = " In mount group 'g' , ";

const std::vector<Row> provoked{
    { 0,
      3,
      "Include file should contain only mounts.",
      { "include: inc\n", " near 'agentName', ", 1, -1, { { "inc", "agentName: Fan\n" } } } },
    { 3,
      5,
      "Expecting end of agent title line.",
      { "agentName: Fan :\n", " In agent title,  near ':', ", 1, 14 } },
    { 4,
      3,
      "Unsupported agent id. Allowed character set: [a-z,A-Z,0-9,-,_]",
      { "agentName: \n", " In agent title,  near '\\n', ", 1, 10 } },
    { 7,
      3,
      "Expecting identifier. It can be upper or lower alphanumeric like [ xyz, Xyz, x0, x_y]",
      { "/a, T, 5\n", inAll + " near '5', ", 2, 7 } },
    { 9,
      3,
      "Invalid attribute name",
      { "mountGroup: g\ncondition: 1 == /a.Foo\n", inG + " near 'Foo', ", 3, 19 } },
    { 10, 3, "Invalid kiv type.", { "/a, kiv::Entity, r\n", inAll + " near 'kiv', ", 2, 4 } },
    { 12, 5, "Expecting end of line.", { "/a, T, r\nmountFilter: f =\n", inAll + " near '=', ", 3, 15 } },
    { 13,
      5,
      "Invalid mount filter id. Expecting combination of: [number, identifier, '-'] ",
      { "/a, T, r\nmountFilter: \n", inAll + " near '\\n', ", 3, 13 } },
    { 15, 5, "Expecting end of line.", { "mountFilter: f\nname, k1 :\n", " near ':', ", 3, 9 } },
    { 17, 5, "Expecting end of line.", { "hybridMount x\n", " near 'x', ", 2, 12 } },
    { 18, 5, "Expecting end of line.", { "subAgent: probe-%sysname$\n", " near '$', ", 2, 24 } },
    { 19, 5, "Expecting end of line.", { "alias: %a = %sysname x\n", " near 'x', ", 2, 21 } },
    { 20, 5, "Expecting end of line.", { "rootFlags: rw x\n", " near 'x', ", 2, 14 } },
    { 21, 5, "Expecting end of line.", { "/a, T, r x\n", inAll + " near 'x', ", 2, 9 } },
    { 22,
      5,
      "Expecting end of include here.Failed to associate subsequent characters with include pattern.",
      { "include: inc/b\n", inAll + " near '/', ", 2, 12, { { "inc", "/x, T, r\n" } } } },
    { 23,
      5,
      "Expecting combination of: [number, identifier, '-', '.', '*'] ",
      { "include: \n", inAll + " near '\\n', ", 2, 9 } },
    { 25,
      5,
      "Expecting combination of: [number, identifier, '-', template key, '::'] ",
      { "/, T, r\n", inAll + " near ',', ", 2, 1 } },
    { 27, 5, "Expecting end of line", { "mountGroup: g :\n", inG + " near ':', ", 2, 14 } },
    { 28,
      5,
      "Invalid mount group id. Expecting combination of: [number, identifier, '-'] ",
      { "mountGroup: \n", inAll + " near '\\n', ", 2, 12 } },
    { 30,
      5,
      "Expecting end of line.",
      { "mountGroup: g\ncondition: 1 == /a.b x\n", inG + " near 'x', ", 3, 21 } },
    { 33,
      3,
      "Invalid lvalue of a condition.",
      { "mountGroup: g\ncondition: == /a.b\n", inG + " near '==', ", 3, 11 } },
    { 35,
      4,
      "Expecting a number. It can be integer, float or hex",
      { "mountGroup: g\ncondition: -x == /a.b\n", inG + " near 'x', ", 3, 12 } },
    { 37,
      3,
      "Condition path should start with one of these:['/', 'len', template key (%xx)]",
      { "mountGroup: g\ncondition: 1 == 5\n", inG + " near '5', ", 3, 16 } },
};

/// A hint that no file can bring out, and the rule called by itself on a text that does.
struct UnreachableRow {
    std::int32_t rule;
    std::uint32_t kind;
    std::string hint;
    std::string text;
    std::string before;
    void ( *call )( mountProfileParser_Ctx_struct* );
};

const std::vector<UnreachableRow> unreachable{
    // The start rule enters the rule only at a token that begins a mount line, and so there always is one.
    { 2, 5, "Expecting minimum one mount entry.", ":", " In include file,  near ':', ",
      []( mountProfileParser_Ctx_struct* parser ) { parser->includeFile( parser ); } },
    // The title line enters the rule only at a hyphen, which begins the first template key.
    { 5, 5, "Expecting minimum one template key.", ":", " near ':', ",
      []( mountProfileParser_Ctx_struct* parser ) { parser->templateKeys( parser ); } },
    // A filter's body takes a line for an attribute's only when it has seen a value behind the comma.
    { 15, 3,
      "Expecting mount filter key. It can be a combination of: [number, identifier, '-'] or it can be string "
      "literal "
      "like \"key1\"",
      "name, :", " near ':', ",
      []( mountProfileParser_Ctx_struct* parser ) { parser->mountFilterAttrSpec( parser ); } },
};

TEST( HintTable, IsSpelledToTheByte ) {
    std::map<std::pair<std::int32_t, std::uint32_t>, std::string> expected;
    for ( const Row& row : provoked )
        expected[{ row.rule, row.kind }] = row.hint;
    for ( const UnreachableRow& row : unreachable )
        expected[{ row.rule, row.kind }] = row.hint;
    ASSERT_EQ( expected.size(), 26U );

    std::map<std::pair<std::int32_t, std::uint32_t>, std::string> actual;
    for ( const Wording::RuleHint& hint : Wording::ruleHints() )
        EXPECT_TRUE( actual.emplace( std::pair( hint.rule, hint.kind ), hint.text ).second ) << hint.rule;
    EXPECT_EQ( actual, expected );
}

TEST( HintTable, HasNoHintForAnyOtherRuleAndKind ) {
    std::set<std::pair<std::int32_t, std::uint32_t>> withHint;
    for ( const Wording::RuleHint& hint : Wording::ruleHints() )
        withHint.emplace( hint.rule, hint.kind );
    for ( std::int32_t rule = -1; rule <= 38; ++rule )
        for ( std::uint32_t kind = 0; kind <= 12; ++kind )
            EXPECT_EQ( Wording::ruleHint( rule, kind ).empty(), !withHint.contains( { rule, kind } ) )
                << "rule " << rule << ", kind " << kind;
}

TEST( HintTable, EveryReachableHintIsBroughtOutByAFile ) {
    for ( const Row& row : provoked ) {
        SCOPED_TRACE( "rule " + std::to_string( row.rule ) );
        const bool hasTitle = row.by.lines.starts_with( "agentName" );
        expectError( ( hasTitle ? "" : "agentName: Fan\n" ) + row.by.lines, row.by.before + row.hint,
                     row.by.line, row.by.position, row.kind, { .files = row.by.files } );
    }
}

TEST( HintTable, TheOtherHintsAreBroughtOutByTheirRulesAlone ) {
    for ( const UnreachableRow& row : unreachable ) {
        SCOPED_TRACE( "rule " + std::to_string( row.rule ) );
        ParserScene scene( row.text );
        row.call( scene.parser() );
        EXPECT_EQ( scene.description(), row.before + row.hint );
        EXPECT_EQ( scene.error().exceptionType(), row.kind );
        EXPECT_FALSE( scene.hdlr().validProfileFile() );
    }
}

} // namespace
