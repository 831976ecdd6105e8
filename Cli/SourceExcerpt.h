#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvid::Cli {

/// What to mark in a text, as offsets.
struct Marks {
    std::size_t
        place; ///< gets a caret; the end of what is underlined does when the line of the place has none of it
    std::size_t
        begin; ///< what stands from here to the end is underlined, as far as it is on the place's line
    std::size_t end;
};

/// Two lines: the source line of the place, and the marks under it. A long line is cut around the place; tabs
/// are blanks; bytes that are not printable are shown as `\xNN`.
[[nodiscard]] std::string sourceExcerpt( std::string_view content, const Marks& marks, bool coloured );

} // namespace Corvid::Cli
