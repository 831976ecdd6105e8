#include "ProfileStore/PassiveAgentProfileDir.h"

#include <gmock/gmock.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

using Corvid::PassiveAgentProfile;
using Corvid::PassiveAgentProfileDir;
using Corvid::PassiveMountGroup;
using Kiv::Name;
using Kiv::Ptr;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using namespace std::string_literals;

Ptr<PassiveAgentProfile> newProfile() {
    return new PassiveAgentProfile( Name( "Fan" ) );
}

template <class Map>
std::vector<std::string> keysOf( const Map& map ) {
    std::vector<std::string> keys;
    for ( const auto& [key, member] : map ) {
        EXPECT_EQ( member->name(), key );
        keys.push_back( key.str() );
    }
    return keys;
}

TEST( PassiveAgentProfileDir, StartsEmptyAndMakesProfilesWhenTheyAreAskedFor ) {
    const Ptr<PassiveAgentProfileDir> directory( new PassiveAgentProfileDir );
    EXPECT_THAT( directory->agentProfile(), IsEmpty() );
    const auto fan = directory->agentProfileIs( Name( "Fan" ) );
    ASSERT_TRUE( fan );
    EXPECT_EQ( fan->name(), "Fan" );
    EXPECT_EQ( fan->parent(), directory.get() );
    for ( const auto& name : { "\xff"s, "fan"s, ""s, "Fan\0"s } )
        EXPECT_NE( directory->agentProfileIs( Name( name ) ), fan );
    EXPECT_THAT( keysOf( directory->agentProfile() ), ElementsAre( "", "Fan", "Fan\0"s, "fan", "\xff" ) );
}

TEST( PassiveAgentProfileDir, ANameThatIsTakenYieldsThatProfileWithAllThatItHolds ) {
    const Ptr<PassiveAgentProfileDir> directory( new PassiveAgentProfileDir );
    const auto fan = directory->agentProfileIs( Name( "Fan" ) );
    fan->rootFlagsIs( "rw" );
    fan->validProfileIs( false );
    const auto again = directory->agentProfileIs( Name( "Fan"s ) );
    EXPECT_EQ( again, fan );
    EXPECT_EQ( again->rootFlags(), "rw" );
    EXPECT_FALSE( again->validProfile() );
    EXPECT_EQ( directory->agentProfile().size(), 1U );
}

TEST( PassiveAgentProfileDir, AProfileThatOutlivesItHasNoParent ) {
    Ptr<PassiveAgentProfileDir> directory( new PassiveAgentProfileDir );
    const auto fan = directory->agentProfileIs( Name( "Fan" ) );
    const auto group = fan->mountGroupIs( Name( "all" ), 99 );
    directory = nullptr;
    EXPECT_EQ( fan->parent(), nullptr );
    EXPECT_EQ( group->parent(), fan.get() );
    EXPECT_EQ( fan->mountGroup().at( Name( "all" ) ), group );
}

TEST( PassiveAgentProfile, StartsValidWithItsNameAndNothingElse ) {
    const Ptr<const PassiveAgentProfile> profile = newProfile();
    EXPECT_EQ( profile->name(), "Fan" );
    EXPECT_EQ( profile->parent(), nullptr );
    EXPECT_TRUE( profile->validProfile() );
    EXPECT_EQ( profile->errorDesc(), Corvid::RecognitionError() );
    EXPECT_THAT( profile->mountGroup(), IsEmpty() );
    EXPECT_THAT( profile->templateKey(), IsEmpty() );
    EXPECT_EQ( profile->rootFlags(), "" );
    EXPECT_THAT( profile->aliasKey(), IsEmpty() );
    EXPECT_FALSE( profile->hybridMount() );
    EXPECT_FALSE( profile->lowMountPrio() );
    EXPECT_FALSE( profile->noDefaultMountGroup() );
}

TEST( PassiveAgentProfile, EverySwitchReadsBackWhatWasWrittenAndMovesNoOther ) {
    struct Switch {
        const char* name;
        bool ( PassiveAgentProfile::*read )() const noexcept;
        void ( PassiveAgentProfile::*write )( bool ) noexcept;
    };
    const Switch switches[] = {
        { "validProfile", &PassiveAgentProfile::validProfile, &PassiveAgentProfile::validProfileIs },
        { "hybridMount", &PassiveAgentProfile::hybridMount, &PassiveAgentProfile::hybridMountIs },
        { "lowMountPrio", &PassiveAgentProfile::lowMountPrio, &PassiveAgentProfile::lowMountPrioIs },
        { "noDefaultMountGroup", &PassiveAgentProfile::noDefaultMountGroup,
          &PassiveAgentProfile::noDefaultMountGroupIs },
    };
    const auto fresh = newProfile();
    for ( const auto& written : switches ) {
        const auto profile = newProfile();
        const bool before = ( *fresh.*written.read )();
        ( *profile.*written.write )( !before );
        for ( const auto& read : switches )
            EXPECT_EQ( ( *profile.*read.read )() != ( *fresh.*read.read )(), &read == &written )
                << written.name << " moved " << read.name;
        ( *profile.*written.write )( before );
        EXPECT_EQ( ( *profile.*written.read )(), before ) << written.name;
    }
}

