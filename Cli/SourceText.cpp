#include "Cli/SourceText.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace Corvid::Cli {

namespace {

std::string_view withoutBlankEnd( std::string_view content ) {
    return content.substr( 0, content.find_last_not_of( " \t\r\n" ) + 1 );
}

} // namespace

SourcePlace sourcePlace( std::string_view content, std::size_t offset ) {
    if ( offset >= content.size() ) {
        content = withoutBlankEnd( content );
        offset = content.size();
    }
    const std::string_view before = content.substr( 0, offset );
    const auto lineStart = before.rfind( '\n' ) + 1; // 0 on the first line
    const auto line = static_cast<std::size_t>( std::ranges::count( before, '\n' ) ) + 1;
    std::string_view text = content.substr( lineStart, content.find( '\n', offset ) - lineStart );
    if ( text.ends_with( '\r' ) )
        text.remove_suffix( 1 );
    return { line, text, std::min( offset - lineStart, text.size() ) };
}

TextPlace textPlace( std::string_view content, std::size_t offset ) {
    const SourcePlace place = sourcePlace( content, offset );
    const std::string_view before = place.text.substr( 0, place.byteOffset );
    const auto characters =
        before.size() - static_cast<std::size_t>( std::ranges::count_if( before, isContinuationByte ) );
    return { place.line, place.byteOffset + 1, characters + 1 };
}

std::optional<std::string> readSource( const std::string& fileName ) {
    std::error_code error;
    if ( !std::filesystem::is_regular_file( fileName, error ) ) // a pipe would block
        return std::nullopt;
    std::ifstream file( fileName, std::ios::binary );
    std::string content{ std::istreambuf_iterator<char>( file ), {} };
    if ( !file )
        return std::nullopt;
    return content;
}

} // namespace Corvid::Cli
