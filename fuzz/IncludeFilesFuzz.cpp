// An agent file with files beside it that it may include. The first part of the input is the agent file, each
// further one a file: its name, a newline, its text.

#include "InputDirectory.h"
#include "Laws.h"

#include <algorithm>

namespace CorvidFuzz {

namespace {

constexpr char agentFileName[] = "agent";
constexpr std::size_t mostFiles = 6;

bool isFileName( std::string_view name ) {
    const auto isPlain = []( char c ) {
        return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) || c == '-' ||
               c == '_' || c == '.' || c == '*';
    };
    return !name.empty() && name.size() < 32 && std::ranges::all_of( name, isPlain ) &&
           name.find_first_not_of( '.' ) != std::string_view::npos && name != agentFileName;
}

Files writeFiles( InputDirectory& directory, const std::vector<std::string_view>& parts ) {
    directory.removeAllBut( agentFileName );
    Files files;
    files[directory.write( agentFileName, parts.front() )] = parts.front();
    for ( std::size_t i = 1; i < std::min( parts.size(), mostFiles ); ++i ) {
        const std::size_t nameEnd = std::min( parts[i].find( '\n' ), parts[i].size() );
        const std::string_view name = parts[i].substr( 0, nameEnd );
        const std::string_view text = parts[i].substr( std::min( nameEnd + 1, parts[i].size() ) );
        if ( isFileName( name ) )
            files[directory.write( name, text )] = text;
    }
    return files;
}

} // namespace

} // namespace CorvidFuzz

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size ) {
    using namespace CorvidFuzz;
    static InputDirectory directory;
    const Files files = writeFiles( directory, partsOf( data, size ) );
    RunOptions options;
    options.addDefaults = false;
    const auto fast = checkedRun( directory.pathOf( agentFileName ), files, options );
    if ( !isOneOf( 4, textOf( data, size ) ) )
        return 0;
    options.plainTokens = true;
    require( documentOf( run( fast.agentFile, options ) ) == documentOf( fast ),
             "both sources of tokens give the same document", fast.printed );
    return 0;
}
