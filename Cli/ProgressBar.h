#pragma once

#include "Cli/Output.h"

#include <chrono>
#include <cstddef>

namespace Corvid::Cli {

/// A line that tells how far the work has come. It appears only when the work takes longer than a second, and
/// it leaves nothing behind.
class ProgressBar {
  public:
    using Clock = std::chrono::steady_clock;

    /// @param enabled false for an output that is not for people. @param total is how many there are to do.
    ProgressBar( Output& out, bool enabled, std::size_t total, Clock::time_point start )
        : out_( out ), enabled_( enabled ), total_( total ), nextDraw_( start + std::chrono::seconds( 1 ) ) {}
    ProgressBar( const ProgressBar& ) = delete;
    ProgressBar& operator=( const ProgressBar& ) = delete;
    ~ProgressBar() { erase(); }

    /// Draws the bar when it is time to. Cheap: may be called as often as wanted.
    void show( std::size_t done, Clock::time_point now );
    /// Clears the line for other output.
    void erase();

  private:
    Output& out_;
    bool enabled_;
    std::size_t total_;
    Clock::time_point nextDraw_;
    bool visible_ = false;
};

} // namespace Corvid::Cli
