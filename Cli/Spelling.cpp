#include "Cli/Spelling.h"

#include "ProfileDocument/EditDistance.h"

#include <algorithm>

namespace Corvid::Cli {

namespace {

constexpr std::size_t longestWord = 80; ///< names are shorter; what is longer is not worth the time

char lowerCase( char c ) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>( c - 'A' + 'a' ) : c;
}

std::string lowerCase( std::string_view text ) {
    std::string lower( text );
    std::ranges::transform( lower, lower.begin(), []( char c ) { return lowerCase( c ); } );
    return lower;
}

} // namespace

bool sameLetters( std::string_view one, std::string_view other ) {
    return lowerCase( one ) == lowerCase( other );
}

std::string nearest( std::string_view word, const std::vector<std::string>& candidates ) {
    std::string found;
    if ( word.size() > longestWord )
        return found;
    // A third of the letters may be wrong, so that short words are not taken for each other.
    std::size_t fewest = std::min<std::size_t>( word.size() / 3, 3 ) + 1;
    for ( const std::string& candidate : candidates ) {
        if ( candidate == word )
            continue;
        const std::size_t changes = editDistance( lowerCase( word ), lowerCase( candidate ), fewest );
        if ( changes < fewest ) {
            fewest = changes;
            found = candidate;
        }
    }
    return found;
}

std::string didYouMean( std::string_view word, const std::vector<std::string>& candidates ) {
    const std::string meant = nearest( word, candidates );
    return meant.empty() ? meant : "did you mean '" + meant + "'?";
}

} // namespace Corvid::Cli
