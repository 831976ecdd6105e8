#pragma once

#include "Cli/OriginRecord.h"
#include "ProfileDocument/JsonWriter.h"

namespace Corvid::Cli {

/// Writes a run's origins as one JSON object: keys in a fixed order, those of maps byte-wise.
void writeJsonOrigins( JsonWriter& json, const OriginRecord& record );

} // namespace Corvid::Cli
