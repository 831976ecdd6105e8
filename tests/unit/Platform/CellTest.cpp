#include "Cell/Cell.h"

#include <gtest/gtest.h>

namespace {

TEST( Cell, IdZeroInAPathStandsForThisMachinesOwnCell ) {
    EXPECT_EQ( Cell::path( "redundancy/status", 0 ), Cell::path( "redundancy/status", Cell::cellId() ) );
}

TEST( Cell, PathsOfDifferentCellsDiffer ) {
    EXPECT_NE( Cell::path( "agent/status/", 1 ), Cell::path( "agent/status/", 2 ) );
}

} // namespace
