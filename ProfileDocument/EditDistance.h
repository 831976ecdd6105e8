#pragma once

#include <cstddef>
#include <string_view>

namespace Corvid {

/// How many bytes have to be inserted, deleted or replaced, or neighbours swapped, to make one text of the
/// other; `limit + 1` when that is more than the limit. Takes a time of the shorter text's length times the
/// limit.
[[nodiscard]] std::size_t editDistance( std::string_view a, std::string_view b, std::size_t limit );

} // namespace Corvid
