#pragma once

#include <cstddef>
#include <optional>

namespace Bench {

/// What a program has taken from malloc and its kin, new included, in all its libraries. A block counts with
/// what the C library spends on it: its usable size and its 8-byte header.
struct AllocationCounts {
    std::size_t liveBytes;   ///< not freed yet
    std::size_t peakBytes;   ///< the most that was live at once since the start or the last reset
    std::size_t totalBytes;  ///< of all blocks since the start, freed or not
    std::size_t allocations; ///< how many since the start
};

/// Nothing in a program that does not count: counting takes time.
[[nodiscard]] std::optional<AllocationCounts> allocationCounts() noexcept;
/// From now on the peak is that of what comes.
void allocationPeakReset() noexcept;

} // namespace Bench
