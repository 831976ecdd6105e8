#pragma once

#include "Kiv/Export.h"
#include "Kiv/String8.h"

namespace Kiv {

/// printf-style formatting into a text of any length.
/// @throws std::invalid_argument when the C library rejects the format.
[[nodiscard]] KIV_API String8 format( const char* pattern, ... ) __attribute__( ( format( printf, 1, 2 ) ) );

} // namespace Kiv
