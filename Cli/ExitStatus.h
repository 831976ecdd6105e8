#pragma once

namespace Corvid::Cli {

/// What the command answers to the shell; of several the highest counts.
enum class ExitStatus {
    valid = 0,   ///< all that was asked for was done, and every file is valid
    invalid = 1, ///< a file is invalid, or is not an agent file
    trouble = 2, ///< a usage error, a file that cannot be read, output that cannot be written
};

} // namespace Corvid::Cli
