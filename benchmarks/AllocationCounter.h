#pragma once

#include <cstddef>
#include <optional>

namespace Bench {

/// What a program has taken from malloc and its kin, new included, in all its libraries, while it counted. A
/// block counts with what the C library spends on it: its usable size and its 8-byte header.
struct AllocationCounts {
    std::ptrdiff_t liveBytes;  ///< allocated less freed; blocks from before the start are freed from it, too
    std::ptrdiff_t peakBytes;  ///< the most that was live at once
    std::ptrdiff_t totalBytes; ///< of all blocks, freed or not
    std::ptrdiff_t allocations;
};

/// Begins from 0. Programs that only measure times are linked without a counter, and this does nothing there.
void startCountingAllocations() noexcept;
/// What was counted since the start; nothing in a program without a counter.
std::optional<AllocationCounts> stopCountingAllocations() noexcept;

} // namespace Bench
