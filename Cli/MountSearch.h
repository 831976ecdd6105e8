#pragma once

#include "ProfileStore/PassiveAgentProfile.h"

#include <string>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

/// Whether a mount's path is another one once its template keys have been filled in: each stands for at least
/// one character, and for no slash.
[[nodiscard]] bool standsFor( std::string_view mountPath, std::string_view path );

/// Paths of a profile that somebody may have meant who asked for one that it does not have; at most three,
/// the likeliest first: those that stand for it, those below it, and those that are written nearly the same.
[[nodiscard]] std::vector<std::string> pathsLike( const PassiveAgentProfile& profile, std::string_view path );

} // namespace Corvid::Cli
