#pragma once

#include "Kiv/Export.h"

#include <string>
#include <vector>

namespace Brae {

/// Expands a file-name pattern.
/// @param matches receives the names of the matching files, in the platform's order; emptied first.
/// @return false when the expansion failed; true otherwise, also when nothing matched.
[[nodiscard]] KIV_API bool getGlobResult( const std::string& pattern, std::vector<std::string>& matches );

} // namespace Brae
