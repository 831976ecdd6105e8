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

/// The path, below the source tree, of the file that a link leads to.
std::string linkedFile( const std::string& document, const MarkdownLink& link ) {
    const std::string file = link.target.substr( 0, link.target.find( '#' ) );
    return file.empty() ? document
                        : ( fs::path( document ).parent_path() / file ).lexically_normal().string();
}

bool hasAnchor( const std::string& document, const std::string& anchor ) {
    const auto anchors = MarkdownFile( document ).anchors();
    return std::ranges::find( anchors, anchor ) != anchors.end();
}

void checkLink( const std::string& document, const MarkdownLink& link ) {
    if ( link.target.find( "://" ) != std::string::npos || link.target.starts_with( "mailto:" ) )
        return;
    const auto hash = link.target.find( '#' );
    const std::string linked = linkedFile( document, link );
    const std::string place = document + ":" + std::to_string( link.line ) + ": " + link.target;
    ASSERT_TRUE( fs::exists( sourcePath( linked ) ) ) << place;
    if ( hash != std::string::npos ) {
        EXPECT_TRUE( hasAnchor( linked, link.target.substr( hash + 1 ) ) ) << place;
    }
}

/// Those written for readers of the project as a whole; further folders have documents of their own business.
bool isForEveryone( const std::string& document ) {
    return document.find( '/' ) == std::string::npos || document.starts_with( "docs/" ) ||
           document.starts_with( "examples/" );
}

} // namespace

TEST( Links, EveryLinkOfEveryDocumentLeadsSomewhere ) {
    std::size_t count = 0;
    for ( const auto& name : documents() ) {
        const MarkdownFile document( name );
        count += document.links().size();
        for ( const auto& link : document.links() )
            checkLink( name, link );
    }
    EXPECT_GE( count, 30U );
}

TEST( Links, EveryDocumentForEveryoneIsReachedFromTheReadme ) {
    std::vector<std::string> reached{ "README.md" };
    for ( std::size_t i = 0; i < reached.size(); ++i ) {
        const MarkdownFile document( reached[i] );
        for ( const auto& link : document.links() ) {
            const std::string linked = linkedFile( document.name(), link );
            if ( linked.ends_with( ".md" ) && fs::exists( sourcePath( linked ) ) &&
                 std::ranges::find( reached, linked ) == reached.end() )
                reached.push_back( linked );
        }
    }
    auto expected = documents();
    std::erase_if( expected, []( const auto& document ) { return !isForEveryone( document ); } );
    EXPECT_THAT( reached, testing::IsSupersetOf( expected ) );
}

} // namespace CorvidTest
