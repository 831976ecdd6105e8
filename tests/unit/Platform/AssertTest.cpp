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
    EXPECT_FALSE( evaluated );
}

#else

using testing::HasSubstr;
using testing::KilledBySignal;

TEST( AssertDeathTest, NamesSourceConditionAndPlaceAndAborts ) {
    const void* const agentProfile = nullptr;
    const int line = __LINE__ + 1;
    EXPECT_EXIT(
        KIV_ASSERT( "Test/Source", agentProfile && "agentProfile is not created yet." ),
        KilledBySignal( SIGABRT ),
        HasSubstr( "Test/Source: assertion failed: agentProfile && \"agentProfile is not created yet.\" (" +
                   std::string( __FILE__ ) + ":" + std::to_string( line ) + ")\n" ) );
}

TEST( AssertDeathTest, KeepsTheTextOfAConditionWithCallsAndComparisons ) {
    const auto cellId = [] { return 3; };
    EXPECT_EXIT( KIV_ASSERT( "Test/Source", cellId() < 3 ), KilledBySignal( SIGABRT ),
                 HasSubstr( "Test/Source: assertion failed: cellId() < 3 (" ) );
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
