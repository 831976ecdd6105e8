#include "EmbeddedPlatform.h"

#include "Brae/Glob.h"
#include "Cell/Cell.h"
#include "Kiv/Format.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

using Kiv::String8;
using testing::ElementsAre;

TEST( EmbeddedCell, StartsAsCellOneAndQualifiesPathsByCell ) {
    EXPECT_EQ( Cell::cellId(), 1U );
    EXPECT_EQ( Cell::path( "agent/status/", 0 ), "cell/1/agent/status/" );
    EXPECT_EQ( Cell::path( "agent/status/", 7 ), "cell/7/agent/status/" );
    EXPECT_EQ( Cell::path( "", 0xFFFFFFFF ), "cell/4294967295/" );
    Kiv::Embedded::cellIdIs( 2 );
    EXPECT_EQ( Cell::cellId(), 2U );
    EXPECT_EQ( Cell::path( "a", 0 ), "cell/2/a" );
    Kiv::Embedded::cellIdIs( 0 );
    EXPECT_EQ( Cell::path( "a", 0 ), "a" ) << "a machine without cells has no qualified paths of its own";
    EXPECT_EQ( Cell::path( "a", 1 ), "cell/1/a" );
    Kiv::Embedded::cellIdIs( 1 );
}

TEST( EmbeddedEntityManager, AnswersWhatItWasMadeWith ) {
    const auto alone = Kiv::Embedded::newEntityManager( "box", true );
    EXPECT_EQ( alone->systemName(), "box" );
    EXPECT_EQ( alone->name(), "box" );
    EXPECT_TRUE( alone->standalone() );
    EXPECT_FALSE( Kiv::Embedded::newEntityManager( "box", false )->standalone() );
}

TEST( EmbeddedRedundancyStatus, AnswersWhatItWasMadeWithAndHotStandbyIsThree ) {
    using Redundancy::Mode;
    static_assert( static_cast<std::uint32_t>( Mode::hotStandby ) == 3 );
    const auto status = Kiv::Embedded::newRedundancyStatus( Mode::hotStandby, Mode::coldStandby );
    EXPECT_EQ( status->configuredMode(), Mode::hotStandby );
    EXPECT_EQ( status->operationalMode(), Mode::coldStandby );
    EXPECT_EQ( status->name(), "status" );
}

TEST( EmbeddedGlobalDir, HoldsEntitiesByAbsolutePathUntilTheyAreReplacedOrRemoved ) {
    const auto status = Kiv::Embedded::newRedundancyStatus( Redundancy::Mode::none, Redundancy::Mode::none );
    const auto root = Kiv::Embedded::newConfigRoot( {}, true );
    const String8 path( "/box/Corvid/redundancy/status" );
    Kiv::Embedded::entityIs( path, status );
    EXPECT_EQ( Kiv::globalDir()->entity( path ), status );
    EXPECT_EQ( Kiv::dynamicCast<Redundancy::RedundancyStatus>( Kiv::globalDir()->entity( path ) ), status );
    EXPECT_EQ( Kiv::globalDir()->entity( "/box/Corvid/redundancy" ), nullptr );
    EXPECT_EQ( Kiv::dynamicCast<Redundancy::RedundancyStatus>( Kiv::globalDir()->entity( "/box" ) ),
               nullptr );
    EXPECT_EQ( Kiv::globalDir()->entity( "box/Corvid/redundancy/status" ), nullptr );
    Kiv::Embedded::entityIs( path, root );
    EXPECT_EQ( Kiv::dynamicCast<Redundancy::RedundancyStatus>( Kiv::globalDir()->entity( path ) ), nullptr );
    Kiv::Embedded::entityIs( path, nullptr );
    EXPECT_EQ( Kiv::globalDir()->entity( path ), nullptr );
    Kiv::Embedded::entityIs( path, status );
    Kiv::Embedded::entitiesDel();
    EXPECT_EQ( Kiv::globalDir()->entity( path ), nullptr );
}

