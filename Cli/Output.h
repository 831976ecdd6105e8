#pragma once

#include "ProfileDocument/TextSink.h"

#include <string_view>

namespace Corvid::Cli {

/// Buffered output to a file descriptor. Nothing is thrown: the first failure is kept, and everything after
/// it is dropped; who claims to have written something asks `failure()` after `flush()`.
class Output final : public TextSink {
  public:
    /// @param descriptor is not owned.
    explicit Output( int descriptor ) : TextSink( std::size_t{ 1 } << 16 ), descriptor_( descriptor ) {}
    ~Output() override { flush(); }

    /// Forgets what has not been written yet: of a document that cannot be finished.
    void discard() noexcept { discardBuffered(); }

    /// `errno` of the first write that failed, or 0.
    [[nodiscard]] int failure() const noexcept { return failure_; }
    [[nodiscard]] bool isTerminal() const noexcept;

  private:
    void receive( std::string_view text ) override;

    int descriptor_;
    int failure_ = 0;
};

/// Whether this output is a terminal that can move its cursor.
[[nodiscard]] bool isCapableTerminal( const Output& output );
/// Whether text to this output may be coloured: NO_COLOR speaks against it, unless it is empty.
[[nodiscard]] bool mayBeColoured( const Output& output );

} // namespace Corvid::Cli
