#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace Corvid::Cli {

/// Yields results number 0 to count − 1 in that order, computed by several threads. A single file is checked
/// without another thread, which costs more than the check.
template <class Result>
class OrderedWork {
  public:
    /// @param threads at most so many; 1 stands for the caller's own. @param compute is called once for every
    /// number, by any of the threads.
    OrderedWork( std::size_t count, std::size_t threads, std::function<Result( std::size_t )> compute )
        : compute_( std::move( compute ) ), results_( count ) {
        const std::size_t useful = std::min( threads, count );
        if ( useful > 1 )
            for ( std::size_t i = 0; i < useful; ++i )
                threads_.emplace_back( [this] { work(); } );
    }
    OrderedWork( const OrderedWork& ) = delete;
    OrderedWork& operator=( const OrderedWork& ) = delete;
    /// Waits for the results that are being computed; those not begun never are.
    ~OrderedWork() { next_ = results_.size(); }

    /// The next result in order, or none when it does not come in time. Called at most count times with
    /// success.
    /// @throws whatever computing a result threw.
    std::optional<Result> take( std::chrono::milliseconds patience ) {
        if ( threads_.empty() ) {
            Result result = compute_( taken_++ );
            ++done_;
            return result;
        }
        std::unique_lock lock( mutex_ );
        auto& result = results_[taken_];
        ready_.wait_for( lock, patience, [&] { return result || failure_; } );
        if ( failure_ )
            std::rethrow_exception( failure_ );
        if ( !result )
            return std::nullopt;
        ++taken_;
        return std::exchange( result, std::nullopt );
    }
    /// How many results have been computed.
    [[nodiscard]] std::size_t done() const noexcept { return done_; }

  private:
    void work() noexcept {
        for ( ;; ) {
            const std::size_t number = next_++;
            if ( number >= results_.size() )
                return;
            try {
                Result result = compute_( number );
                const std::lock_guard lock( mutex_ );
                results_[number] = std::move( result );
            } catch ( ... ) {
                const std::lock_guard lock( mutex_ );
                failure_ = std::current_exception();
            }
            ++done_;
            ready_.notify_one();
        }
    }

    std::function<Result( std::size_t )> compute_;
    std::vector<std::optional<Result>> results_;
    std::size_t taken_ = 0;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::size_t> done_ = 0;
    std::exception_ptr failure_;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::vector<std::jthread> threads_; // last: they are joined before what they use goes
};

} // namespace Corvid::Cli