TEST( EmbeddedConfigRoot, KeepsItsPathsInTheOrderGivenAndTellsWhetherItIsComplete ) {
    const auto root =
        Kiv::Embedded::newConfigRoot( { { "b", "", "" }, { "a", "", "" }, { "b", "", "" } }, false );
    EXPECT_THAT( root->configuredPaths(), ElementsAre( "b", "a", "b" ) );
    EXPECT_FALSE( root->rootsComplete() );
    EXPECT_EQ( root->name(), "configRoot" );
    EXPECT_TRUE( Kiv::Embedded::newConfigRoot( {}, true )->rootsComplete() );
}

TEST( EmbeddedPathTrie, AnswersFromTheLongestRecordedAncestorByWholeComponents ) {
    const auto root = Kiv::Embedded::newConfigRoot( { { "a", "A", "r" },
                                                      { "a/b", "first", "x" },
                                                      { "a/b", "AB", "iw" },
                                                      { "a/b/c/d", "ABCD", "" },
                                                      { "x/y", "XY", "i" },
                                                      { "/z", "Z", "z" } },
                                                    true );
    struct Row {
        const char* path;
        const char* type;
        const char* flags;
    };
    const Row rows[] = {
        { "a", "A", "r" },
        { "a/b", "AB", "iw" },
        { "a/b/c", "AB", "iw" },
        { "a/b/c/d", "ABCD", "" },
        { "a/b/c/d/e", "ABCD", "" },
        { "a/bc", "A", "r" },
        { "a/c/b", "A", "r" },
        { "a/", "A", "r" },
        { "ab", "", "" },
        { "x", "", "" },
        { "x/y/z", "XY", "i" },
        { "x/yy", "", "" },
        { "", "", "" },
        { "/", "", "" },
        { "/a", "", "" },
        { "/z/1", "Z", "z" },
        { "A", "", "" },
    };
    for ( const auto& row : rows ) {
        EXPECT_EQ( root->pathTrie().prefixTypename( row.path ), row.type ) << row.path;
        EXPECT_EQ( root->pathTrie().prefixFlags( row.path ), row.flags ) << row.path;
    }
}

TEST( EmbeddedPathTrie, ARecordForTheEmptyPathHoldsForEveryPath ) {
    const auto root = Kiv::Embedded::newConfigRoot( { { "", "Root", "r" }, { "a", "A", "" } }, true );
    for ( const char* path : { "", "b", "b/c", "/a", "/" } )
        EXPECT_EQ( root->pathTrie().prefixTypename( path ), "Root" ) << path;
    EXPECT_EQ( root->pathTrie().prefixTypename( "a/b" ), "A" );
}

TEST( EmbeddedFormat, WhatTheCLibraryCannotFormatIsRefused ) {
    constexpr wint_t noCharacter = 0x7FFFFFFF;
    EXPECT_THROW( static_cast<void>( Kiv::format( "%lc", noCharacter ) ), std::invalid_argument );
}

TEST( EmbeddedGlob, NamesComeInByteOrderAndAStarPassesOverHiddenFiles ) {
    std::string name = testing::TempDir() + "globXXXXXX";
    const std::string directory = ::mkdtemp( name.data() ) + std::string( "/" );
    for ( const char* file : { "b", "B", "_", "a", "a0", "\xc3\xa4", "\x80", ".hidden", "10", "9" } )
        ASSERT_TRUE( std::ofstream( directory + file ) << "x" ) << file;
    std::vector<std::string> found;
    EXPECT_TRUE( Brae::getGlobResult( directory + "*", found ) );
    for ( auto& match : found )
        match.erase( 0, directory.size() );
    EXPECT_THAT( found, ElementsAre( "10", "9", "B", "_", "a", "a0", "b", "\x80", "\xc3\xa4" ) );
    EXPECT_TRUE( Brae::getGlobResult( directory + ".h*", found ) );
    EXPECT_THAT( found, ElementsAre( directory + ".hidden" ) );
    std::filesystem::remove_all( directory );
}

} // namespace
