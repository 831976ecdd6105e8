#include "Cli/SourceLines.h"

#include "Cli/SourceText.h"

namespace Corvid::Cli {

SourceLines::File SourceLines::read( const std::string& fileName ) {
    File file;
    file.content = readSource( fileName ).value_or( "" );
    for ( std::size_t start = 0; start < file.content.size(); ) {
        file.starts.push_back( start );
        const std::size_t end = file.content.find( '\n', start );
        start = end == std::string::npos ? file.content.size() : end + 1;
    }
    return file;
}

std::string_view SourceLines::line( const std::string& fileName, std::uint32_t number ) {
    const auto [place, isNew] = files_.try_emplace( fileName );
    File& file = place->second;
    if ( isNew )
        file = read( fileName );
    if ( number == 0 || number > file.starts.size() )
        return {};
    const std::string_view rest = std::string_view( file.content ).substr( file.starts[number - 1] );
    const std::string_view line = rest.substr( 0, rest.find( '\n' ) );
    return line.substr( 0, line.size() - ( line.ends_with( '\r' ) ? 1 : 0 ) );
}

} // namespace Corvid::Cli
