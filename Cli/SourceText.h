#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Corvid::Cli {

/// A place in a file's text. All numbers count from 1.
struct TextPlace {
    std::size_t line = 0;
    std::size_t column = 0;    ///< in bytes
    std::size_t character = 0; ///< in characters of UTF-8; a byte that belongs to none counts as one
};

/// A line of a text, and an offset within it.
struct SourcePlace {
    std::size_t line;       ///< from 1
    std::string_view text;  ///< the line without its line end
    std::size_t byteOffset; ///< within the line, at most its size
};

/// The line of an offset in a text. An offset at the text's end or behind it is taken for the end of the
/// text's last line that is not blank: there people look for what is missing.
[[nodiscard]] SourcePlace sourcePlace( std::string_view content, std::size_t offset );
[[nodiscard]] TextPlace textPlace( std::string_view content, std::size_t offset );

/// Whether a byte goes on with a character of UTF-8 that began before it.
[[nodiscard]] inline bool isContinuationByte( char c ) {
    return ( static_cast<unsigned char>( c ) & 0xC0U ) == 0x80;
}

/// @return nothing when that is no regular file, or cannot be read.
[[nodiscard]] std::optional<std::string> readSource( const std::string& fileName );

} // namespace Corvid::Cli
