#include "ProfileDocument/EditDistance.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Corvid {

std::size_t editDistance( std::string_view a, std::string_view b, std::size_t limit ) {
    if ( a.size() > b.size() )
        std::swap( a, b );
    const std::size_t tooFar = limit + 1;
    if ( b.size() - a.size() > limit )
        return tooFar;
    // Rows of the table of distances between beginnings of both, each no wider than the limit allows.
    const std::vector<std::size_t> none( b.size() + 1, tooFar );
    std::array<std::vector<std::size_t>, 3> rows{ none, none, none };
    for ( std::size_t column = 0; column <= std::min( limit, b.size() ); ++column )
        rows[0][column] = column;
    for ( std::size_t i = 1; i <= a.size(); ++i ) {
        auto& row = rows[i % 3];
        const auto& above = rows[( i + 2 ) % 3];
        const auto& twoAbove = rows[( i + 1 ) % 3];
        const std::size_t first = i > limit ? i - limit : 0;
        const std::size_t last = std::min( b.size(), i + limit );
        if ( first > 0 )
            row[first - 1] = tooFar;
        for ( std::size_t j = first; j <= last; ++j ) {
            if ( j == 0 ) {
                row[0] = i;
                continue;
            }
            row[j] =
                std::min( { above[j] + 1, row[j - 1] + 1, above[j - 1] + ( a[i - 1] == b[j - 1] ? 0 : 1 ) } );
            if ( i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1] )
                row[j] = std::min( row[j], twoAbove[j - 2] + 1 );
        }
        if ( last < b.size() )
            row[last + 1] = tooFar;
    }
    return std::min( rows[a.size() % 3][b.size()], tooFar );
}

} // namespace Corvid
