#pragma once

#include "Cli/AgentRun.h"
#include "Cli/Output.h"

namespace Corvid::Cli {

/// Writes the result of a run as one JSON object and a newline: keys in a fixed order, the keys of maps
/// byte-wise. Every mount has a line of its own, so that documents can be compared and searched by line. A
/// byte of 0x80 and above, and a control byte, is written as the escape of its value: the document is ASCII
/// and loses no byte.
void writeJsonDocument( Output& out, const AgentRun& run );

} // namespace Corvid::Cli
