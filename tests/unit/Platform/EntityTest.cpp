#include "Kiv/Entity.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

class Plain final : public Kiv::Entity {};

TEST( Entity, IsNamelessParentlessAndWithoutATreeUnlessItsClassSaysOtherwise ) {
    const Kiv::Ptr<Kiv::Entity> plain( new Plain );
    EXPECT_EQ( plain->name(), "" );
    EXPECT_EQ( plain->parent(), nullptr );
    EXPECT_EQ( plain->entity( "" ), nullptr );
    EXPECT_EQ( plain->entity( "/system/Corvid/status" ), nullptr );
}

TEST( Entity, IsNeitherCopiedNorDeletedDirectly ) {
    static_assert( !std::is_copy_constructible_v<Plain> && !std::is_copy_assignable_v<Plain> );
    static_assert( !std::is_destructible_v<Kiv::Entity> );
}

TEST( GlobalDir, IsAlwaysTheSameEntityAndKnowsNoUnusedPath ) {
    const auto directory = Kiv::globalDir();
    ASSERT_TRUE( directory );
    EXPECT_EQ( directory, Kiv::globalDir() );
    EXPECT_EQ( directory->entity( "/no system of this name/Corvid/status" ), nullptr );
}

} // namespace
