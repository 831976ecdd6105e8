#pragma once

#include <string_view>

namespace Corvid {

/// A mount's path as groups keep it: less one "/" at either end. A path of one or two slashes becomes empty.
[[nodiscard]] inline std::string_view normalisedPath( std::string_view path ) noexcept {
    if ( path.starts_with( '/' ) )
        path.remove_prefix( 1 );
    if ( path.ends_with( '/' ) )
        path.remove_suffix( 1 );
    return path;
}

} // namespace Corvid
