#include "Kiv/TraceHandle.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

TEST( TraceHandle, KnowsItsNameAndWhichLevelsAreOn ) {
    Kiv::TraceHandle handle( "TraceHandleTest" );
    EXPECT_STREQ( handle.name(), "TraceHandleTest" );
    for ( unsigned on = 0; on <= Kiv::TraceHandle::maxLevel; ++on ) {
        handle.levelsAre( 1U << on );
        for ( unsigned level = 0; level <= Kiv::TraceHandle::maxLevel; ++level )
            EXPECT_EQ( handle.enabled( level ), level == on ) << level << " with " << on << " on";
    }
    handle.levelsAre( 0 );
    EXPECT_FALSE( handle.enabled( 0 ) );
}

TEST( TraceHandle, AnExpressionForALevelThatIsOffIsNotEvaluated ) {
    Kiv::TraceHandle handle( "TraceHandleTest" );
    handle.levelsAre( ~0U & ~( 1U << 8 ) );
    int evaluated = 0;
    const auto text = [&evaluated] {
        ++evaluated;
        return std::string( "evaluated" );
    };
    KIV_TRACE( handle, 8, text() );
    EXPECT_EQ( evaluated, 0 );
    KIV_TRACE( handle, 1, text() );
    EXPECT_EQ( evaluated, 1 );
}

TEST( TraceHandle, FacilitiesMayComeGoSwitchAndTraceInSeveralThreads ) {
    Kiv::TraceHandle shared( "TraceHandleTest" );
    shared.levelsAre( 0 );
    std::jthread other( [&shared] {
        for ( unsigned round = 0; round < 1000; ++round )
            shared.levelsAre( round & 1U ? 1U << 31 : 0U );
    } );
    for ( int round = 0; round < 1000; ++round ) {
        Kiv::TraceHandle mine( "Another" );
        mine.levelsAre( 0 );
        KIV_TRACE( shared, 8, "never on" );
        KIV_TRACE( mine, 8, "never on" );
    }
    other.join();
    EXPECT_FALSE( shared.enabled( 8 ) );
}

} // namespace
