#include "ProfileStore/RecognitionError.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

using Corvid::RecognitionError;
using Kiv::String8;
using namespace std::string_literals;

RecognitionError errorAt( const char* file, std::uint32_t line, std::int32_t position,
                          const std::string& text, const char* includeFile = "" ) {
    RecognitionError error;
    error.fileNameIs( file );
    error.includeFileNameIs( includeFile );
    error.lineIs( line );
    error.charPositionInLineIs( position );
    error.descriptionIs( text );
    return error;
}

constexpr std::uint32_t noLine = RecognitionError::noLine;

TEST( RecognitionError, StartsWithEmptyTextsAndZeros ) {
    const RecognitionError error;
    for ( const auto& text : { error.fileName(), error.includeFileName(), error.recognizer(),
                               error.description(), error.sourceLine() } )
        EXPECT_EQ( text, "" );
    EXPECT_EQ( error.line(), 0U );
    EXPECT_EQ( error.charPositionInLine(), 0 );
    EXPECT_EQ( error.exceptionType(), 0U );
}

TEST( RecognitionError, EveryFieldReadsBackWhatWasWrittenAndTakesPartInEquality ) {
    const auto filled = [] {
        auto error = errorAt( "file", 0xFFFFFFFE, INT32_MIN, "description", "include" );
        error.exceptionTypeIs( 0xFFFFFFFF );
        error.recognizerIs( "lexer" );
        error.sourceLineIs( "\tsource" );
        return error;
    };
    EXPECT_EQ( filled().fileName(), "file" );
    EXPECT_EQ( filled().includeFileName(), "include" );
    EXPECT_EQ( filled().line(), 0xFFFFFFFE );
    EXPECT_EQ( filled().charPositionInLine(), INT32_MIN );
    EXPECT_EQ( filled().exceptionType(), 0xFFFFFFFF );
    EXPECT_EQ( filled().recognizer(), "lexer" );
    EXPECT_EQ( filled().description(), "description" );
    EXPECT_EQ( filled().sourceLine(), "\tsource" );
    EXPECT_EQ( filled(), filled() );

    void ( *const changes[] )( RecognitionError& ) = {
        []( RecognitionError& error ) { error.fileNameIs( "" ); },
        []( RecognitionError& error ) { error.includeFileNameIs( "" ); },
        []( RecognitionError& error ) { error.lineIs( 0 ); },
        []( RecognitionError& error ) { error.charPositionInLineIs( 0 ); },
        []( RecognitionError& error ) { error.exceptionTypeIs( 0 ); },
        []( RecognitionError& error ) { error.recognizerIs( "" ); },
        []( RecognitionError& error ) { error.descriptionIs( "" ); },
        []( RecognitionError& error ) { error.sourceLineIs( "" ); },
    };
    for ( const auto& change : changes ) {
        auto error = filled();
        change( error );
        EXPECT_NE( error, filled() ) << "field " << &change - changes;
    }
}

TEST( RecognitionError, TheMessageIsOneLineWithTheColumnRightOnEveryLine ) {
    struct Row {
        RecognitionError error;
        std::string message;
    };
    const Row rows[] = {
        // The first line's positions start at -1, those of all others at 0.
        { errorAt( "dir/Fan", 1, -1, "wrong" ), "dir/Fan:1:1: error: wrong" },
        { errorAt( "dir/Fan", 1, 0, "wrong" ), "dir/Fan:1:2: error: wrong" },
        { errorAt( "dir/Fan", 1, 41, "wrong" ), "dir/Fan:1:43: error: wrong" },
        { errorAt( "dir/Fan", 2, 0, "wrong" ), "dir/Fan:2:1: error: wrong" },
        { errorAt( "dir/Fan", 4294967294, 41, "wrong" ), "dir/Fan:4294967294:42: error: wrong" },
        { errorAt( "dir/Fan", 2, INT32_MAX, "wrong" ), "dir/Fan:2:2147483648: error: wrong" },
        { errorAt( "dir/Fan", 1, INT32_MAX, "wrong" ), "dir/Fan:1:2147483649: error: wrong" },
        { errorAt( "dir/Fan", noLine, -1, "wrong" ), "dir/Fan: error: wrong" },
        { errorAt( "Fan", 3, 4, "wrong", "Common" ), "Common:3:5: error: wrong (included from Fan)" },
        { errorAt( "Fan", 1, 4, "wrong", "Common" ), "Common:1:6: error: wrong (included from Fan)" },
        { errorAt( "Fan", noLine, -1, "wrong", "Common" ), "Common: error: wrong (included from Fan)" },
        { errorAt( "Fan", noLine, -1, "" ), "Fan: error: " },
    };
    for ( const auto& row : rows )
        EXPECT_EQ( row.error.composeErrorDescMessage(), row.message );
}

TEST( RecognitionError, BlanksAtTheEndsOfTheDescriptionAreLeftOutAndThoseInsideKept ) {
    struct Row {
        std::string description;
        std::string shown;
    };
    const Row rows[] = {
        { "  Two  words  ", "Two  words" }, { "\t\r\n\v\f x \n", "x" }, { " \n\t ", "" }, { "x", "x" },
        { "a\nb\n\nc\n", "a\\nb\\n\\nc" },
    };
    for ( const auto& row : rows )
        EXPECT_EQ( errorAt( "F", 2, 0, row.description ).composeErrorDescMessage(),
                   "F:2:1: error: " + row.shown );
}

/// How a byte is shown, inside of a text.
std::string shown( unsigned byte ) {
    static constexpr char digits[] = "0123456789ABCDEF";
    if ( byte == '\n' )
        return "\\n";
    if ( byte < 0x20 || byte > 0x7E )
        return "\\x"s + digits[byte / 16] + digits[byte % 16];
    return { static_cast<char>( byte ) };
}

TEST( RecognitionError, NoByteOfDescriptionOrFileNamesCanControlATerminal ) {
    EXPECT_EQ( shown( 0x1B ) + shown( 0xC3 ) + shown( 0x7F ) + shown( 0 ) + shown( '~' ),
               "\\x1B\\xC3\\x7F\\x00~" );
    for ( unsigned byte = 0; byte < 256; ++byte ) {
        const auto text = "<"s + static_cast<char>( byte ) + ">";
        RecognitionError error;
        error.fileNameIs( text );
        error.lineIs( noLine );
        error.descriptionIs( text );
        const auto inside = "<" + shown( byte ) + ">";
        EXPECT_EQ( error.composeErrorDescMessage(), inside + ": error: " + inside ) << byte;
        error.includeFileNameIs( "i" + text );
        EXPECT_EQ( error.composeErrorDescMessage(),
                   "i" + inside + ": error: " + inside + " (included from " + inside + ")" )
            << byte;
    }
}

TEST( RecognitionError, TellsWhetherAndWhereItHasAPlace ) {
    EXPECT_TRUE( errorAt( "Fan", 1, -1, "" ).hasPlace() );
    EXPECT_FALSE( errorAt( "Fan", noLine, -1, "" ).hasPlace() );
    EXPECT_EQ( errorAt( "Fan", 1, -1, "" ).placeFileName(), "Fan" );
    EXPECT_EQ( errorAt( "Fan", 1, -1, "", "Common" ).placeFileName(), "Common" );
    EXPECT_EQ( errorAt( "Fan", 1, -1, "" ).column(), 1U );
    EXPECT_EQ( errorAt( "Fan", 2, 3, "" ).column(), 4U );
}

} // namespace
