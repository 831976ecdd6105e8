#include "Kiv/Format.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST( Format, WritesWhatPrintfWrites ) {
    EXPECT_EQ( Kiv::format( "cell/%d/", 2 ), "cell/2/" );
    EXPECT_EQ( Kiv::format( "%s-%05u|%-4s|%x%%", "a", 42U, "b", 255U ), "a-00042|b   |ff%" );
    EXPECT_EQ( Kiv::format( "%d %lld", INT_MIN, LLONG_MAX ), "-2147483648 9223372036854775807" );
    EXPECT_EQ( Kiv::format( "%c%c", 'a', 0 ), std::string( "a\0", 2 ) );
}

TEST( Format, AnEmptyResultIsTheEmptyText ) {
    EXPECT_TRUE( Kiv::format( "%s", "" ).sharesDatumWith( Kiv::String8() ) );
}

TEST( Format, HoldsResultsOfAnyLength ) {
    for ( const std::size_t length : { 1U, 15U, 16U, 255U, 256U, 4096U, 1000000U } ) {
        const std::string text( length, 'x' );
        EXPECT_EQ( Kiv::format( "<%s>", text.c_str() ), "<" + text + ">" );
    }
}

} // namespace
