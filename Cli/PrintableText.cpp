#include "Cli/PrintableText.h"

#include "Cli/SourceText.h"

#include <clocale>
#include <cwchar>
#include <locale.h>

namespace Corvid::Cli {

namespace {

/// Makes the C library read UTF-8 in this thread, whatever the user's locale, while it lives: the same file
/// gives the same output everywhere.
class Utf8Scope {
  public:
    Utf8Scope() : before_( utf8() ? ::uselocale( utf8() ) : nullptr ) {}
    Utf8Scope( const Utf8Scope& ) = delete;
    Utf8Scope& operator=( const Utf8Scope& ) = delete;
    ~Utf8Scope() {
        if ( before_ )
            ::uselocale( before_ );
    }
    /// False where the C library does not have that locale; all that is not ASCII is then escaped.
    [[nodiscard]] bool holds() const noexcept { return before_ != nullptr; }

  private:
    static locale_t utf8() {
        static const locale_t locale = ::newlocale( LC_CTYPE_MASK, "C.UTF-8", nullptr );
        return locale;
    }

    locale_t before_;
};

FirstCharacter firstCharacter( std::string_view text, const Utf8Scope& utf8 ) {
    constexpr FirstCharacter malformed{ 1, std::nullopt };
    constexpr wchar_t last = 0x10FFFF; // the C library goes on behind it
    const auto byte = static_cast<unsigned char>( text.front() );
    if ( byte < 0x80 )
        return { 1, byte };
    if ( !utf8.holds() )
        return malformed;
    wchar_t character = 0;
    std::mbstate_t state{};
    const std::size_t bytes = std::mbrtowc( &character, text.data(), text.size(), &state );
    if ( bytes > text.size() || character > last ) // malformed or cut off, or not a character
        return malformed;
    return { bytes, static_cast<char32_t>( character ) };
}

PrintablePiece firstPiece( std::string_view text, const Utf8Scope& utf8 ) {
    constexpr PrintablePiece escapedByte{ 1, 4, true };
    const auto byte = static_cast<unsigned char>( text.front() );
    if ( byte < 0x80 )
        return byte >= 0x20 && byte < 0x7F ? PrintablePiece{ 1, 1, false } : escapedByte;
    const FirstCharacter first = firstCharacter( text, utf8 );
    const int columns = first.code ? ::wcwidth( static_cast<wchar_t>( *first.code ) ) : 0;
    return columns > 0 ? PrintablePiece{ first.bytes, static_cast<std::size_t>( columns ), false }
                       : escapedByte;
}

void appendHex( std::string& out, std::string_view prefix, char c ) {
    static constexpr char digits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>( c );
    out.append( prefix ).append( { digits[byte >> 4], digits[byte & 0xF] } );
}

} // namespace

PrintablePiece firstPrintablePiece( std::string_view text ) {
    const Utf8Scope utf8;
    return firstPiece( text, utf8 );
}

void appendPrintable( std::string& out, std::string_view text ) {
    const Utf8Scope utf8;
    while ( !text.empty() ) {
        const PrintablePiece piece = firstPiece( text, utf8 );
        if ( piece.escaped )
            appendHex( out, "\\x", text.front() );
        else
            out.append( text.substr( 0, piece.bytes ) );
        text.remove_prefix( piece.bytes );
    }
}

std::string printable( std::string_view text ) {
    std::string out;
    out.reserve( text.size() );
    appendPrintable( out, text );
    return out;
}

std::string withoutMiddle( std::string_view line ) {
    constexpr std::size_t shownAtMost = 8 << 10;
    constexpr std::size_t shownInFront = 4 << 10;
    constexpr std::size_t shownBehind = 2 << 10;
    if ( line.size() <= shownAtMost )
        return std::string( line );
    std::size_t begin = shownInFront;
    std::size_t end = line.size() - shownBehind;
    while ( begin > 0 && isContinuationByte( line[begin] ) )
        --begin;
    while ( end < line.size() && isContinuationByte( line[end] ) )
        ++end;
    return std::string( line.substr( 0, begin ) ) + "[... " + std::to_string( end - begin ) +
           " characters left out ...]" + std::string( line.substr( end ) );
}

FirstCharacter firstCharacter( std::string_view text ) {
    const Utf8Scope utf8;
    return firstCharacter( text, utf8 );
}

std::size_t printableWidth( std::string_view text ) {
    const Utf8Scope utf8;
    std::size_t columns = 0;
    while ( !text.empty() ) {
        const PrintablePiece piece = firstPiece( text, utf8 );
        columns += piece.columns;
        text.remove_prefix( piece.bytes );
    }
    return columns;
}

void appendEscaped( std::string& out, std::string_view text ) {
    for ( const char c : text ) {
        if ( c >= 0x20 && c < 0x7F && c != '\\' )
            out += c;
        else
            appendHex( out, "\\x", c );
    }
}

void appendPercentEncoded( std::string& out, char byte ) {
    appendHex( out, "%", byte );
}

} // namespace Corvid::Cli
