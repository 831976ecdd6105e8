#pragma once

#include <string>
#include <string_view>

namespace Corvid::Cli {

// The codes of errors that the command finds by itself; see ErrorDetails.h for the library's.
inline constexpr std::string_view unreadableCode = "MP090";
inline constexpr std::string_view notAgentFileCode = "MP091";
inline constexpr std::string_view usageCode = "MP092";

/// What tells a code at the end of a line; nothing for an empty one.
[[nodiscard]] inline std::string codeMark( std::string_view code ) {
    return code.empty() ? std::string() : " [" + std::string( code ) + "]";
}

} // namespace Corvid::Cli
