#include "ProfileStore/PassiveAgentProfile.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using Corvid::Mount;
using Corvid::PassiveMountGroup;
using Kiv::Name;
using Kiv::Ptr;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using namespace std::string_literals;
using namespace std::string_view_literals;

Ptr<PassiveMountGroup> newGroup() {
    return new PassiveMountGroup( Name( "all" ), 99 );
}

/// "path type flags" of every mount, as a reader of the records iterates.
std::vector<std::string> mountsOf( const Ptr<const PassiveMountGroup>& group ) {
    std::vector<std::string> mounts;
    for ( const Mount& mount : group->mountProfile() )
        mounts.push_back( mount.path().str() + " " + mount.type().str() + " " + mount.flags().str() );
    return mounts;
}

TEST( PassiveMountGroup, StartsWithItsNameAndPriorityAndNothingElse ) {
    const Ptr<const PassiveMountGroup> group = newGroup();
    EXPECT_EQ( group->name(), "all" );
    EXPECT_EQ( group->priority(), 99U );
    EXPECT_EQ( group->parent(), nullptr );
    EXPECT_THAT( group->mountProfile(), IsEmpty() );
    EXPECT_EQ( group->mountProfile( "" ), nullptr );
    EXPECT_THAT( group->conditionCol(), IsEmpty() );
    EXPECT_EQ( group->entireCondition(), "" );
    EXPECT_THAT( group->templateConditionCol(), IsEmpty() );
    EXPECT_FALSE( group->blockingConditional() );
}

TEST( PassiveMountGroup, MountsAreOrderedByUnsignedBytesOfTheirPaths ) {
    const auto group = newGroup();
    for ( const auto& path :
          { "\xff"s, "b"s, "a/b"s, "\x80"s, "a"s, "a\0"s, "B"s, ""s, "a.b"s, "\x7f"s, "aa"s } )
        group->mountProfileIs( Mount( path, "T", "r" ) );
    EXPECT_THAT( mountsOf( group ), ElementsAre( " T r", "B T r", "a T r", "a\0 T r"s, "a.b T r", "a/b T r",
                                                 "aa T r", "b T r", "\x7f T r", "\x80 T r", "\xff T r" ) );
}

TEST( PassiveMountGroup, AMountAtAPathThatIsTakenReplacesTheOneThere ) {
    const auto group = newGroup();
    Mount filtered( "a/b", "T", "r" );
    Corvid::MountFilter filter;
    filter.enabledIs( 1 );
    filtered.mountFilterIs( filter );
    group->mountProfileIs( filtered );
    group->mountProfileIs( Mount( "c", "U", "w" ) );
    EXPECT_EQ( *group->mountProfile( "a/b" ), filtered );
    group->mountProfileIs( Mount( "a/b"s, "V", "" ) );
    EXPECT_THAT( mountsOf( group ), ElementsAre( "a/b V ", "c U w" ) );
    EXPECT_EQ( group->mountProfile( "a/b" )->mountFilter(), Corvid::MountFilter() );
    group->mountProfileIs( *group->mountProfile( "c" ) );
    EXPECT_THAT( mountsOf( group ), ElementsAre( "a/b V ", "c U w" ) );
}

TEST( PassiveMountGroup, ALookupYieldsTheMountAtExactlyThatPathOrNull ) {
    const auto group = newGroup();
    group->mountProfileIs( Mount( "a/b", "T", "r" ) );
    group->mountProfileIs( Mount( "a\0b"s, "U", "r" ) );
    ASSERT_NE( group->mountProfile( "a/b" ), nullptr );
    EXPECT_EQ( group->mountProfile( "a/b" )->type(), "T" );
    EXPECT_EQ( group->mountProfile( Kiv::String8( "a\0b"s ) )->type(), "U" );
    for ( const auto path : { "a"sv, "a/"sv, "a/b/"sv, "/a/b"sv, "A/b"sv, ""sv, "a\0"sv } )
        EXPECT_EQ( group->mountProfile( path ), nullptr ) << path;
}

TEST( PassiveMountGroup, AStoredMountIsACopyOfItsOwn ) {
    const auto group = newGroup();
    Mount mount( "a", "T", "r" );
    group->mountProfileIs( mount );
    Corvid::MountFilter filter;
    filter.enabledIs( 1 );
    mount.mountFilterIs( filter );
    EXPECT_EQ( group->mountProfile( "a" )->mountFilter().enabled(), 0 );
}

TEST( PassiveMountGroup, ConditionsKeepTheOrderGivenRepeatsIncluded ) {
    const auto group = newGroup();
    for ( const char* condition : { "b", "a", "b", "" } )
        group->conditionColEnq( condition );
    EXPECT_THAT( group->conditionCol(), ElementsAre( "b", "a", "b", "" ) );
}

TEST( PassiveMountGroup, TheEntireConditionIsTheLastOneSet ) {
    const auto group = newGroup();
    group->entireConditionIs( "a and b" );
    EXPECT_EQ( group->entireCondition(), "a and b" );
    group->entireConditionIs( "" );
    EXPECT_EQ( group->entireCondition(), "" );
}

TEST( PassiveMountGroup, TemplateConditionsAreKeptOnceWithTheLastValue ) {
    const auto group = newGroup();
    group->templateConditionColIs( "%slot == 1", true );
    group->templateConditionColIs( "%a in /b", true );
    group->templateConditionColIs( "%slot == 1", false );
    EXPECT_THAT( group->templateConditionCol(),
                 ElementsAre( Pair( "%a in /b", true ), Pair( "%slot == 1", false ) ) );
}

TEST( PassiveMountGroup, BlocksWhenToldAndNoLonger ) {
    const auto group = newGroup();
    group->blockingConditionalIs( true );
    EXPECT_TRUE( group->blockingConditional() );
    group->blockingConditionalIs( false );
    EXPECT_FALSE( group->blockingConditional() );
}

} // namespace
