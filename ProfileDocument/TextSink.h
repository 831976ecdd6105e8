#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace Corvid {

/// Takes a text piece by piece, into a buffer. What becomes of it then is the derived class's business.
class TextSink {
  public:
    TextSink( const TextSink& ) = delete;
    TextSink& operator=( const TextSink& ) = delete;

    void append( std::string_view text ) {
        if ( text.size() > static_cast<std::size_t>( end_ - next_ ) ) [[unlikely]]
            appendToFull( text );
        else
            next_ = std::copy( text.begin(), text.end(), next_ );
    }
    void append( char c ) { append( std::string_view( &c, 1 ) ); }
    void appendNumber( std::int64_t number );

    /// Hands on what is in the buffer.
    void flush();

  protected:
    /// @param capacity of the buffer, in bytes; not 0.
    explicit TextSink( std::size_t capacity );
    virtual ~TextSink() = default;

    /// Forgets what is in the buffer.
    void discardBuffered() noexcept { next_ = buffer_.get(); }

  private:
    void appendToFull( std::string_view text );
    /// Takes the next part of the text: what was in the buffer, or a text that is longer than that.
    virtual void receive( std::string_view text ) = 0;

    std::unique_ptr<char[]> buffer_;
    char* next_; ///< where the next character goes
    char* end_;
};

/// Keeps the whole text in memory.
class TextInMemory final : public TextSink {
  public:
    TextInMemory() : TextSink( std::size_t{ 1 } << 12 ) {}

    [[nodiscard]] std::string take() && {
        flush();
        return std::move( text_ );
    }

  private:
    void receive( std::string_view text ) override { text_.append( text ); }

    std::string text_;
};

} // namespace Corvid
