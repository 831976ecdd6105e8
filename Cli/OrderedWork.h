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
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace Corvid::Cli {

/// Yields results number 0 to count − 1 in that order, computed by several threads. The caller's is one of
/// them: it computes while the result that is to come next is not ready, so nobody has to be woken for each
/// result.
template <class Result>
class OrderedWork {
  public:
    /// @param threads at most so many, the caller's included; fewer when the system does not grant them.
    /// @param compute is called once for every number, by any of the threads.
    OrderedWork( std::size_t count, std::size_t threads, std::function<Result( std::size_t )> compute )
        : compute_( std::move( compute ) ), results_( count ) {
        try {
            while ( threads_.size() + 1 < std::min( threads, count ) )
                threads_.emplace_back( [this] {
                    while ( computeOne() ) {
                    }
                } );
        } catch ( const std::system_error& ) { // no more of them: those that there are do all
        }
    }
    OrderedWork( const OrderedWork& ) = delete;
    OrderedWork& operator=( const OrderedWork& ) = delete;
    /// Waits for the results that are being computed; those not begun never are.
    ~OrderedWork() { next_ = results_.size(); }

    /// The next result in order, or none when it is not ready after computing another one or, when all have
    /// been begun, in time. Called at most count times with success.
    /// @throws whatever computing a result threw.
    std::optional<Result> take( std::chrono::milliseconds patience ) {
        std::unique_lock lock( mutex_ );
        if ( !isReady() ) {
            lock.unlock();
            const bool hasComputed = computeOne();
            lock.lock();
            if ( !hasComputed )
                ready_.wait_for( lock, patience, [this] { return isReady(); } );
        }
        if ( failure_ )
            std::rethrow_exception( failure_ );
        if ( !results_[taken_] )
            return std::nullopt;
        return std::exchange( results_[taken_++], std::nullopt );
    }
    /// How many results have been computed.
    [[nodiscard]] std::size_t done() const noexcept { return done_; }

  private:
    /// Whether the next result, or what it threw, can be had. Under the lock.
    [[nodiscard]] bool isReady() const { return results_[taken_] || failure_; }
    /// @return false when all have been begun.
    bool computeOne() noexcept {
        const std::size_t number = next_++;
        if ( number >= results_.size() )
            return false;
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
        return true;
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
