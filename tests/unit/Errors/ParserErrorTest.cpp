#include "support/ParsedProfile.h"

namespace {

using namespace CorvidTest;
using namespace std::string_literals;

/// An agent file's lines below the title line "agentName: Fan", and the error that they give.
struct Case {
    std::string lines;
    std::string description;
    std::uint32_t line;
    std::int32_t position;
    std::uint32_t kind;
    std::map<std::string, std::string> files = {};
};

void expectErrors( const std::vector<Case>& cases ) {
    for ( const Case& c : cases )
        expectError( "agentName: Fan\n" + c.lines, c.description, c.line, c.position, c.kind,
                     { .files = c.files } );
}

const std::string inAll = " In mount group 'all' , ";
const std::string inG = " In mount group 'g' , ";

TEST( ParserError, FillsAllFieldsButTheSourceLine ) {
    const ParsedProfile parsed( "agentName: Fan\nmountGroup: g\n  /a, kiv, r\n" );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    const auto& error = parsed.error();
    EXPECT_EQ( error.fileName().str(), parsed.agentFile() );
    EXPECT_EQ( error.includeFileName().str(), "" );
    EXPECT_EQ( error.line(), 3U );
    EXPECT_EQ( error.charPositionInLine(), 6 );
    EXPECT_EQ( error.exceptionType(), 3U );
    EXPECT_EQ( error.recognizer().str(), "parser" );
    EXPECT_EQ( error.description().str(), inG + " near 'kiv', Invalid kiv type." );
    EXPECT_EQ( error.sourceLine().str(), "" );
    EXPECT_EQ( parsed.profile()->errorDesc(), error );
}

TEST( ParserError, InAnIncludeFileNamesBothFiles ) {
    const ParsedProfile parsed( "agentName: Fan\ninclude: inc\n",
                                { .files = { { "inc", "/x, T, r\n/y, t, r\n" } } } );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    const auto& error = parsed.error();
    EXPECT_EQ( error.fileName().str(), parsed.agentFile() );
    EXPECT_EQ( error.includeFileName().str(), parsed.fileBeside( "inc" ) );
    EXPECT_EQ( error.line(), 2U );
    EXPECT_EQ( error.charPositionInLine(), 4 );
    EXPECT_EQ( error.exceptionType(), 3U );
    EXPECT_EQ( error.recognizer().str(), "parser" );
    EXPECT_EQ( error.description().str(), " In include file,  near 't', Invalid kiv type." );
    EXPECT_EQ( error.sourceLine().str(), "" );
    EXPECT_EQ( parsed.profile()->errorDesc(), error );
}

TEST( ParserError, BeginsWithTheSectionThatItIsIn ) {
    // The title line, the agent-level statements, the implicit group, a named group, an include file.
    expectError( "agentName: :\n",
                 " In agent title,  near ':', Unsupported agent id. "
                 "Allowed character set: [a-z,A-Z,0-9,-,_]",
                 1, 10, 3 );
    expectErrors( {
        { "hybridMount :\n", " near ':', Expecting end of line.", 2, 12, 5 },
        { "/a, T, r :\n", inAll + " near ':', Expecting end of line.", 2, 9, 5 },
        { "mountGroup: a-1 b, 5\n/a, T, r :\n", " In mount group 'a-1b' ,  near ':', Expecting end of line.",
          3, 9, 5 },
        { "include: inc\n",
          " In include file,  near ':', Expecting end of line.",
          1,
          8,
          5,
          { { "inc", "/a, T, r :" } } },
        // A mount filter keeps the section that it stands in.
        { "mountFilter: f\na, b :\n", " near ':', Expecting end of line.", 3, 5, 5 },
        { "mountGroup: g\nmountFilter: f\na, b :\n", inG + " near ':', Expecting end of line.", 4, 5, 5 },
        // A group's header that fails before its group is opened still stands in the group before it.
        { "mountGroup: g\nmountGroup: :\n",
          inG + " near ':', Invalid mount group id. Expecting combination of: [number, identifier, '-'] ", 3,
          12, 5 },
    } );
}

TEST( ParserError, ShowsTheOffendingToken ) {
    expectErrors( {
        { "/a, T, r 0x1F\n", inAll + " near '0x1F', Expecting end of line.", 2, 9, 5 },
        { "/a, T, r \"x y\"\n", inAll + " near '\"x y\"', Expecting end of line.", 2, 9, 5 },
        // A newline is spelled out, a carriage return is not.
        { "/a, T\n", inAll + " near '\\n',  Expected COMMA", 2, 5, 2 },
        { "/a, T\r\n", inAll + " near '\r',  Expected COMMA", 2, 5, 2 },
        // Bytes of any value come as they are, NUL included.
        { "/a, T, r \"\0\xE9\"\n"s, inAll + " near '\"\0\xE9\"', Expecting end of line."s, 2, 9, 5 },
        // Nothing but line ends before the end of the file.
        { "include: inc\n",
          " at <EOF>, Include file should contain only mounts.",
          2,
          0,
          3,
          { { "inc", "" } } },
    } );
}

TEST( ParserError, TellsUnwantedMissingAndMismatchedTokensApart ) {
    expectErrors( {
        // The next but one is the expected one.
        { "/a = , T, r\n", inAll + " near '=',  Extraneous input - expected COMMA", 2, 3, 9 },
        { "mountGroup: g\ncondition: x == len( /a.b 5 )\n",
          inG + " near '5',  Extraneous input - expected CLOSEPAREN", 3, 26, 9 },
        // The current one could follow the expected one.
        { "/a? Kiv::X, r\n", inAll + " near 'Kiv',  Missing COMMA", 2, 4, 10 },
        { "alias: %a %sysname\n", " near '%',  Missing EQUAL", 2, 10, 10 },
        { "mountGroup: g\ncondition: x /a.b\n", inG + " near '/',  Missing OP", 3, 13, 10 },
        { "mountGroup: g\ncondition: 1 == %\n",
          inG + " near '\\n', Expecting identifier. It can be upper or lower "
                "alphanumeric like [ xyz, Xyz, x0, x_y]",
          3, 17, 3 },
        // The last element of a rule counts as missing whatever stands there.
        { "mountGroup: g\ncondition: x == len( /a.b\n", inG + " near '\\n',  Missing CLOSEPAREN", 3, 25, 10 },
        { "include: inc\n",
          " In include file,  near '=',  Missing <EOF>",
          2,
          0,
          10,
          { { "inc", "/a, T, r\n= x\n" } } },
        // Neither.
        { "/a, T\n", inAll + " near '\\n',  Expected COMMA", 2, 5, 2 },
        { "mountGroup: g\ncondition: 1 == /a/b\n", inG + " near '\\n',  Expected DOT", 3, 20, 2 },
        { "mountGroup = g\n", inAll + " near '=',  Expected COLON", 2, 11, 2 },
    } );
    expectError( "agentName: Fan-%slot-x\n", " In agent title,  near 'x',  Missing PERCENTAGE", 1, 20, 10 );
}

TEST( ParserError, OfTheGrammarItselfHasItsOwnMessage ) {
    expectError( "agentName: Foo-%a$-%b\n",
                 " In agent title,  near '-', $ allowed with only last template key", 1, 17, 1 );
    expectErrors( {
        { "/a, T, r\nlowMountPrio\n",
          inAll + " near 'lowMountPrio', Failed to associate this line to mount filter or mount group.", 3, 0,
          1 },
        { "/a, T, r\nalias: %a = %b\n", inAll + " near ':', Invalid keyword before ':'", 3, 5, 1 },
        { "mountGroup: g\ncondition: 1 == /a.b\ncondition: 1 == /a.b\n",
          inG + " near ':', Invalid keyword before ':'", 4, 9, 1 },
        { "include: inc\n",
          " In include file,  near ':', Found ':', include file should only contain mounts",
          1,
          9,
          1,
          { { "inc", "mountGroup: x\n" } } },
        { "include: inc\n",
          " In include file,  near 'hybridMount', Include file should contain only mounts.",
          2,
          0,
          1,
          { { "inc", "/a, T, r\nhybridMount\n" } } },
        { "mountGroup: g\ncondition: x == a.b\n",
          inG + " near '.', condition path should be full path from root '/'", 3, 17, 1 },
    } );
}

TEST( ParserError, WithNothingToTellIsASyntaxError ) {
    expectErrors( {
        { "= x\n", " near '=', Syntax error.", 2, 0, 3 },
        { "mountFilter: f1/x\n", " near '/', Syntax error.", 2, 15, 3 },
        { "mountGroup: g\ncondition: [\n", "Unrecongnized character , near '['\n", 3, 11, 3 },
    } );
}

TEST( ParserError, FoundByTheHandlerHasItsMessageAndTheKindOfAMismatch ) {
    expectErrors( {
        { "/a/%x, T, r\n", inAll + " near ',', Reference to undeclared template key %x", 2, 5, 2 },
        { "subAgent: p-%x\n", " near '\\n', Reference to undeclared template key %x", 2, 14, 2 },
        { "alias: %a = %a\n", " near '\\n', Reference to undeclared template key %a", 2, 14, 2 },
        { "rootFlags: rwX\n", " near '\\n', illegal flag 'X'", 2, 14, 2 },
        { "/a, T, rwXY\n", inAll + " near '\\n', illegal flag 'X'", 2, 11, 2 },
        { "/a, T, r\n/a/, U, r\n",
          inAll + " near '\\n', Path a is already present with type: T. Mismatched type: U", 3, 9, 2 },
        { "/a, T, r, f\n", inAll + " near '\\n', No mount filter with name 'f' defined before this line.", 2,
          11, 2 },
        { "mountFilter: f\nmountFilter: f\n", " near '\\n', Mount filter 'f' is already declared", 3, 14, 2 },
        { "mountGroup: g, 100\n", inAll + " near '\\n', mount group priority should be in the range [1,99]",
          2, 18, 2 },
        { "mountGroup: g, 0\n", inAll + " near '\\n', mount group priority should be in the range [1,99]", 2,
          16, 2 },
        { "mountGroup: g\ncondition: x == size(/a.b)\n", inG + " near '(', Only supported function is 'len'",
          3, 20, 2 },
        { "mountGroup: g\ncondition: 1 == /a.b and 2 == %sysname\nmountGroup: g\nconditionBlocker: 3 == "
          "/a.b\n",
          inG + " near ':', Condition for this mount group is already set to: 1 == /a.b and 2 == %sysname. "
                "Multiple conditions not allowed.",
          5, 16, 2 },
        // A failed check does not stop the actions before the next match: only without a priority the group
        // is opened.
        { "mountGroup: default\n",
          " In mount group 'default' ,  near '\\n', Cannot use reserved mount group name", 2, 19, 2 },
        { "mountGroup: default, 5\n", inAll + " near ',', Cannot use reserved mount group name", 2, 19, 2 },
        // A later exception on top of it changes the place and the kind, not the message.
        { "rootFlags: rwX :\n", " near ':', illegal flag 'X'", 2, 15, 5 },
    } );
    const ParsedProfile parsed( "agentName: Fan\ninclude: none*\n" );
    expectErrorOf( parsed,
                   inAll + " near '\\n', No include file found matching " + parsed.fileBeside( "none*" ), 2,
                   14, 2 );
}

TEST( ParserError, AtTheAppendedLineEndHasThatTextsPosition ) {
    // Both are places in the blank and newline that follow every file, not places in the file.
    expectErrors( {
        { "/a, T", inAll + " near '\\n',  Expected COMMA", 1, 0, 2 },
        { "mountGroup: g\ncondition: 1 ==",
          inG + " near '\\n', Condition path should start with one of these:"
                "['/', 'len', template key (%xx)]",
          1, 0, 3 },
        { "include: inc\n",
          " at <EOF>, Include file should contain only mounts.",
          2,
          0,
          3,
          { { "inc", "\n\n\n\n" } } },
    } );
}

} // namespace
