#pragma once

#include <string>

namespace Corvid::Cli {

/// What stands for the agent file on standard input, in place of a path.
inline constexpr char standardInputPath[] = "-";

/// The text on standard input.
struct StandardInput {
    std::string text;
    std::string problem; ///< for people: why it could not be read; else empty
};

/// Reads standard input to its end. As much is read as a file may be long.
[[nodiscard]] StandardInput readStandardInput();

} // namespace Corvid::Cli
