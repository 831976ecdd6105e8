#pragma once

#include <atomic>
#include <cstdint>

#ifndef KIV_THREAD_SAFE_POINTERS
#define KIV_THREAD_SAFE_POINTERS 1
#endif

namespace Kiv {

/// The count inside a reference-counted object. Atomic when thread-safe pointers are switched on
/// (`KIV_THREAD_SAFE_POINTERS`, the default): then handles to one object may be copied and dropped by several
/// threads at once. The object itself is not protected by it.
class RefCount {
  public:
    /// Begins with so many.
    explicit constexpr RefCount( std::uint32_t initial ) noexcept : count_( initial ) {}

#if KIV_THREAD_SAFE_POINTERS
    /// One reference more.
    void increment() const noexcept {
        count_.fetch_add( 1, std::memory_order_relaxed );
    }
    /// Answers true when this dropped the last reference.
    [[nodiscard]] bool decrement() const noexcept {
        // The only owner cannot be joined by another one, so the plain read saves the locked instruction.
        // GCOVR_EXCL_BR_START: that another thread drops its reference in between cannot be brought about
        return count_.load( std::memory_order_acquire ) == 1 ||
               count_.fetch_sub( 1, std::memory_order_acq_rel ) == 1;
        // GCOVR_EXCL_BR_STOP
    }
    /// Who reads 1 is the only owner, and sees all that former owners did with the object.
    [[nodiscard]] std::uint32_t value() const noexcept {
        return count_.load( std::memory_order_acquire );
    }

  private:
    mutable std::atomic<std::uint32_t> count_;
#else
    void increment() const noexcept {
        ++count_;
    }
    [[nodiscard]] bool decrement() const noexcept {
        return --count_ == 0;
    }
    [[nodiscard]] std::uint32_t value() const noexcept {
        return count_;
    }

  private:
    mutable std::uint32_t count_;
#endif
};

} // namespace Kiv
