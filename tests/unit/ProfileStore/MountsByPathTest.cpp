#include "ProfileStore/MountsByPath.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using Corvid::Mount;
using Corvid::MountsByPath;
using Kiv::String8;
using Model = std::map<std::string, std::string>;

enum class Order { ascending, descending, shuffled };

/// Distinct paths, the empty one among them.
std::vector<std::string> paths( std::size_t count, Order order ) {
    std::vector<std::string> all{ "" };
    for ( std::size_t i = 1; i < count; ++i )
        all.push_back( "p/" + std::to_string( i ) );
    std::ranges::sort( all );
    if ( order == Order::descending )
        std::ranges::reverse( all );
    if ( order == Order::shuffled )
        std::ranges::shuffle( all, std::mt19937( 7 ) );
    return all;
}

void put( MountsByPath& mounts, const std::string& path, const std::string& type ) {
    mounts.assign( mounts.place( path ), Mount( path, type, "r" ) );
}

Model contentOf( const MountsByPath& mounts ) {
    Model content;
    for ( const Mount& mount : mounts )
        content.emplace( mount.path().str(), mount.type().str() );
    return content;
}

bool isOrdered( const MountsByPath& mounts ) {
    return std::is_sorted( mounts.begin(), mounts.end(),
                           []( const Mount& a, const Mount& b ) { return a.path() < b.path(); } );
}

TEST( MountsByPath, HoldWhatAnOrderedMapHoldsAtEverySizeAndInEveryOrder ) {
    for ( const Order order : { Order::ascending, Order::descending, Order::shuffled } )
        for ( const std::size_t count : { 0U, 1U, 2U, 31U, 32U, 33U, 34U, 64U, 65U, 500U, 5000U } ) {
            SCOPED_TRACE( testing::Message() << count << " paths, order " << static_cast<int>( order ) );
            MountsByPath mounts;
            Model model;
            if ( count > 0 )
                for ( const std::string& path : paths( count, order ) ) {
                    EXPECT_EQ( mounts.find( path ), nullptr );
                    put( mounts, path, "T" + path );
                    model.emplace( path, "T" + path );
                }
            EXPECT_EQ( mounts.size(), model.size() );
            EXPECT_EQ( mounts.empty(), model.empty() );
            EXPECT_EQ( contentOf( mounts ), model );
            EXPECT_TRUE( isOrdered( mounts ) );
            for ( const auto& [path, type] : model ) {
                const Mount* const found = mounts.find( path );
                ASSERT_NE( found, nullptr ) << path;
                EXPECT_EQ( found->type(), type );
                EXPECT_EQ( mounts.find( path + "!" ), nullptr );
            }
        }
}

TEST( MountsByPath, ReplaceTheMountOfAPathThatIsTaken ) {
    MountsByPath mounts;
    const auto all = paths( 200, Order::shuffled );
    for ( const std::string& path : all )
        put( mounts, path, "before" );
    for ( const std::string& path : all )
        put( mounts, path, "after" );
    EXPECT_EQ( mounts.size(), all.size() );
    for ( const Mount& mount : mounts )
        EXPECT_EQ( mount.type(), "after" );
}

TEST( MountsByPath, TellWhatIsAtAPlace ) {
    MountsByPath mounts;
    EXPECT_EQ( mounts.place( "a" ).mount(), nullptr );
    put( mounts, "b", "B" );
    put( mounts, "d", "D" );
    for ( const char* free : { "a", "c", "e" } )
        EXPECT_EQ( mounts.place( free ).mount(), nullptr ) << free;
    EXPECT_EQ( mounts.place( "b" ).mount(), mounts.find( "b" ) );
    EXPECT_EQ( mounts.place( "d" ).mount()->type(), "D" );
}

TEST( MountsByPath, OrderPathsByUnsignedBytes ) {
    MountsByPath mounts;
    for ( const char* path : { "\xff", "\x7f", "a", "\x80" } )
        put( mounts, path, "T" );
    std::string order;
    for ( const Mount& mount : mounts )
        order += mount.path().str();
    EXPECT_EQ( order, "a\x7f\x80\xff" );
}

TEST( MountsByPath, IterateByPostfixAndPrefixAlike ) {
    MountsByPath mounts;
    for ( const std::string& path : paths( 70, Order::ascending ) )
        put( mounts, path, "T" );
    auto prefix = mounts.begin();
    EXPECT_NE( std::next( prefix ), prefix );
    for ( auto postfix = mounts.begin(); postfix != mounts.end(); ++prefix )
        EXPECT_EQ( ( postfix++ )->path(), prefix->path() );
    EXPECT_EQ( prefix, mounts.end() );
}

} // namespace
