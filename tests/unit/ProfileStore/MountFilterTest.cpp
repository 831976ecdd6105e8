#include "ProfileStore/Mount.h"

#include <gmock/gmock.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using Corvid::AttrFilter;
using Corvid::Mount;
using Corvid::MountFilter;
using Kiv::String8;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

/// "name=key" of every attribute filter.
std::vector<std::string> attributesOf( const MountFilter& filter ) {
    std::vector<std::string> attributes;
    for ( const auto& [name, attribute] : filter.attrFilter() ) {
        EXPECT_EQ( name, attribute.attrName() );
        attributes.push_back( name.str() + "=" + attribute.filterKey().str() );
    }
    return attributes;
}

TEST( AttrFilter, KeepsNameAndKeyAsTheyAre ) {
    const String8 name( "entryState" );
    const AttrFilter filter( name, "%slot" );
    EXPECT_TRUE( filter.attrName().sharesDatumWith( name ) );
    EXPECT_EQ( filter.filterKey(), "%slot" );
    EXPECT_EQ( filter, AttrFilter( "entryState", "%slot" ) );
    EXPECT_NE( filter, AttrFilter( "entryState", "" ) );
    EXPECT_NE( filter, AttrFilter( "other", "%slot" ) );
}

TEST( MountFilter, IsFreshNeitherEnabledNorFilled ) {
    const MountFilter filter;
    EXPECT_EQ( filter.enabled(), 0 );
    EXPECT_THAT( filter.attrFilter(), IsEmpty() );
    EXPECT_EQ( filter, MountFilter() );
}

TEST( MountFilter, IsEnabledAndDisabledWithoutTouchingItsAttributes ) {
    MountFilter filter;
    filter.enabledIs( 0 );
    EXPECT_EQ( filter, MountFilter() );
    filter.enabledIs( 1 );
    EXPECT_EQ( filter.enabled(), 1 );
    EXPECT_THAT( filter.attrFilter(), IsEmpty() );
    EXPECT_NE( filter, MountFilter() );
    filter.newAttrFilter( AttrFilter( "a", "1" ) );
    filter.enabledIs( 0 );
    EXPECT_EQ( filter.enabled(), 0 );
    EXPECT_THAT( attributesOf( filter ), UnorderedElementsAre( "a=1" ) );
}

TEST( MountFilter, KeepsOneFilterAnAttributeTheLastOneGiven ) {
    MountFilter filter;
    filter.newAttrFilter( AttrFilter( "a", "1" ) );
    filter.newAttrFilter( AttrFilter( "b", "" ) );
    filter.newAttrFilter( AttrFilter( "\xff", "2" ) );
    filter.newAttrFilter( AttrFilter( "a", "3" ) );
    EXPECT_THAT( attributesOf( filter ), UnorderedElementsAre( "a=3", "b=", "\xff=2" ) );
    EXPECT_EQ( filter.enabled(), 0 ) << "adding does not enable";
}

TEST( MountFilter, TakesAllAttributesOfALongDeclaration ) {
    MountFilter filter;
    for ( int n = 0; n < 1000; ++n )
        filter.newAttrFilter( AttrFilter( std::to_string( n ), std::to_string( -n ) ) );
    ASSERT_EQ( filter.attrFilter().size(), 1000U );
    for ( int n = 0; n < 1000; ++n )
        EXPECT_EQ( filter.attrFilter().at( std::to_string( n ) ).filterKey(), std::to_string( -n ) );
}

TEST( MountFilter, ACopyAndItsOriginalDoNotSeeEachOthersChanges ) {
    MountFilter original;
    original.enabledIs( 1 );
    original.newAttrFilter( AttrFilter( "a", "1" ) );
    MountFilter copy( original );
    EXPECT_EQ( copy, original );
    original.newAttrFilter( AttrFilter( "b", "2" ) );
    copy.newAttrFilter( AttrFilter( "a", "3" ) );
    copy.enabledIs( 0 );
    EXPECT_THAT( attributesOf( original ), UnorderedElementsAre( "a=1", "b=2" ) );
    EXPECT_THAT( attributesOf( copy ), UnorderedElementsAre( "a=3" ) );
    EXPECT_EQ( original.enabled(), 1 );
    EXPECT_EQ( copy.enabled(), 0 );
    copy = original;
    original = MountFilter();
    EXPECT_EQ( original, MountFilter() );
    EXPECT_THAT( attributesOf( copy ), UnorderedElementsAre( "a=1", "b=2" ) );
}

