#pragma once

#include <string>
#include <string_view>

namespace Model {

/// The text in double quotes, every byte that is not printable ASCII escaped as in C.
[[nodiscard]] std::string escaped( std::string_view text );

/// The byte as \xNN.
[[nodiscard]] std::string escapedByte( char byte );

} // namespace Model
