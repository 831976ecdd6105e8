#include "EmbeddedPlatform.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

using Kiv::TraceHandle;
using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::StrEq;

std::uint32_t levelsOf( const TraceHandle& handle ) {
    std::uint32_t levels = 0;
    for ( unsigned level = 0; level <= TraceHandle::maxLevel; ++level )
        levels |= static_cast<std::uint32_t>( handle.enabled( level ) ) << level;
    return levels;
}

/// Collects trace in place of standard error; leaves everything switched off.
class EmbeddedTrace : public testing::Test {
  protected:
    EmbeddedTrace() {
        Kiv::Embedded::traceLevelsAre( "" );
        Kiv::Embedded::traceSinkIs( [this]( const TraceHandle& handle, unsigned level, const char* function,
                                            unsigned line, std::string_view text ) {
            lines_.push_back( std::string( handle.name() ) + "/" + std::to_string( level ) + " " + function +
                              ":" + ( line > 0 ? "line " : "no line " ) + std::string( text ) );
        } );
    }
    ~EmbeddedTrace() override {
        Kiv::Embedded::traceSinkIs( {} );
        Kiv::Embedded::traceLevelsAre( "" );
    }

    std::vector<std::string> lines_;
};

struct SpecifiedLevels {
    const char* switches;
    std::uint32_t levels;
};
const SpecifiedLevels specifiedLevels[] = {
    { "Fan", ~0U },
    { "Fan/0", 0x1 },
    { "Fan/8", 0x100 },
    { "Fan/31", 0x80000000 },
    { "Fan/0-8", 0x1FF },
    { "Fan/1-1", 0x2 },
    { "Fan/0-31", ~0U },
    { "Fan/0,Fan/8", 0x101 },
    { "Other/3,Fan/1,Another", 0x2 },
    { ",,Fan/1,", 0x2 },
    { "Fan/1,Fan/x", 0x2 },
    { "", 0 },
    { "Fa", 0 },
    { "Fans", 0 },
    { "fan", 0 },
    { " Fan", 0 },
    { "Fan/", 0 },
    { "Fan/x", 0 },
    { "Fan/1x", 0 },
    { "Fan/1-", 0 },
    { "Fan/-1", 0 },
    { "Fan/1-x", 0 },
    { "Fan/1-2x", 0 },
    { "Fan/1-2-3", 0 },
    { "Fan/8-0", 0 },
    { "Fan/32", 0 },
    { "Fan/0-32", 0 },
    { "Fan/99999999999", 0 },
    { "Fan/0-99999999999", 0 },
    { "Fan/+1", 0 },
    { "Fan/ 1", 0 },
    { "Fan/0x1", 0 },
};

TEST_F( EmbeddedTrace, SpecificationsSwitchTheLevelsTheyNameAndUnreadableOnesNone ) {
    const TraceHandle before( "Fan" );
    for ( const auto& row : specifiedLevels ) {
        SCOPED_TRACE( row.switches );
        Kiv::Embedded::traceLevelsAre( row.switches );
        const TraceHandle after( "Fan" );
        EXPECT_EQ( levelsOf( before ), row.levels );
        EXPECT_EQ( levelsOf( after ), row.levels );
    }
}

TEST_F( EmbeddedTrace, TheSinkGetsWhatIsOnWithFunctionAndLineAndNothingElse ) {
    const TraceHandle fan( "Fan" );
    const TraceHandle led( "Led" );
    Kiv::Embedded::traceLevelsAre( "Fan/0-1" );
    KIV_TRACE( fan, 0, "outcome" );
    KIV_TRACE( fan, 1, std::string( "error\0!", 7 ) );
    KIV_TRACE( fan, 8, "entry" );
    KIV_TRACE( led, 0, "other" );
    EXPECT_THAT( lines_, ElementsAre( "Fan/0 TestBody:line outcome",
                                      std::string( "Fan/1 TestBody:line error\0!", 27 ) ) );
}

TEST_F( EmbeddedTrace, ThreadsHandTheirLinesToTheSinkOneAtATime ) {
    const TraceHandle fan( "Fan" );
    Kiv::Embedded::traceLevelsAre( "Fan" );
    {
        std::vector<std::jthread> threads;
        for ( int n = 0; n < 4; ++n )
            threads.emplace_back( [&fan] {
                for ( int round = 0; round < 100; ++round )
                    KIV_TRACE( fan, 0, "line" );
            } );
    }
    EXPECT_EQ( lines_.size(), 400U );
}

[[noreturn]] void traceOutcomeAndEntry( const char* environment ) {
    if ( environment )
        ::setenv( "KIV_TRACE", environment, 1 );
    else
        ::unsetenv( "KIV_TRACE" );
    const TraceHandle fan( "Fan" );
    if ( fan.enabled( 0 ) )
        fan.trace( 0, "run", 12, std::string_view( "out\0come", 8 ) );
    KIV_TRACE( fan, 8, "entry" );
    std::exit( 0 );
}

TEST( EmbeddedTraceDeathTest, TheEnvironmentSwitchesTraceToStandardError ) {
    GTEST_FLAG_SET( death_test_style, "threadsafe" ); // a process of its own: the variable is read once
    EXPECT_EXIT( traceOutcomeAndEntry( "Other,Fan/0-7" ), ExitedWithCode( 0 ),
                 StrEq( std::string( "Fan/0 run:12 out\0come\n", 22 ) ) );
    EXPECT_EXIT( traceOutcomeAndEntry( "Fan" ), ExitedWithCode( 0 ),
                 testing::HasSubstr( "\nFan/8 traceOutcomeAndEntry:" ) );
    EXPECT_EXIT( traceOutcomeAndEntry( "Fan/x" ), ExitedWithCode( 0 ), StrEq( "" ) );
    EXPECT_EXIT( traceOutcomeAndEntry( nullptr ), ExitedWithCode( 0 ), StrEq( "" ) );
}

} // namespace
