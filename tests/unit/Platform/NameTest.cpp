#include "Kiv/Name.h"

#include <gtest/gtest.h>

#include <map>
#include <type_traits>

namespace {

using Kiv::Name;
using Kiv::String8;
using namespace std::string_literals;
using namespace std::string_view_literals;

TEST( Name, IsATextThatIsNeverMadeByAccident ) {
    static_assert( std::is_convertible_v<Name, String8> );
    static_assert( !std::is_convertible_v<String8, Name> );
    static_assert( !std::is_convertible_v<std::string, Name> );
    static_assert( !std::is_convertible_v<const char*, Name> );
    for ( const Name& name : { Name( "Fan" ), Name( "Fan"s ), Name( "Fan"sv ), Name( String8( "Fan" ) ) } ) {
        EXPECT_EQ( name, "Fan" );
        EXPECT_EQ( name, String8( "Fan" ) );
        EXPECT_EQ( std::hash<Name>()( name ), std::hash<String8>()( name ) );
    }
    EXPECT_TRUE( Name().empty() );
}

TEST( Name, SharesTheTextThatItIsMadeFrom ) {
    const String8 text( "Fan" );
    EXPECT_TRUE( Name( text ).sharesDatumWith( text ) );
}

TEST( Name, KeysAreOrderedByteWise ) {
    const std::map<Name, int> map{
        { Name( "\x80" ), 4 }, { Name( "a" ), 2 }, { Name( "b" ), 3 }, { Name( "B" ), 1 } };
    int last = 0;
    for ( const auto& [name, place] : map )
        EXPECT_EQ( place, ++last ) << name;
}

} // namespace
