#pragma once

#include "Cli/ErrorScene.h"

#include <string>

namespace Corvid::Cli {

// Each looks for mistakes of one kind; empty when there is none of them.
[[nodiscard]] std::string conditionHint( const ErrorScene& scene );
/// Characters, numbers and operators where they cannot stand.
[[nodiscard]] std::string tokenHint( const ErrorScene& scene );

} // namespace Corvid::Cli