TEST( PassiveAgentProfile, RootFlagsReadBackForEachUpdate ) {
    const auto profile = newProfile();
    profile->rootFlagsIs( "r" );
    profile->rootFlagsIs( profile->rootFlags().str() + "w" );
    EXPECT_EQ( profile->rootFlags(), "rw" );
    profile->rootFlagsIs( "" );
    EXPECT_EQ( profile->rootFlags(), "" );
}

TEST( PassiveAgentProfile, ErrorDescIsCopiedWhole ) {
    const auto profile = newProfile();
    Corvid::RecognitionError error;
    error.fileNameIs( "Fan" );
    error.lineIs( 3 );
    error.descriptionIs( "wrong" );
    error.sourceLineIs( "\tsource" );
    profile->errorDescIs( error );
    EXPECT_EQ( profile->errorDesc(), error );
    error.descriptionIs( "changed later" );
    EXPECT_EQ( profile->errorDesc().description(), "wrong" );
}

TEST( PassiveAgentProfile, TemplateKeysKeepTheirPositions ) {
    const auto profile = newProfile();
    profile->templateKeyIs( 1, "%b" );
    profile->templateKeyIs( 0, "%c" );
    profile->templateKeyIs( 7, "%a" );
    EXPECT_THAT( profile->templateKey(), ElementsAre( Pair( 0, "%c" ), Pair( 1, "%b" ), Pair( 7, "%a" ) ) );
    profile->templateKeyIs( 1, "%d" );
    EXPECT_EQ( profile->templateKey().at( 1 ), "%d" );
    EXPECT_EQ( profile->templateKey().size(), 3U );
}

TEST( PassiveAgentProfile, AnAliasIsKeptOnceWithItsLastTargets ) {
    const auto profile = newProfile();
    profile->aliasKeyIs( "%peer", "%slot" );
    profile->aliasKeyIs( "\xff", "" );
    profile->aliasKeyIs( "%peer", "%a,%b" );
    EXPECT_THAT( profile->aliasKey(), ElementsAre( Pair( "%peer", "%a,%b" ), Pair( "\xff", "" ) ) );
}

TEST( PassiveAgentProfile, MakesMountGroupsThatKnowItAsTheirParent ) {
    const auto profile = newProfile();
    const auto group = profile->mountGroupIs( Name( "fast" ), 7 );
    ASSERT_TRUE( group );
    EXPECT_EQ( group->name(), "fast" );
    EXPECT_EQ( group->priority(), 7U );
    EXPECT_EQ( group->parent(), profile.get() );
    EXPECT_NE( profile->mountGroupIs( Name( "all" ), 99 ), group );
    EXPECT_THAT( keysOf( profile->mountGroup() ), ElementsAre( "all", "fast" ) );
}

TEST( PassiveAgentProfile, AGroupThatIsThereIsYieldedWithItsMountsAndItsOldPriority ) {
    const auto profile = newProfile();
    const auto group = profile->mountGroupIs( Name( "fast" ), 7 );
    group->mountProfileIs( Corvid::Mount( "a", "T", "r" ) );
    const auto again = profile->mountGroupIs( Name( "fast"s ), 8 );
    EXPECT_EQ( again, group );
    EXPECT_EQ( again->priority(), 7U );
    EXPECT_NE( again->mountProfile( "a" ), nullptr );
    EXPECT_EQ( profile->mountGroup().size(), 1U );
}

TEST( PassiveAgentProfile, ADeletedGroupLosesItsParentAndItsPlace ) {
    const auto profile = newProfile();
    const auto group = profile->mountGroupIs( Name( "default" ), 1 );
    profile->mountGroupIs( Name( "all" ), 99 );
    profile->mountGroupDel( Name( "default" ) );
    EXPECT_THAT( keysOf( profile->mountGroup() ), ElementsAre( "all" ) );
    EXPECT_EQ( group->parent(), nullptr );
    const auto anew = profile->mountGroupIs( Name( "default" ), 2 );
    EXPECT_NE( anew, group );
    EXPECT_EQ( anew->priority(), 2U );
    EXPECT_EQ( anew->parent(), profile.get() );
}

TEST( PassiveAgentProfile, DeletingAGroupThatIsAbsentChangesNothing ) {
    const auto profile = newProfile();
    profile->mountGroupDel( Name( "default" ) );
    const auto group = profile->mountGroupIs( Name( "all" ), 99 );
    for ( const char* name : { "default", "al", "all ", "All", "" } )
        profile->mountGroupDel( Name( name ) );
    EXPECT_THAT( keysOf( profile->mountGroup() ), ElementsAre( "all" ) );
    EXPECT_EQ( group->parent(), profile.get() );
}

TEST( PassiveAgentProfile, AGroupThatOutlivesItHasNoParent ) {
    auto profile = newProfile();
    const auto group = profile->mountGroupIs( Name( "all" ), 99 );
    profile = nullptr;
    EXPECT_EQ( group->parent(), nullptr );
    EXPECT_EQ( group->name(), "all" );
}

TEST( PassiveAgentProfile, RecordsLiveOnTheHeapOnly ) {
    static_assert( !std::is_destructible_v<PassiveAgentProfileDir> );
    static_assert( !std::is_destructible_v<PassiveAgentProfile> );
    static_assert( !std::is_destructible_v<PassiveMountGroup> );
}

} // namespace
