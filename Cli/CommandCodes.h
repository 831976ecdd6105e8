#pragma once

#include <string>
#include <string_view>

namespace Corvid::Cli {

// The codes of what is wrong with no file; see ErrorDetails.h and HandlerRun.h for those of files.

/// The command line is wrong.
inline constexpr std::string_view usageCode = "MP092";
/// `why` finds nothing mounted at a path.
inline constexpr std::string_view notMountedCode = "MP093";
/// The system refuses memory, or what is to be written.
inline constexpr std::string_view systemCode = "MP094";

/// What tells a code at the end of a line.
[[nodiscard]] inline std::string codeMark( std::string_view code ) {
    return " [" + std::string( code ) + "]";
}

} // namespace Corvid::Cli
