// Links between the documents lead somewhere.
#include "docs/MarkdownFile.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace CorvidTest {

namespace {

namespace fs = std::filesystem;

/// All documents of the source tree, as paths below it.
std::vector<std::string> documents() {
    std::vector<std::string> found;
    const fs::path root = sourcePath( "" );
    for ( fs::recursive_directory_iterator at( root ), end; at != end; ++at ) {
        const std::string name = at->path().filename().string();
        if ( at->is_directory() && ( name == "build" || name.starts_with( "." ) ) )
            at.disable_recursion_pending();
        else if ( at->path().extension() == ".md" )
            found.push_back( fs::relative( at->path(), root ).string() );
    }
    return found;
}

bool hasAnchor( const std::string& document, const std::string& anchor ) {
    const auto anchors = MarkdownFile( document ).anchors();
    return std::ranges::find( anchors, anchor ) != anchors.end();
}

void checkLink( const std::string& document, const MarkdownLink& link ) {
    if ( link.target.find( "://" ) != std::string::npos || link.target.starts_with( "mailto:" ) )
        return;
    const auto hash = link.target.find( '#' );
    const std::string file = link.target.substr( 0, hash );
    const std::string linked =
        file.empty() ? document : ( fs::path( document ).parent_path() / file ).lexically_normal().string();
    const std::string place = document + ":" + std::to_string( link.line ) + ": " + link.target;
    ASSERT_TRUE( fs::exists( sourcePath( linked ) ) ) << place;
    if ( hash != std::string::npos ) {
        EXPECT_TRUE( hasAnchor( linked, link.target.substr( hash + 1 ) ) ) << place;
    }
}

} // namespace

TEST( Links, EveryLinkOfEveryDocumentLeadsSomewhere ) {
    std::size_t count = 0;
    for ( const auto& document : documents() )
        for ( const auto& link : MarkdownFile( document ).links() ) {
            ++count;
            checkLink( document, link );
        }
    EXPECT_GE( count, 30U );
}

TEST( Links, EveryDocumentIsReachedFromTheReadme ) {
    std::vector<std::string> reached{ "README.md" };
    for ( std::size_t i = 0; i < reached.size(); ++i )
        for ( const auto& link : MarkdownFile( reached[i] ).links() ) {
            const std::string file = link.target.substr( 0, link.target.find( '#' ) );
            const std::string linked =
                ( fs::path( reached[i] ).parent_path() / file ).lexically_normal().string();
            if ( linked.ends_with( ".md" ) && fs::exists( sourcePath( linked ) ) &&
                 std::ranges::find( reached, linked ) == reached.end() )
                reached.push_back( linked );
        }
    EXPECT_THAT( reached, testing::IsSupersetOf( documents() ) );
}

} // namespace CorvidTest
