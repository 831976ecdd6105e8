#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Corvid::Cli {

/// What a terminal may be shown of a text: printable ASCII and well-formed printable UTF-8 as they are, every
/// other byte as `\xNN`. So nothing in a file can control a terminal, and what is shown has a known width.
/// Characters without a width of their own count as not printable: they could hide or reorder their
/// neighbours.
[[nodiscard]] std::string printable( std::string_view text );
void appendPrintable( std::string& out, std::string_view text );

/// A line as it is shown to people: one of more than 8 KiB loses its middle, and tells how much that was.
/// What is wrong stands at both ends of a message; a token that it quotes may be as long as the file.
[[nodiscard]] std::string withoutMiddle( std::string_view line );

/// The character that a text begins with.
struct FirstCharacter {
    std::size_t bytes;            ///< of the text; 1 to 4
    std::optional<char32_t> code; ///< nothing for a byte that is not part of well-formed UTF-8
};
/// @param text is not empty.
[[nodiscard]] FirstCharacter firstCharacter( std::string_view text );

/// How many columns `printable( text )` takes on a terminal.
[[nodiscard]] std::size_t printableWidth( std::string_view text );

/// The first piece of a text that is shown as one: a character, or a byte in its escaped form.
struct PrintablePiece {
    std::size_t bytes;   ///< of the text; 1 to 4
    std::size_t columns; ///< on a terminal
    bool escaped;        ///< whether it is shown as `\xNN`
};
/// @param text is not empty.
[[nodiscard]] PrintablePiece firstPrintablePiece( std::string_view text );

/// Every byte of a text that is not printable ASCII, and the backslash, as `\xNN`: can be read back without
/// loss.
void appendEscaped( std::string& out, std::string_view text );

/// A byte as `%` and its two hexadecimal digits, as in a URI.
void appendPercentEncoded( std::string& out, char byte );

} // namespace Corvid::Cli
