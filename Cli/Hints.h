#pragma once

#include "ProfileParser/MountProfileHdlr.h"

#include <string>
#include <string_view>

namespace Corvid::Cli {

/// What the writer of a file can do about an error, in short, for the mistakes that are made often; empty for
/// others. Printable.
/// @param handler has found an error with a place in the file of that content.
[[nodiscard]] std::string hintFor( const MountProfileHdlr& handler, std::string_view content );

/// The same for a file that is not an agent file.
[[nodiscard]] std::string hintForNoAgentFile( std::string_view content );

} // namespace Corvid::Cli
