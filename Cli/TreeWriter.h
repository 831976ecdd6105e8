#pragma once

#include "Cli/AgentRun.h"
#include "Cli/OriginRecord.h"
#include "Cli/Output.h"

namespace Corvid::Cli {

/// Writes the profile that a run left behind, for people: aligned, its texts made printable. Nothing when
/// there is no profile.
/// @param origins of that run, to be noted behind every line; or null.
void writeTree( Output& out, const AgentRun& run, bool coloured, const OriginRecord* origins = nullptr );

} // namespace Corvid::Cli
