#include "support/ParsedProfile.h"

#include "unit/Errors/ParserScene.h"

namespace {

using namespace CorvidTest;
using namespace std::string_literals;

struct Case {
    std::string text;
    std::string description;
    std::string sourceLine;
    std::uint32_t line;
    std::int32_t position;
    std::uint32_t kind;
};

void expectError( const Case& c, Corvid::TokenPath tokenPath ) {
    SCOPED_TRACE( "text:\n" + c.text );
    // The session's buffer ends with the text, so that a sanitizer sees what is read beyond it.
    ParserScene scene( c.text, Corvid::topLevel, tokenPath );
    scene.session().parse( false );
    EXPECT_EQ( scene.error().recognizer().str(), "lexer" );
    EXPECT_EQ( scene.description(), c.description );
    EXPECT_EQ( scene.error().sourceLine().str(), c.sourceLine );
    EXPECT_EQ( scene.error().line(), c.line );
    EXPECT_EQ( scene.error().charPositionInLine(), c.position );
    EXPECT_EQ( scene.error().exceptionType(), c.kind );
    EXPECT_FALSE( scene.hdlr().validProfileFile() );
}

void expectErrors( const std::vector<Case>& cases ) {
    for ( const Case& c : cases ) {
        expectError( c, Corvid::TokenPath::plain );
        expectError( c, Corvid::TokenPath::fast );
    }
}

constexpr char title[] = "agentName: Fan\n";

TEST( LexerError, FillsAllEightFields ) {
    const ParsedProfile parsed( title + "/a, T, r{w}, f\n"s );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    const auto& error = parsed.error();
    EXPECT_EQ( error.fileName().str(), parsed.agentFile() );
    EXPECT_EQ( error.includeFileName().str(), "" );
    EXPECT_EQ( error.line(), 2U );
    EXPECT_EQ( error.charPositionInLine(), 8 );
    EXPECT_EQ( error.exceptionType(), 3U );
    EXPECT_EQ( error.recognizer().str(), "lexer" );
    EXPECT_EQ( error.description().str(), "Unrecongnized character , near '{'\n" );
    EXPECT_EQ( error.sourceLine().str(), "\t/a, T, r{w}, f" );
    EXPECT_EQ( parsed.profile()->errorDesc(), error );
}

TEST( LexerError, InAnIncludeFileNamesBothFiles ) {
    const ParsedProfile parsed( title + "include: inc\n"s, { .files = { { "inc", "/x, T, r\n/y, _\n" } } } );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    const auto& error = parsed.error();
    EXPECT_EQ( error.fileName().str(), parsed.agentFile() );
    EXPECT_EQ( error.includeFileName().str(), parsed.fileBeside( "inc" ) );
    EXPECT_EQ( error.line(), 2U );
    EXPECT_EQ( error.charPositionInLine(), 4 );
    EXPECT_EQ( error.exceptionType(), 3U );
    EXPECT_EQ( error.recognizer().str(), "lexer" );
    EXPECT_EQ( error.description().str(), "Unrecongnized character , near '_'\n" );
    EXPECT_EQ( error.sourceLine().str(), "\t/y, _" );
}

TEST( LexerError, HasTheMessageOfItsKind ) {
    expectErrors( {
        { "\na [\n", "Unrecongnized character , near '['\n", "\ta [", 2, 2, 3 },
        { "\na 0x \n", "Incorrect number , near ' '\n", "\ta 0x ", 2, 4, 5 },
        { "\na 0Xg\n", "Incorrect number , near 'g'\n", "\ta 0Xg", 2, 4, 5 },
        { "\na 1.\n", "Incorrect number , near '\\n'\n", "\ta 1.", 2, 4, 5 },
        { "\na 1.x\n", "Incorrect number , near 'x'\n", "\ta 1.x", 2, 4, 5 },
        { "\na 1..5\n", "Incorrect number , near '.'\n", "\ta 1..5", 2, 4, 5 },
        { "\na \"b\n", "EOL or EOF while scanning string literal, near '\\n'\n", "\ta \"b", 2, 4, 1 },
        { "\na \\b\n", "unexpected character after line continuation character, near '\\n'\n", "\ta \\b", 2,
          4, 1 },
        // The library's own words; they come without the blank that the others end in.
        { "\na !b\n", "Unexpected character, near 'b'\n", "\ta !b", 2, 3, 1 },
    } );
}

TEST( LexerError, ShowsTheLineUpToTheCharacterAndTenFromIt ) {
    expectErrors( {
        { "\n0123456789 {123456789abc\n", "Unrecongnized character , near '{'\n", "\t0123456789 {123456789",
          2, 11, 3 },
        { "\na {123\n456\n", "Unrecongnized character , near '{'\n", "\ta {123", 2, 2, 3 },
        { "\n{", "Unrecongnized character , near '{'\n", "\t{", 2, 0, 3 },
        // A tab, a carriage return and bytes beyond ASCII stand as they are.
        { "\n\ta\r{\rb\n", "Unrecongnized character , near '{'\n", "\t\ta\r{\rb", 2, 3, 3 },
        { "\n/\xC3\xA9\n", "Unrecongnized character , near '\xC3'\n", "\t/\xC3\xA9", 2, 1, 3 },
        { "\n\"\xFF\" \xFF\n", "Unrecongnized character , near '\xFF'\n", "\t\"\xFF\" \xFF", 2, 4, 3 },
        // So does a NUL: it does not end the text, neither in front of the place nor behind it.
        { "\n\"\0\" \0 b\0\n"s, "Unrecongnized character , near '\0'\n"s, "\t\"\0\" \0 b\0"s, 2, 4, 3 },
        // Only a newline begins a line.
        { "\r\r{\n", "Unrecongnized character , near '{'\n", "\t\r\r{", 1, 1, 3 },
    } );
}

TEST( LexerError, OnTheFirstLineHasNoTabAtItsStart ) {
    // The library's streams start at position −1.
    expectErrors( {
        { "{ab\n", "Unrecongnized character , near '{'\n", "{ab", 1, -1, 3 },
        { "a{b\n", "Unrecongnized character , near '{'\n", "\ta{b", 1, 0, 3 },
        { "abc {b\n", "Unrecongnized character , near '{'\n", "\tabc {b", 1, 3, 3 },
        { "{", "Unrecongnized character , near '{'\n", "{", 1, -1, 3 },
        { "\0"s, "Unrecongnized character , near '\0'\n"s, "\0"s, 1, -1, 3 },
    } );
}

TEST( LexerError, AtANewlineShowsTheLineThatItEnds ) {
    // A character that is not the expected one is dropped before the error is described, and it is the
    // newline.
    expectErrors( {
        { "\na !\nb\n", "Unexpected character, near '\\n'\n", "\ta !", 2, 3, 1 },
        { "!\nb\n", "Unexpected character, near '\\n'\n", "\t!", 1, 0, 1 },
        { "\n\"\n", "EOL or EOF while scanning string literal, near '\\n'\n", "\t\"", 2, 1, 1 },
    } );
}

TEST( LexerError, AtTheEndOfInputHasNoSourceLine ) {
    // A token does not go on into the line end that is appended to every file.
    expectErrors( {
        { "\na \"bc", "EOL or EOF while scanning string literal, near EOF \n", "", 2, 5, 1 },
        { "\"", "EOL or EOF while scanning string literal, near EOF \n", "", 1, 0, 1 },
        { "\na \\ b", "unexpected character after line continuation character, near EOF \n", "", 2, 5, 1 },
        { "\n1.", "Incorrect number , near EOF \n", "", 2, 2, 5 },
        { "\n0x", "Incorrect number , near EOF \n", "", 2, 2, 5 },
        { "\n!", "Unexpected character, near EOF \n", "", 2, 1, 1 },
    } );
}

TEST( LexerError, OfALineContinuationIsAtTheEndOfItsLine ) {
    expectErrors( {
        { "\na \\ \nb\n", "unexpected character after line continuation character, near '\\n'\n", "\ta \\ ",
          2, 4, 1 },
        { "\na \\\r\nb\n", "unexpected character after line continuation character, near '\\n'\n", "\ta \\\r",
          2, 4, 1 },
        { "\na \\ {\"1.\n", "unexpected character after line continuation character, near '\\n'\n",
          "\ta \\ {\"1.", 2, 8, 1 },
    } );
}

TEST( LexerError, OfACommentIsACarriageReturnWithoutItsNewline ) {
    expectErrors( {
        { "\n# a\rb\n", "Unexpected character, near 'b'\n", "\t# a\rb", 2, 4, 1 },
        { "\n# a\r\r\n", "Unexpected character, near '\r'\n", "\t# a\r\r", 2, 4, 1 },
    } );
    ParserScene atTheEnd( "# a\r" ); // the end of input will do
    atTheEnd.parser()->profile( atTheEnd.parser(), false );
    EXPECT_TRUE( atTheEnd.hdlr().validProfileFile() ) << atTheEnd.description();
}

TEST( LexerError, WithoutAMessageIsAnUnexpectedCharacter ) {
    ParserScene scene( "x" );
    const pANTLR3_BASE_RECOGNIZER recognizer = scene.lexer()->rec;
    recognizer->exConstruct( recognizer ); // the library gives every exception of a lexer a message
    recognizer->state->exception->message = nullptr;
    Corvid::setLexerErrorDesc( recognizer, recognizer->state->tokenNames );
    EXPECT_EQ( scene.description(), "Unexpected character , near 'x'\n" );
}

} // namespace
