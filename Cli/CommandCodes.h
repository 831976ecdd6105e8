#pragma once

#include <string>
#include <string_view>

namespace Corvid::Cli {

// The code of errors in the command line; see ErrorDetails.h and HandlerRun.h for those of files.
inline constexpr std::string_view usageCode = "MP092";

/// What tells a code at the end of a line; nothing for an empty one.
[[nodiscard]] inline std::string codeMark( std::string_view code ) {
    return code.empty() ? std::string() : " [" + std::string( code ) + "]";
}

} // namespace Corvid::Cli
