#pragma once

#include "Cli/AgentRun.h"
#include "Cli/Output.h"

namespace Corvid::Cli {

/// Writes the profile that a run left behind, for people: aligned, its texts made printable. Nothing when
/// there is no profile.
void writeTree( Output& out, const AgentRun& run, bool coloured );

} // namespace Corvid::Cli
