// What the lexer does with a text that is no token: the error that it raises, and how much of the text it
// drops.

#include "LexedText.h"

#include <gtest/gtest.h>

namespace CorvidTest {

namespace {

using namespace std::string_literals;

constexpr char libraryMessage[] = "Unexpected character";
constexpr char openString[] = "EOL or EOF while scanning string literal";
constexpr char textAfterContinuation[] = "unexpected character after line continuation character";
constexpr char tokensDecision[] =
    "1:1: Tokens : ( AND | ASTERISK | CLOSEPAREN | COLON | COMMA | DOLLAR | DOT | DOUBLECOLON | EQUAL | "
    "HYPHEN | "
    "OPENPAREN | PERCENTAGE | QSNMARK | SLASH | AGENTNAME | MOUNTGROUP | CONDITION | CONDITIONBLOCKER | "
    "INCLUDE | "
    "ALIAS | SUBAGENT | ROOTFLAGS | NODEFAULTMOUNTGROUP | HYBRIDMOUNT | MOUNTFILTER | LOWMOUNTPRIO | NEWLN | "
    "LINECONT | OP | UIDENT | LIDENT | INT | HEX | FLOAT | STRING | WS | LINE_COMMENT );";

struct Row {
    std::string text;
    std::string dump; ///< up to the appended line end: what was dropped is in none of the tokens
    std::uint32_t kind;
    std::string message;
    std::size_t offset; ///< of the offending character
    std::uint32_t line;
    std::int32_t position;
    std::string description;
};

void expectFirstErrors( std::initializer_list<Row> rows ) {
    for ( const Row& row : rows ) {
        SCOPED_TRACE( "text: " + escaped( row.text ) );
        const LexedText lexed( row.text );
        EXPECT_EQ( lexed.dump, row.dump + " NEWLN[\\n] EOF" );
        ASSERT_FALSE( lexed.errors.empty() );
        EXPECT_EQ( lexed.errorCount, lexed.errors.size() );
        const LexerError& error = lexed.errors.front();
        EXPECT_EQ( error.kind, row.kind );
        EXPECT_EQ( error.message, row.message );
        EXPECT_EQ( error.offset, row.offset );
        EXPECT_EQ( error.line, row.line );
        EXPECT_EQ( error.position, row.position );
        EXPECT_EQ( error.stream, "Agent" );
        EXPECT_EQ( lexed.description, row.description );
        expectSameInTheWindow( row.text, lexed );
    }
}

TEST( LexerErrors, OfACharacterThatBeginsNoTokenDropItAlone ) {
    expectFirstErrors( {
        { "{", "!3", 3, tokensDecision, 0, 1, -1, "Unrecongnized character , near '{'\n" },
        { "_x", "!3 LIDENT[x]", 3, tokensDecision, 0, 1, -1, "Unrecongnized character , near '_'\n" },
        { "a ;b", "LIDENT[a] !3 LIDENT[b]", 3, tokensDecision, 2, 1, 1,
          "Unrecongnized character , near ';'\n" },
        { "a\n [b]", "LIDENT[a] NEWLN[\\n] !3 LIDENT[b] !3", 3, tokensDecision, 3, 2, 1,
          "Unrecongnized character , near '['\n" },
        { "a{{b", "LIDENT[a] !3 !3 LIDENT[b]", 3, tokensDecision, 1, 1, 0,
          "Unrecongnized character , near '{'\n" },
        { "\xC3\xA4x", "!3 !3 LIDENT[x]", 3, tokensDecision, 0, 1, -1,
          "Unrecongnized character , near '\xC3'\n" },
        { "a\0b"s, "LIDENT[a] !3 LIDENT[b]", 3, tokensDecision, 1, 1, 0,
          "Unrecongnized character , near '\0'\n"s },
    } );
}

TEST( LexerErrors, OfNumbersDropWhatWasReadAndOneCharacterMore ) {
    expectFirstErrors( {
        { "1.", "!5", 5, libraryMessage, 2, 1, 1, "Incorrect number , near EOF \n" },
        { "1.x", "!5", 5, libraryMessage, 2, 1, 1, "Incorrect number , near 'x'\n" },
        { "1.xy", "!5 LIDENT[y]", 5, libraryMessage, 2, 1, 1, "Incorrect number , near 'x'\n" },
        { "1. 5", "!5 INT[5]", 5, libraryMessage, 2, 1, 1, "Incorrect number , near ' '\n" },
        { "1..5", "!5 INT[5]", 5, libraryMessage, 2, 1, 1, "Incorrect number , near '.'\n" },
        { "12.\nb", "!5 LIDENT[b]", 5, libraryMessage, 3, 1, 2, "Incorrect number , near '\\n'\n" },
        { "a\n12.b", "LIDENT[a] NEWLN[\\n] !5", 5, libraryMessage, 5, 2, 3, "Incorrect number , near 'b'\n" },
        { "0x", "!5", 5, libraryMessage, 2, 1, 1, "Incorrect number , near EOF \n" },
        { "0x ", "!5", 5, libraryMessage, 2, 1, 1, "Incorrect number , near ' '\n" },
        { "0xg", "!5", 5, libraryMessage, 2, 1, 1, "Incorrect number , near 'g'\n" },
        { "0Xgh", "!5 LIDENT[h]", 5, libraryMessage, 2, 1, 1, "Incorrect number , near 'g'\n" },
        { "0x\nb", "!5 LIDENT[b]", 5, libraryMessage, 2, 1, 1, "Incorrect number , near '\\n'\n" },
    } );
}

TEST( LexerErrors, OfAnOpenStringDropItWithItsLineEnd ) {
    expectFirstErrors( {
        { "\"abc\nd", "!1 LIDENT[d]", 1, openString, 4, 1, 3, std::string( openString ) + ", near '\\n'\n" },
        { "\"abc", "!1", 1, openString, 4, 1, 3, std::string( openString ) + ", near EOF \n" },
        { "\"", "!1", 1, openString, 1, 1, 0, std::string( openString ) + ", near EOF \n" },
        { R"("a\"b")", R"(STRING["a\\"] LIDENT[b] !1)", 1, openString, 6, 1, 5,
          std::string( openString ) + ", near EOF \n" },
        { "\"a\r\nb", "!1 LIDENT[b]", 1, openString, 3, 1, 2, std::string( openString ) + ", near '\\n'\n" },
        { "x\n\"a\n\"b", "LIDENT[x] NEWLN[\\n] !1 !1", 1, openString, 4, 2, 2,
          std::string( openString ) + ", near '\\n'\n" },
    } );
}

TEST( LexerErrors, OfTextBehindAContinuationDropTheLineWithItsEnd ) {
    const std::string atLineEnd = std::string( textAfterContinuation ) + ", near '\\n'\n";
    const std::string atEndOfFile = std::string( textAfterContinuation ) + ", near EOF \n";
    expectFirstErrors( {
        { "\\ \na", "!1 LIDENT[a]", 1, textAfterContinuation, 2, 1, 1, atLineEnd },
        { "\\\t\na", "!1 LIDENT[a]", 1, textAfterContinuation, 2, 1, 1, atLineEnd },
        { "\\\r\na", "!1 LIDENT[a]", 1, textAfterContinuation, 2, 1, 1, atLineEnd },
        { "b\\ text # no\na", "LIDENT[b] !1 LIDENT[a]", 1, textAfterContinuation, 12, 1, 11, atLineEnd },
        { "\\\\\na", "!1 LIDENT[a]", 1, textAfterContinuation, 2, 1, 1, atLineEnd },
        { "\\x", "!1", 1, textAfterContinuation, 2, 1, 1, atEndOfFile },
        { "\\\xFF\r{", "!1", 1, textAfterContinuation, 4, 1, 3, atEndOfFile },
    } );
}

// A single character that is not the demanded one is dropped twice over: by the match, and by the recovery.
TEST( LexerErrors, OfADemandedCharacterDropTwoCharacters ) {
    expectFirstErrors( {
        { "!a b", "!1 LIDENT[b]", 1, libraryMessage, 1, 1, 0, "Unexpected character, near 'a'\n" },
        { "!ab", "!1", 1, libraryMessage, 1, 1, 0, "Unexpected character, near 'a'\n" },
        { "!abc", "!1 LIDENT[c]", 1, libraryMessage, 1, 1, 0, "Unexpected character, near 'a'\n" },
        { "!", "!1", 1, libraryMessage, 1, 1, 0, "Unexpected character, near EOF \n" },
        { "!!=", "!1", 1, libraryMessage, 1, 1, 0, "Unexpected character, near '!'\n" },
        { "!\nab", "!1 LIDENT[b]", 1, libraryMessage, 1, 1, 0, "Unexpected character, near '\\n'\n" },
        { "# x\ry\nz", "!1 LIDENT[z]", 1, libraryMessage, 4, 1, 3, "Unexpected character, near 'y'\n" },
        { "#\rab c", "!1 LIDENT[c]", 1, libraryMessage, 2, 1, 1, "Unexpected character, near 'a'\n" },
        { "#\r\rz", "!1", 1, libraryMessage, 2, 1, 1, "Unexpected character, near '\r'\n" },
    } );
}

TEST( LexerErrors, AreAllRaisedButOnlyTheFirstIsDescribed ) {
    const LexedText lexed( "{ 1.x !ab \"" );
    EXPECT_EQ( lexed.names, "!3 !5 !1 !1 NEWLN EOF" );
    EXPECT_EQ( lexed.errorCount, 4U );
    EXPECT_EQ( lexed.description, "Unrecongnized character , near '{'\n" );
}

TEST( LexerErrors, DoNotPileUpInMemory ) {
    const LexedText lexed( std::string( 1000, '{' ) );
    EXPECT_EQ( lexed.errorCount, 1000U );
    EXPECT_FALSE( lexed.keepsOlderExceptions );
}

TEST( LexerErrors, OfNoPredictedRuleNameDecision16InState0 ) {
    const LexedText lexed( "a _ \x80 '" );
    ASSERT_EQ( lexed.errors.size(), 3U );
    for ( const LexerError& error : lexed.errors ) {
        EXPECT_EQ( error.decision, 16U );
        EXPECT_EQ( error.state, 0U );
    }
}

/// What a file of this byte alone lexes as, before the appended line end.
std::string namesOfSingle( unsigned char byte ) {
    static constexpr std::string_view punctuation = "*):,$.=-(%?/";
    static const std::vector<std::string> names{ "ASTERISK",  "CLOSEPAREN", "COLON",   "COMMA",
                                                 "DOLLAR",    "DOT",        "EQUAL",   "HYPHEN",
                                                 "OPENPAREN", "PERCENTAGE", "QSNMARK", "SLASH" };
    if ( byte == '\n' || byte == '\r' )
        return "NEWLN ";
    if ( byte == ' ' || byte == '\t' || byte == '#' || byte == '\\' )
        return "";
    if ( byte == '<' || byte == '>' )
        return "OP ";
    if ( byte >= '0' && byte <= '9' )
        return "INT ";
    if ( byte >= 'A' && byte <= 'Z' )
        return "UIDENT ";
    if ( byte >= 'a' && byte <= 'z' )
        return "LIDENT ";
    if ( byte == '"' || byte == '!' )
        return "!1 ";
    const auto found = punctuation.find( static_cast<char>( byte ) );
    return found == std::string_view::npos ? "!3 " : names[found] + " ";
}

TEST( SingleBytes, AsAFileAreAKnownTokenNothingOrAnErrorEach ) {
    for ( unsigned byte = 0; byte < 256; ++byte ) {
        const std::string text( 1, static_cast<char>( byte ) );
        const LexedText lexed( text );
        EXPECT_EQ( lexed.names, namesOfSingle( static_cast<unsigned char>( byte ) ) + "NEWLN EOF" )
            << "byte " << byte;
        expectSameInTheWindow( text, lexed );
    }
}

} // namespace

} // namespace CorvidTest
