#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include <antlr3.h>

namespace Corvid {

/// Reads well-formed tokens of one file straight from its text, much faster than the generated lexer and with
/// the same result. It knows no errors: whatever does not begin a well-formed token is left to the generated
/// lexer, which has the last word on what a token is.
class TokenScanner {
  public:
    /// A place in the text, in the terms of the parser library's input streams.
    struct Place {
        const char* next;      ///< the next character
        const char* lineStart; ///< the first character of its line
        std::uint32_t line;    ///< from 1

        /// The library's streams start at position −1, so on a file's first line all positions are one too
        /// low.
        [[nodiscard]] std::int32_t charPositionInLine( const char* at ) const noexcept {
            return static_cast<std::int32_t>( at - lineStart ) - ( line == 1 ? 1 : 0 );
        }
    };

    enum class Result { token, notPlain, endOfText };

    /// @param text followed by a NUL that is not part of it; not copied.
    explicit TokenScanner( std::string_view text ) noexcept
        : place_{ text.data(), text.data(), 1 }, end_( text.data() + text.size() ) {}

    /// Reads tokens to the end of the line, but at most as many as there are slots; skips white space,
    /// comments and line continuations. `notPlain` when that meets something that may be an error; `place()`
    /// is then where the generated lexer has to go on.
    /// @param slots receive type, line, position, start and stop. @param count receives how many were filled.
    Result scanLine( std::span<const pANTLR3_COMMON_TOKEN> slots, std::size_t& count ) noexcept;

    [[nodiscard]] const Place& place() const noexcept { return place_; }
    void placeIs( const Place& place ) noexcept { place_ = place; }

  private:
    [[nodiscard]] Result scan( ANTLR3_COMMON_TOKEN& token ) noexcept;
    [[nodiscard]] bool skipped() noexcept;
    [[nodiscard]] const char* commentEnd() const noexcept;
    void beginLineAt( const char* at ) noexcept;
    Result tokenIs( ANTLR3_COMMON_TOKEN& token, std::uint32_t type, const char* end ) noexcept;
    [[nodiscard]] Result scanNumber( ANTLR3_COMMON_TOKEN& token ) noexcept;
    [[nodiscard]] Result scanString( ANTLR3_COMMON_TOKEN& token ) noexcept;
    [[nodiscard]] Result scanPair( ANTLR3_COMMON_TOKEN& token ) noexcept;
    [[nodiscard]] Result scanOperator( ANTLR3_COMMON_TOKEN& token ) noexcept;
    template <class Belongs>
    [[nodiscard]] const char* runEnd( const char* at, Belongs belongs ) const noexcept;

    Place place_;
    const char* end_;
};

} // namespace Corvid
