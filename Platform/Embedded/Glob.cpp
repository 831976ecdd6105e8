#include "Brae/Glob.h"

#include <algorithm>
#include <glob.h>
#include <memory>

namespace Brae {

bool getGlobResult( const std::string& pattern, std::vector<std::string>& matches ) {
    matches.clear();
    if ( pattern.find( '\0' ) != std::string::npos ) // no file name holds one; the C library would stop there
        return true;
    glob_t found{};
    const int result = ::glob( pattern.c_str(), GLOB_NOSORT, nullptr, &found );
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
