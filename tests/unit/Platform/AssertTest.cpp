#include "Kiv/Assert.h"

#include <gmock/gmock.h>

#include <csignal>
#include <string>

namespace {

#ifdef KIV_NO_ASSERTIONS

TEST( Assert, CompiledOutDoesNotEvenEvaluateTheCondition ) {
    bool evaluated = false;
    [[maybe_unused]] const auto evaluate = [&evaluated] {
        evaluated = true;
        return false;
    };
    KIV_ASSERT( "Test/Source", evaluate() );
    KIV_ASSERT_TEXT( "Test/Source", evaluate(), "text" );
    EXPECT_FALSE( evaluated );
}

#else

using testing::HasSubstr;
using testing::KilledBySignal;
using testing::StrEq;

const int assertionLine = __LINE__ + 2;
void assertCreated( const void* agentProfile ) {
    KIV_ASSERT( "Test/Source", agentProfile && "agentProfile is not created yet." );
}

TEST( AssertDeathTest, NamesSourceConditionAndPlaceAndAborts ) {
    const auto place = __FILE__ + ( ":" + std::to_string( assertionLine ) );
    EXPECT_EXIT(
        assertCreated( nullptr ), KilledBySignal( SIGABRT ),
        StrEq( "Test/Source: assertion failed: agentProfile && \"agentProfile is not created yet.\" (" +
               place + ")\n" ) );
}

TEST( AssertDeathTest, KeepsTheTextOfAConditionWithCallsAndComparisons ) {
    const auto cellId = [] { return 3; };
    EXPECT_EXIT( KIV_ASSERT( "Test/Source", cellId() < 3 ), KilledBySignal( SIGABRT ),
                 HasSubstr( "Test/Source: assertion failed: cellId() < 3 (" ) );
}

TEST( AssertDeathTest, ATextOfItsOwnTakesThePlaceOfTheCondition ) {
    EXPECT_EXIT( KIV_ASSERT_TEXT( "Test/Source", 1 > 2, "root && \"root is NULL.\"" ),
                 KilledBySignal( SIGABRT ),
                 HasSubstr( "Test/Source: assertion failed: root && \"root is NULL.\" (" ) );
}

TEST( Assert, EvaluatesTheConditionOnceAndGoesOnWhenItHolds ) {
    int evaluated = 0;
    KIV_ASSERT( "Test/Source", ++evaluated == 1 && "evaluated once" );
    EXPECT_EQ( evaluated, 1 );
}

TEST( Assert, IsOneExpressionThatFitsBehindAnIfWithoutBraces ) {
    int other = 0;
    if ( other == 1 )
        KIV_ASSERT( "Test/Source", other == 1 );
    else
        other = 2;
    EXPECT_EQ( other, 2 );
}

#endif

} // namespace
