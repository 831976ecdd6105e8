#pragma once

#include <cstdint>
#include <string_view>

namespace Corvid {

/// Reads well-formed tokens of one file straight from its text, much faster than the generated lexer and with the same
/// result. It knows no errors: whatever does not begin a well-formed token is left to the generated lexer, which has
/// the last word on what a token is.
class TokenScanner {
  public:
    /// A place in the text, in the terms of the parser library's input streams.
    struct Place {
        const char* next;      ///< the next character
        const char* lineStart; ///< the first character of its line
        std::uint32_t line;    ///< from 1

        /// The library's streams start at position −1, so on a file's first line all positions are one too low.
        [[nodiscard]] std::int32_t charPositionInLine( const char* at ) const noexcept {
            return static_cast<std::int32_t>( at - lineStart ) - ( line == 1 ? 1 : 0 );
        }
    };

    struct Token {
        std::uint32_t type;
        std::uint32_t line;
        std::int32_t charPositionInLine;
        std::string_view text;
    };

    enum class Result { token, notPlain, endOfText };

    explicit TokenScanner( std::string_view text ) noexcept
        : place_{ text.data(), text.data(), 1 }, end_( text.data() + text.size() ) {}

    /// Skips white space, comments and line continuations and reads one token. `notPlain` when that meets something
    /// that may be an error; `place()` is then where the generated lexer has to go on.
    [[nodiscard]] Result scan( Token& token ) noexcept;

    [[nodiscard]] const Place& place() const noexcept { return place_; }
    void placeIs( const Place& place ) noexcept { place_ = place; }

  private:
    [[nodiscard]] bool skipped() noexcept;
    [[nodiscard]] const char* commentEnd() const noexcept;
    void beginLineAt( const char* at ) noexcept;
    [[nodiscard]] Result tokenIs( Token& token, std::uint32_t type, const char* end ) noexcept;
    [[nodiscard]] Result scanNumber( Token& token ) noexcept;
    [[nodiscard]] Result scanString( Token& token ) noexcept;
    [[nodiscard]] Result scanPunctuation( Token& token ) noexcept;
    [[nodiscard]] Result scanOperator( Token& token ) noexcept;
    template <class Belongs>
    [[nodiscard]] const char* runEnd( const char* at, Belongs belongs ) const noexcept;

    Place place_;
    const char* end_;
};

} // namespace Corvid
