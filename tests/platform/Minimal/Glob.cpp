// Expands patterns name by name, without the C library's glob(), and yields what it finds in the reverse
// order: which order that is, and whether hidden files are found, is the platform's own business.

#include "Brae/Glob.h"

#include <algorithm>
#include <filesystem>
#include <fnmatch.h>

namespace {

/// What matches one part of a pattern in a directory; "." and ".." stand for themselves.
std::vector<std::string> namesIn( const std::string& directory, const std::string& part ) {
    if ( part.empty() || part == "." || part == ".." )
        return { part };
    std::vector<std::string> names;
    std::error_code absent;
    for ( const auto& entry :
          std::filesystem::directory_iterator( directory.empty() ? "." : directory, absent ) )
        if ( ::fnmatch( part.c_str(), entry.path().filename().c_str(), 0 ) == 0 )
            names.push_back( entry.path().filename() );
    return names;
}

} // namespace

bool Brae::getGlobResult( const std::string& pattern, std::vector<std::string>& matches ) {
    matches.clear();
    if ( pattern.find( '\0' ) != std::string::npos )
        return true;
    std::vector<std::string> found{ "" };
    std::size_t begin = 0;
    for ( std::size_t slash = 0; slash != std::string::npos; begin = slash + 1 ) {
        slash = pattern.find( '/', begin );
        const std::string part = pattern.substr( begin, slash - begin );
        std::vector<std::string> further;
        for ( const auto& directory : found )
            for ( const auto& name : namesIn( directory, part ) )
                further.push_back( directory + name + ( slash == std::string::npos ? "" : "/" ) );
        found = std::move( further );
    }
    matches = std::move( found );
    std::ranges::sort( matches, std::ranges::greater() );
    return true;
}
