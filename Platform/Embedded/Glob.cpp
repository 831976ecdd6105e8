#include "Brae/Glob.h"

#include <algorithm>
#include <glob.h>
#include <memory>

namespace Brae {

namespace {

/// The pattern with one asterisk in place of several side by side, which match the same: the C library would
/// go through them again for every file. Only in the last part of the path, if no asterisk can be itself
/// there.
std::string withSingleAsterisks( std::string pattern ) {
    const std::size_t lastPart = pattern.rfind( '/' ) + 1;
    if ( pattern.find_first_of( "[\\", lastPart ) == std::string::npos )
        pattern.erase( std::unique( pattern.begin() + static_cast<std::ptrdiff_t>( lastPart ), pattern.end(),
                                    []( char a, char b ) { return a == '*' && b == '*'; } ),
                       pattern.end() );
    return pattern;
}

} // namespace

bool getGlobResult( const std::string& pattern, std::vector<std::string>& matches ) {
    matches.clear();
    if ( pattern.find( '\0' ) != std::string::npos ) // no file name holds one; the C library would stop there
        return true;
    glob_t found{};
    const int result = ::glob( withSingleAsterisks( pattern ).c_str(), GLOB_NOSORT, nullptr, &found );
    const std::unique_ptr<glob_t, decltype( &::globfree )> owner( &found, &::globfree );
    if ( result == GLOB_NOMATCH )
        return true;
    if ( result != 0 )
        return false;
    matches.assign( found.gl_pathv, found.gl_pathv + found.gl_pathc );
    // The C library sorts by the locale; the order in which files are parsed must not depend on it.
    std::ranges::sort( matches );
    return true;
}

} // namespace Brae
