#pragma once

#include <string>
#include <string_view>

namespace Model {

/// The text in double quotes, every byte that is not printable ASCII escaped as in C.
[[nodiscard]] std::string escaped( std::string_view text );

} // namespace Model
