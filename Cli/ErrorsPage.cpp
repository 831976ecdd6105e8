#include "Cli/ErrorsPage.h"

#include <algorithm>
#include <iterator>

namespace Corvid::Cli {

namespace {

constexpr std::string_view sectionMark = "\n### ";
constexpr std::string_view rowMark = "\n| ";

std::string_view lineAt( std::string_view text, std::size_t start ) {
    return text.substr( start, text.find( '\n', start ) - start );
}

/// The codes that stand behind a mark.
std::vector<std::string> codesBehind( std::string_view mark ) {
    const std::string beginning = std::string( mark ) + "MP";
    std::vector<std::string> codes;
    for ( auto at = errorsPageText.find( beginning ); at != std::string_view::npos;
          at = errorsPageText.find( beginning, at + 1 ) )
        codes.emplace_back( errorsPageText.substr( at + mark.size(), errorCodeLength ) );
    return codes;
}

/// The heading's line of a code's section without its marks, and what stands between it and the next heading.
std::optional<ErrorExplanation> sectionOf( std::string_view code ) {
    const std::string mark = std::string( sectionMark ) + std::string( code ) + " ";
    const auto at = errorsPageText.find( mark );
    if ( at == std::string_view::npos )
        return std::nullopt;
    std::string_view title = lineAt( errorsPageText, at + mark.size() );
    std::string_view body = errorsPageText.substr( at + mark.size() + title.size() );
    body.remove_prefix( 1 );
    body = body.substr( 0, std::min( body.find( "\n### " ), body.find( "\n## " ) ) );
    if ( title.starts_with( '`' ) )
        title = title.substr( 1, title.size() - 2 );
    return ErrorExplanation{ std::string( title ), std::string( body ) };
}

/// The row of a code in the table of texts that no file brings out.
std::optional<ErrorExplanation> tableRowOf( std::string_view code ) {
    const std::string mark = std::string( rowMark ) + std::string( code ) + " | `";
    const auto at = errorsPageText.find( mark );
    if ( at == std::string_view::npos )
        return std::nullopt;
    const std::string_view row = lineAt( errorsPageText, at + mark.size() );
    constexpr std::string_view between = "` | ";
    const auto end = row.find( between );
    const std::string_view reason = row.substr( end + between.size() );
    return ErrorExplanation{ std::string( row.substr( 0, end ) ),
                             "\nNo file brings this out. " +
                                 std::string( reason.substr( 0, reason.rfind( " |" ) ) ) + "\n" };
}

/// What stands in place of a fence.
std::string captionOf( std::string_view tag ) {
    constexpr std::string_view file = "mountprofile file=";
    if ( tag.starts_with( file ) )
        return "With a file " + std::string( tag.substr( file.size() ) ) + ":";
    if ( tag == "prints" )
        return "This prints:";
    return tag.ends_with( " wrong" ) ? "Wrong:" : "Right:";
}

} // namespace

std::vector<std::string> explainedCodes() {
    return codesBehind( sectionMark );
}

std::vector<std::string> knownCodes() {
    auto codes = codesBehind( sectionMark );
    std::ranges::copy( codesBehind( rowMark ), std::back_inserter( codes ) );
    std::ranges::sort( codes );
    codes.erase( std::unique( codes.begin(), codes.end() ), codes.end() );
    return codes;
}

std::optional<ErrorExplanation> explanationOf( std::string_view code ) {
    auto section = sectionOf( code );
    return section ? section : tableRowOf( code );
}

std::string readable( std::string_view markdown ) {
    constexpr std::string_view fence = "```";
    std::string text;
    bool inBlock = false;
    for ( std::size_t start = 0; start < markdown.size(); ) {
        const std::string_view line = lineAt( markdown, start );
        start += line.size() + 1;
        if ( line.starts_with( fence ) ) {
            inBlock = !inBlock;
            if ( inBlock )
                text.append( captionOf( line.substr( fence.size() ) ) ).append( "\n\n" );
            continue;
        }
        if ( inBlock )
            text.append( 4, ' ' );
        text.append( line ).append( "\n" );
    }
    return text;
}

} // namespace Corvid::Cli
