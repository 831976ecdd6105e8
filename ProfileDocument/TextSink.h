#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Corvid {

/// Takes a text piece by piece, into a buffer. What becomes of it, and when, is the derived class's business.
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

  protected:
    TextSink() = default;
    virtual ~TextSink() = default;

    /// Called for a text that no longer fits. Has to take it, behind what is in the buffer.
    virtual void appendToFull( std::string_view text ) = 0;

    /// Gives the buffer, which is the derived class's own.
    void bufferIs( char* next, char* end ) noexcept {
        next_ = next;
        end_ = end;
    }
    [[nodiscard]] const char* next() const noexcept { return next_; }

  private:
    char* next_ = nullptr; ///< where the next character goes
    char* end_ = nullptr;
};

/// Keeps the whole text in memory.
class TextInMemory final : public TextSink {
  public:
    TextInMemory() { bufferIs( text_.data(), text_.data() ); }

    [[nodiscard]] std::string take() && {
        text_.resize( size() );
        return std::move( text_ );
    }

  private:
    [[nodiscard]] std::size_t size() const noexcept {
        return static_cast<std::size_t>( next() - text_.data() );
    }
    void appendToFull( std::string_view text ) override;

    std::string text_; ///< and room behind it
};

} // namespace Corvid
