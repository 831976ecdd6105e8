#include "AllocationCounter.h"

namespace Bench {

void startCountingAllocations() noexcept {}

std::optional<AllocationCounts> stopCountingAllocations() noexcept {
    return {};
}

} // namespace Bench
