#include "Kiv/String8.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using Kiv::String8;
using namespace std::string_literals;
using namespace std::string_view_literals;

TEST( String8, AllEmptyTextsShareOneDatumHoweverTheyWereMade ) {
    const String8 empty;
    String8 movedFrom( "text" );
    const String8 taken( std::move( movedFrom ) );
    const std::vector<String8> others{
        "",       ""s, String8( ""sv ), String8( std::string_view() ), String8( empty ),
        movedFrom }; // NOLINT(bugprone-use-after-move): that it is empty is promised
    for ( const auto& other : others ) {
        EXPECT_TRUE( other.sharesDatumWith( empty ) );
        EXPECT_TRUE( other.empty() );
        EXPECT_EQ( other.size(), 0U );
        EXPECT_STREQ( other.data(), "" );
    }
    EXPECT_EQ( taken, "text" );
}

TEST( String8, KeepsEveryByteOfAStandardStringAndStopsAtTheNulOfACharacterPointer ) {
    std::string bytes;
    for ( int byte = 0; byte < 256; ++byte )
        bytes += static_cast<char>( byte );
    for ( const String8& text : { String8( bytes ), String8( std::string_view( bytes ) ) } ) {
        EXPECT_EQ( text.size(), 256U );
        EXPECT_EQ( text.str(), bytes );
        EXPECT_EQ( text.data()[256], '\0' );
    }
    const char* const pointer = "ab\0cd";
    EXPECT_EQ( String8( pointer ).view(), "ab"sv );
    EXPECT_NE( String8( "ab\0cd"s ), String8( "ab"s ) );
}

TEST( String8, TextsOfEveryLengthUpToAPageKeepTheirBytesAndEndInNul ) {
    for ( std::size_t length = 0; length <= 4100; ++length ) {
        const std::string bytes( length, static_cast<char>( length ) );
        const String8 text( bytes );
        ASSERT_EQ( text.view(), bytes );
        ASSERT_EQ( text.data()[length], '\0' );
    }
}

TEST( String8, ComparesByteWiseAsUnsignedWithTheShorterTextFirst ) {
    const std::vector<std::string> ascending{
        "",        "\0"s,  "\0\0"s,    "\0\x01"s,      "\t",  "A",    "Z",
        "a",       "a\0"s, "a/b",      "aa",           "b",   "\x7f", "\x80",
        "\x80\0"s, "\xc3", "\xc3\xa4", "\xc3\xa4\xff", "\xff" };
    for ( std::size_t i = 0; i < ascending.size(); ++i )
        for ( std::size_t j = 0; j < ascending.size(); ++j ) {
            SCOPED_TRACE( testing::Message() << i << " and " << j );
            EXPECT_EQ( String8( ascending[i] ) <=> String8( ascending[j] ), i <=> j );
            EXPECT_EQ( String8( ascending[i] ) <=> std::string_view( ascending[j] ), i <=> j );
            EXPECT_EQ( String8( ascending[i] ) == String8( ascending[j] ), i == j );
            EXPECT_EQ( String8( ascending[i] ) == ascending[j], i == j );
            EXPECT_EQ( String8( ascending[i] ) == std::string_view( ascending[j] ), i == j );
        }
    EXPECT_TRUE( String8( "ab" ) == "ab" && "ab" == String8( "ab" ) && String8( "ab" ) != "abc" );
}

TEST( String8, EqualTextsHashAlikeHoweverTheyWereMade ) {
    const std::hash<String8> hash;
    const String8 text( "agent/status" );
    const String8 copy( text );
    const String8 again( "agent/status"s );
    EXPECT_TRUE( text.sharesDatumWith( copy ) );
    EXPECT_EQ( hash( text ), hash( copy ) );
    EXPECT_EQ( hash( text ), hash( again ) );
    EXPECT_NE( hash( text ), hash( "agent/config" ) );
    EXPECT_NE( hash( "a\0b"s ), hash( "a\0c"s ) ) << "bytes behind a NUL count";
    EXPECT_EQ( ( std::unordered_set<String8>{ text, copy, again, "other" }.size() ), 2U );
}

TEST( String8, AssignmentSharesMovesAndSurvivesAssignmentToItself ) {
    String8 a( "first" );
    String8 b( "second" );
    const String8 b2( b );
    a = b;
    EXPECT_TRUE( a.sharesDatumWith( b ) );
    String8& alias = a;
    a = alias;
    EXPECT_EQ( a, "second" );
    a = std::move( alias );
    EXPECT_EQ( a, "second" );
    b = String8( "third" );
    EXPECT_EQ( b, "third" );
    EXPECT_EQ( a, "second" ) << "a text never changes under its copies";
    b = "";
    EXPECT_TRUE( b.sharesDatumWith( String8() ) );
    a.swap( b );
    EXPECT_TRUE( a.empty() );
    EXPECT_TRUE( b.sharesDatumWith( b2 ) );
}

TEST( String8, ATextIsFreedOnlyWithItsLastCopy ) {
    const char* bytes = nullptr;
    std::vector<String8> copies;
    {
        const String8 original( "shared by all" );
        copies.assign( 3, original );
        bytes = original.data();
    }
    while ( copies.size() > 1 )
        copies.pop_back();
    EXPECT_EQ( copies.front(), "shared by all" );
    EXPECT_EQ( copies.front().data(), bytes );
}

TEST( String8, RefusesATextThatIsTooLongBeforeReadingIt ) {
    static const char byte = 'x';
    EXPECT_THROW( String8( std::string_view( &byte, String8::maxSize + 1 ) ), std::length_error );
}

TEST( String8, WritesAllItsBytesToAStream ) {
    std::ostringstream out;
    out << String8( "a\0\xff"s ) << String8();
    EXPECT_EQ( out.str(), "a\0\xff"s );
}

TEST( String8, IsFoundInOrderedMapsByViewsWithoutACopy ) {
    const std::map<String8, int, std::less<>> map{ { "b", 2 }, { "\xff", 3 }, { "a", 1 } };
    EXPECT_EQ( map.find( "b"sv )->second, 2 );
    EXPECT_EQ( map.find( "c"sv ), map.end() );
    EXPECT_EQ( map.rbegin()->second, 3 );
}

TEST( String8, TakesOnePointer ) {
    EXPECT_EQ( sizeof( String8 ), sizeof( void* ) );
}

#if KIV_THREAD_SAFE_POINTERS
TEST( String8, ThreadsMayCopyAndDropOneTextAtOnce ) {
    String8 text( "copied by everybody" );
    const String8 kept( text );
    {
        std::vector<std::jthread> threads;
        for ( int n = 0; n < 4; ++n )
            threads.emplace_back( [text] {
                std::vector<String8> copies;
                for ( int round = 0; round < 2000; ++round ) {
                    copies.assign( 3, text );
                    copies.emplace_back();
                }
                EXPECT_EQ( copies.front(), "copied by everybody" );
            } );
        text = "gone from here";
    }
    EXPECT_EQ( kept, "copied by everybody" );
}
#endif

} // namespace
