#pragma once

#include "Kiv/Export.h"
#include "Kiv/String8.h"

#include <cstdint>

namespace Cell {

/// The id of the cell that this machine is: 1 or 2 in a redundant pair, 0 where there are no cells.
[[nodiscard]] KIV_API std::uint32_t cellId();

/// The cell-qualified form of a path relative to a cell. @param cellId 0 stands for this machine's own cell.
[[nodiscard]] KIV_API Kiv::String8 path( const Kiv::String8& relativePath, std::uint32_t cellId );

} // namespace Cell
