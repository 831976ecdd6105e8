// Lines, positions and streams of tokens.

#include "LexedText.h"

#include <gtest/gtest.h>

namespace CorvidTest {

namespace {

/// "NAME line:position" of every token, the appended line end included, then the end of input.
std::string placesOf( std::string_view text ) {
    const LexedText lexed( text );
    expectSameInTheWindow( text, lexed );
    std::string places;
    for ( const LexedToken& token : lexed.tokens )
        places +=
            token.name + " " + std::to_string( token.line ) + ":" + std::to_string( token.position ) + ", ";
    return places + "EOF " + std::to_string( lexed.endLine ) + ":" + std::to_string( lexed.endPosition );
}

TEST( Places, CountFromMinusOneOnTheFirstLineAndFromZeroOnTheOthers ) {
    EXPECT_EQ( placesOf( "a bc\nd ef\n g" ),
               "LIDENT 1:-1, LIDENT 1:1, NEWLN 1:3, LIDENT 2:0, LIDENT 2:2, NEWLN 2:4, LIDENT 3:1, "
               "NEWLN 1:0, EOF 2:0" );
}

TEST( Places, OfTheAppendedLineEndAndOfTheEndAreTheSameForEveryFile ) {
    const std::string end = "NEWLN 1:0, EOF 2:0";
    EXPECT_EQ( placesOf( "" ), end );
    EXPECT_EQ( placesOf( "# one\n# two\n# three" ), end );
    EXPECT_EQ( placesOf( "\n\n" ), "NEWLN 1:-1, NEWLN 2:0, " + end );
    EXPECT_EQ( placesOf( "a\\" ), "LIDENT 1:-1, " + end );
}

TEST( Places, GoOnCountingOverALoneCarriageReturn ) {
    EXPECT_EQ( placesOf( "a\rb\r\nc" ),
               "LIDENT 1:-1, NEWLN 1:0, LIDENT 1:1, NEWLN 1:2, NEWLN 1:3, LIDENT 2:0, NEWLN 1:0, EOF 2:0" );
}

TEST( Places, AdvanceALineOverSkippedLineEnds ) {
    EXPECT_EQ( placesOf( "a # note\nb \\\n c" ), "LIDENT 1:-1, LIDENT 2:0, LIDENT 3:1, NEWLN 1:0, EOF 2:0" );
}

TEST( Streams, AreTheFilesAndForTheAppendedLineEndOneNamedNewlnStr ) {
    for ( const char* text : { "", "a", "a\n", "# note" } ) {
        const LexedText lexed( text );
        ASSERT_FALSE( lexed.tokens.empty() );
        EXPECT_EQ( lexed.tokens.back().stream, "newlnStr" ) << text;
        EXPECT_EQ( lexed.tokens.back().text, "\n" );
        for ( std::size_t i = 0; i + 1 < lexed.tokens.size(); ++i )
            EXPECT_EQ( lexed.tokens[i].stream, "Agent" ) << text;
    }
}

TEST( Streams, EndEveryTokenWhereTheFileEnds ) {
    EXPECT_EQ( LexedText( "ab" ).dump, "LIDENT[ab] NEWLN[\\n] EOF" );
    EXPECT_EQ( LexedText( "=" ).dump, "EQUAL[=] NEWLN[\\n] EOF" );
    EXPECT_EQ( LexedText( "\"a" ).dump, "!1 NEWLN[\\n] EOF" );
    EXPECT_EQ( LexedText( "# a" ).dump, "NEWLN[\\n] EOF" );
    EXPECT_EQ( LexedText( "\\" ).dump, "NEWLN[\\n] EOF" );
}

TEST( Files, OfAnyLengthEndInALineEnd ) {
    EXPECT_EQ( LexedText( "" ).names, "NEWLN EOF" );
    EXPECT_EQ( LexedText( "a" ).names, "LIDENT NEWLN EOF" );
    EXPECT_EQ( LexedText( "a\n" ).names, "LIDENT NEWLN NEWLN EOF" );
    const LexedText longName( std::string( 300'000, 'a' ) );
    EXPECT_EQ( longName.names, "LIDENT NEWLN EOF" );
    EXPECT_EQ( longName.tokens[0].text.size(), 300'000U );
    const LexedText longString( '"' + std::string( 1'000'000, 'x' ) + '"' );
    EXPECT_EQ( longString.names, "STRING NEWLN EOF" );
    EXPECT_EQ( longString.tokens[0].text.size(), 1'000'002U );
}

} // namespace

} // namespace CorvidTest
