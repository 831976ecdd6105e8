#include "Brae/Glob.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Glob : public testing::Test {
  protected:
    Glob() {
        std::string name = testing::TempDir() + "globXXXXXX";
        directory_ = ::mkdtemp( name.data() ) + "/"s;
    }
    ~Glob() override { std::filesystem::remove_all( directory_ ); }

    void make( const std::vector<std::string>& names ) const {
        for ( const auto& name : names ) {
            const std::filesystem::path path = directory_ + name;
            std::filesystem::create_directories( path.parent_path() );
            ASSERT_TRUE( std::ofstream( path ) << name ) << path;
        }
    }
    /// What the pattern matches, below the test's directory.
    [[nodiscard]] std::vector<std::string> matches( const std::string& pattern ) const {
        std::vector<std::string> found{ "left over" };
        EXPECT_TRUE( Brae::getGlobResult( directory_ + pattern, found ) );
        for ( auto& name : found ) {
            EXPECT_TRUE( name.starts_with( directory_ ) ) << name;
            name.erase( 0, directory_.size() );
        }
        return found;
    }

  private:
    std::string directory_;
};

TEST_F( Glob, ExpandsMetacharactersAndTakesOtherTextAsItIs ) {
    make( { "ab", "ac", "b", "d/ab", "e/ab", "weird[1]" } );
    EXPECT_THAT( matches( "a*" ), UnorderedElementsAre( "ab", "ac" ) );
    EXPECT_THAT( matches( "?" ), UnorderedElementsAre( "b", "d", "e" ) );
    EXPECT_THAT( matches( "a[bx]" ), ElementsAre( "ab" ) );
    EXPECT_THAT( matches( "a[!b]" ), ElementsAre( "ac" ) );
    EXPECT_THAT( matches( "*/ab" ), UnorderedElementsAre( "d/ab", "e/ab" ) );
    EXPECT_THAT( matches( "d/ab" ), ElementsAre( "d/ab" ) );
    EXPECT_THAT( matches( "weird\\[1]" ), ElementsAre( "weird[1]" ) );
}

TEST_F( Glob, ManyAsterisksMatchWhatOneDoes ) {
    make( { "ab", "ac", "b", "d/ab", "*", "*x", "weird[1]" } );
    EXPECT_THAT( matches( "a**" ), UnorderedElementsAre( "ab", "ac" ) );
    EXPECT_THAT( matches( "***b" ), UnorderedElementsAre( "ab", "b" ) );
    EXPECT_THAT( matches( "**/**" ), ElementsAre( "d/ab" ) );
    EXPECT_THAT( matches( "\\**" ), UnorderedElementsAre( "*", "*x" ) );
    EXPECT_THAT( matches( "**[[]1]" ), ElementsAre( "weird[1]" ) );
    EXPECT_THAT( matches( std::string( 1 << 20, '*' ) + "c" ), ElementsAre( "ac" ) );
}

TEST_F( Glob, NoMatchIsASuccessWithoutNames ) {
    EXPECT_THAT( matches( "*" ), IsEmpty() );
    EXPECT_THAT( matches( "absent" ), IsEmpty() );
    EXPECT_THAT( matches( "no/such/directory/*" ), IsEmpty() );
}

TEST_F( Glob, ANulInAPatternMatchesNothing ) {
    make( { "ab" } );
    EXPECT_THAT( matches( "ab\0"s ), IsEmpty() );
    EXPECT_THAT( matches( "a*\0b"s ), IsEmpty() );
}

} // namespace