TEST( MountFilter, AMapHeldWhileACopyChangesStaysAsItIs ) {
    MountFilter original;
    original.newAttrFilter( AttrFilter( "a", "1" ) );
    MountFilter copy( original );
    const auto& held = original.attrFilter();
    copy.newAttrFilter( AttrFilter( "b", "2" ) );
    EXPECT_THAT( held, UnorderedElementsAre( Pair( String8( "a" ), AttrFilter( "a", "1" ) ) ) );
}

TEST( MountFilter, EqualityLooksAtTheContentNotAtWhoSharesIt ) {
    MountFilter a;
    MountFilter b;
    a.newAttrFilter( AttrFilter( "x", "1" ) );
    b.newAttrFilter( AttrFilter( "x", "1" ) );
    EXPECT_EQ( a, b );
    b.newAttrFilter( AttrFilter( "x", "2" ) );
    EXPECT_NE( a, b );
}

#if KIV_THREAD_SAFE_POINTERS
TEST( MountFilter, CopiesOfOneDeclarationMayChangeInDifferentThreads ) {
    for ( int round = 0; round < 100; ++round ) {
        MountFilter declaration;
        declaration.newAttrFilter( AttrFilter( "a", "1" ) );
        MountFilter other( declaration );
        std::jthread thread( [mine = std::move( other )]() mutable {
            mine.newAttrFilter( AttrFilter( "b", "2" ) );
            EXPECT_EQ( mine.attrFilter().size(), 2U );
        } );
        declaration.newAttrFilter( AttrFilter( "c", "3" ) );
        thread.join();
        ASSERT_THAT( attributesOf( declaration ), UnorderedElementsAre( "a=1", "c=3" ) );
    }
}
#endif

TEST( Mount, KeepsItsThreeTextsAndHasNoFilterUntilOneIsGiven ) {
    const String8 path( "agent/status/%slot" );
    const String8 type( "Kiv::Entity" );
    const String8 flags( "riw" );
    Mount mount( path, type, flags );
    EXPECT_TRUE( mount.path().sharesDatumWith( path ) );
    EXPECT_TRUE( mount.type().sharesDatumWith( type ) );
    EXPECT_TRUE( mount.flags().sharesDatumWith( flags ) );
    EXPECT_EQ( mount.mountFilter(), MountFilter() );
    MountFilter filter;
    filter.enabledIs( 1 );
    filter.newAttrFilter( AttrFilter( "a", "1" ) );
    mount.mountFilterIs( filter );
    EXPECT_EQ( mount.mountFilter(), filter );
    filter.newAttrFilter( AttrFilter( "b", "2" ) );
    EXPECT_THAT( attributesOf( mount.mountFilter() ), UnorderedElementsAre( "a=1" ) )
        << "a mount keeps the filter as it was when it was given";
}

TEST( Mount, KeepsBytesOfAnyValueUntrimmed ) {
    const std::string odd( " /a\0b/\xff\n", 8 );
    const Mount mount( odd, odd, odd );
    EXPECT_EQ( mount.path(), odd );
    EXPECT_EQ( mount.type(), odd );
    EXPECT_EQ( mount.flags(), odd );
}

TEST( Mount, EqualityLooksAtEveryField ) {
    const Mount mount( "p", "t", "f" );
    EXPECT_EQ( mount, Mount( "p", "t", "f" ) );
    EXPECT_NE( mount, Mount( "q", "t", "f" ) );
    EXPECT_NE( mount, Mount( "p", "u", "f" ) );
    EXPECT_NE( mount, Mount( "p", "t", "g" ) );
    Mount filtered( mount );
    MountFilter filter;
    filter.enabledIs( 1 );
    filtered.mountFilterIs( filter );
    EXPECT_NE( mount, filtered );
}

} // namespace
