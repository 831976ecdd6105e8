#pragma once

#include "InputDirectory.h"

#include <string_view>

namespace CorvidFuzz {

/// A mount line that is appended to a valid file changes at most the group that was open at the file's end:
/// also where the file ends so that the line makes it invalid.
void checkAppendedMount( InputDirectory& directory, std::string_view name, std::string_view text );

} // namespace CorvidFuzz
