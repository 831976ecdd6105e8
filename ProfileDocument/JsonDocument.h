#pragma once

#include "ProfileDocument/HandlerRun.h"
#include "ProfileDocument/JsonWriter.h"
#include "ProfileDocument/TextSink.h"

#include <functional>

namespace Corvid {

/// Writes the result of a run as one JSON object and a newline: keys in a fixed order, the keys of maps
/// byte-wise. Every mount has a line of its own, so that documents can be compared and searched by line. A
/// byte of 0x80 and above, and a control byte, is written as the escape of its value: the document is ASCII
/// and loses no byte.
/// @param writeOrigins writes the value of a last key "origin"; without it the document has no such key, and
/// neither has that of a file that cannot be read.
void writeJsonDocument( TextSink& out, const HandlerRun& run,
                        const std::function<void( JsonWriter& )>& writeOrigins = nullptr );

} // namespace Corvid
