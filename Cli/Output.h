#pragma once

#include "ProfileDocument/TextSink.h"

#include <memory>
#include <string_view>

namespace Corvid::Cli {

/// Buffered output to a file descriptor. Nothing is thrown: the first failure is kept, and everything after
/// it is dropped; who claims to have written something asks `failure()` after `flush()`.
class Output final : public TextSink {
  public:
    /// @param descriptor is not owned.
    explicit Output( int descriptor );
    ~Output() override { flush(); }

    void flush();
    /// Forgets what has not been written yet: of a document that cannot be finished.
    void discard() noexcept { bufferIs( buffer_.get(), buffer_.get() + capacity ); }

    /// `errno` of the first write that failed, or 0.
    [[nodiscard]] int failure() const noexcept { return failure_; }
    [[nodiscard]] bool isTerminal() const noexcept;

  private:
    static constexpr std::size_t capacity = std::size_t{ 1 } << 16;

    void appendToFull( std::string_view text ) override;
    void write( std::string_view text );

    std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>( capacity );
    int descriptor_;
    int failure_ = 0;
};

/// Whether this output is a terminal that can move its cursor.
[[nodiscard]] bool isCapableTerminal( const Output& output );
/// Whether text to this output may be coloured: NO_COLOR speaks against it, unless it is empty.
[[nodiscard]] bool mayBeColoured( const Output& output );

} // namespace Corvid::Cli
