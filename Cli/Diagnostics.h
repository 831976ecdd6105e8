#pragma once

#include "Cli/AgentRun.h"

#include <string>

namespace Corvid::Cli {

/// What a user is told, on standard error, about a run that did not end well; empty for a valid file. Begins
/// with what the library printed.
[[nodiscard]] std::string diagnosticsOf( const AgentRun& run, bool coloured );

} // namespace Corvid::Cli
