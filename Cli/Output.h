#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvid::Cli {

/// Buffered output to a file descriptor. Nothing is thrown: the first failure is kept, and everything after
/// it is dropped; who claims to have written something asks `failure()` after `flush()`.
class Output {
  public:
    /// @param descriptor is not owned.
    explicit Output( int descriptor );
    Output( const Output& ) = delete;
    Output& operator=( const Output& ) = delete;
    ~Output() { flush(); }

    void append( std::string_view text ) {
        if ( text.size() >= capacity - buffer_.size() )
            makeRoom( text );
        else
            buffer_.append( text );
    }
    void append( char c ) { append( std::string_view( &c, 1 ) ); }
    void appendNumber( std::int64_t number );
    void flush();

    /// `errno` of the first write that failed, or 0.
    [[nodiscard]] int failure() const noexcept { return failure_; }
    [[nodiscard]] bool isTerminal() const noexcept;

  private:
    static constexpr std::size_t capacity = 1 << 16;

    void makeRoom( std::string_view text );
    void write( std::string_view text );

    int descriptor_;
    int failure_ = 0;
    std::string buffer_;
};

/// Whether this output is a terminal that can move its cursor.
[[nodiscard]] bool isCapableTerminal( const Output& output );
/// Whether text to this output may be coloured: NO_COLOR, set to anything, speaks against it.
[[nodiscard]] bool mayBeColoured( const Output& output );

} // namespace Corvid::Cli
