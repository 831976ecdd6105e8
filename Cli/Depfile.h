#pragma once

#include <string>
#include <vector>

namespace Corvid::Cli {

/// Writes a rule for make and ninja: the target, which is the depfile's name without ".d" at its end, depends
/// on the files, but not on itself or the depfile. A file is replaced as a whole, and only when it is empty
/// or such a rule of the same target; what is not a file, such as a pipe, is written to. Links are followed.
/// @throws std::runtime_error when it cannot be written, is something else, or a name cannot be part of a
/// rule.
void writeDepfile( const std::string& depfile, const std::vector<std::string>& files );

} // namespace Corvid::Cli
