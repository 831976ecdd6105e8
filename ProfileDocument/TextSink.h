#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Corvid {

/// Takes a text piece by piece. What becomes of it, and when, is the derived class's business.
class TextSink {
  public:
    TextSink( const TextSink& ) = delete;
    TextSink& operator=( const TextSink& ) = delete;

    void append( std::string_view text ) {
        if ( text.size() >= capacity_ - buffer_.size() )
            makeRoom( text );
        else
            buffer_.append( text );
    }
    void append( char c ) { append( std::string_view( &c, 1 ) ); }
    void appendNumber( std::int64_t number );

  protected:
    /// @param capacity in bytes: the buffer always stays smaller.
    explicit TextSink( std::size_t capacity ) : capacity_( capacity ) {}
    virtual ~TextSink() = default;

    /// Called for a text that no longer fits. Has to take that text, and what is in the buffer before it.
    virtual void makeRoom( std::string_view text ) = 0;

    const std::size_t capacity_;
    std::string buffer_;
};

/// Keeps the whole text in memory.
class TextInMemory final : public TextSink {
  public:
    TextInMemory() : TextSink( std::string().max_size() ) {}

    [[nodiscard]] std::string take() && { return std::move( buffer_ ); }

  private:
    // GCOVR_EXCL_START: no text is that long
    void makeRoom( std::string_view text ) override { buffer_.append( text ); }
    // GCOVR_EXCL_STOP
};

} // namespace Corvid
