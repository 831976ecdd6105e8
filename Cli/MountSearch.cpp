#include "Cli/MountSearch.h"

#include "ProfileDocument/EditDistance.h"

#include <algorithm>
#include <cctype>
#include <tuple>

namespace Corvid::Cli {

namespace {

constexpr std::size_t mostAnswers = 3;
/// Looking for something that is written like a longer path would take long, and help nobody.
constexpr std::size_t longestPath = 500;

bool isKeyCharacter( char c ) {
    return std::isalnum( static_cast<unsigned char>( c ) ) != 0 || c == '_';
}

/// The place behind a key that begins at this one; the place itself when none does.
std::size_t behindKey( std::string_view path, std::size_t at ) {
    if ( at >= path.size() || path[at] != '%' )
        return at;
    std::size_t end = at + 1;
    while ( end < path.size() && isKeyCharacter( path[end] ) )
        ++end;
    return end == at + 1 ? at : end;
}

std::size_t typosAllowed( std::string_view path ) {
    // A third of the letters at most, so that short paths are not taken for each other.
    return std::min( path.size() / 3, std::clamp<std::size_t>( path.size() / 5, 2, 6 ) );
}

/// How unlikely it is that one path was meant by another one: 0 is the likeliest.
struct Unlikeliness {
    int kind; ///< 3 is out of the question
    std::size_t distance;
    // NOLINTNEXTLINE(modernize-use-nullptr): taken for the 0 that the compiler compares with
    auto operator<=>( const Unlikeliness& ) const = default; // GCOVR_EXCL_BR_LINE: written by the compiler
};

Unlikeliness unlikeliness( std::string_view mountPath, std::string_view path ) {
    if ( standsFor( mountPath, path ) )
        return { 0, 0 };
    if ( mountPath.starts_with( path ) && mountPath.substr( path.size() ).starts_with( '/' ) )
        return { 1, mountPath.size() };
    const std::size_t limit = typosAllowed( path );
    const std::size_t distance = editDistance( mountPath, path, limit );
    return { distance <= limit ? 2 : 3, distance };
}

} // namespace

bool standsFor( std::string_view mountPath, std::string_view path ) {
    std::size_t pattern = 0;
    std::size_t at = 0;
    std::size_t keyEnd = 0;   // behind the last key that was met; 0 before the first
    std::size_t keyTaken = 0; // what that key stands for ends here
    while ( at < path.size() || pattern < mountPath.size() ) {
        const std::size_t behind = behindKey( mountPath, pattern );
        if ( behind != pattern && at < path.size() && path[at] != '/' ) {
            pattern = keyEnd = behind;
            keyTaken = ++at;
        } else if ( behind == pattern && pattern < mountPath.size() && at < path.size() &&
                    mountPath[pattern] == path[at] ) {
            ++pattern;
            ++at;
        } else if ( keyEnd != 0 && keyTaken < path.size() && path[keyTaken] != '/' ) {
            at = ++keyTaken; // the last key stands for one character more
            pattern = keyEnd;
        } else {
            return false;
        }
    }
    return true;
}

std::vector<std::string> pathsLike( const PassiveAgentProfile& profile, std::string_view path ) {
    std::vector<std::string> answers;
    if ( path.size() > longestPath )
        return answers;
    std::vector<std::pair<Unlikeliness, std::string>> found;
    for ( const auto& [name, group] : profile.mountGroup() )
        for ( const Mount& mount : group->mountProfile() )
            if ( const Unlikeliness unlikely = unlikeliness( mount.path(), path ); unlikely.kind < 3 )
                found.emplace_back( unlikely, mount.path().str() );
    std::ranges::sort( found );
    found.erase( std::unique( found.begin(), found.end() ), found.end() ); // in several groups
    for ( auto& [unlikely, mountPath] : found )
        if ( answers.size() < mostAnswers )
            answers.push_back( std::move( mountPath ) );
    return answers;
}

} // namespace Corvid::Cli
