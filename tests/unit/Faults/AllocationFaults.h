#pragma once

namespace CorvidTest {

enum class Thrown {
    badAlloc,
    somethingElse, ///< of no class of exceptions
};

/// Lets one allocation by `operator new` fail. The program that links AllocationFaults.cpp has these
/// operators in place of its compiler's, for all code in it that is not the C library's or the parser
/// library's.
class FailingAllocation {
  public:
    /// @param number the allocation, counted from 1 from now on, that throws; those behind it succeed again.
    /// @param thrown what it throws.
    explicit FailingAllocation( long number, Thrown thrown = Thrown::badAlloc ) noexcept;
    FailingAllocation( const FailingAllocation& ) = delete;
    FailingAllocation& operator=( const FailingAllocation& ) = delete;
    ~FailingAllocation();

    /// Whether there were that many allocations.
    [[nodiscard]] bool hasFailed() const noexcept;
};

/// How many allocations by `operator new` have not been given back.
[[nodiscard]] long liveAllocations() noexcept;

} // namespace CorvidTest
