#include "Cli/PrintableText.h"

#include <algorithm>
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

constexpr PrintablePiece escapedByte{ 1, 4, true };

/// The bytes of the character that a text begins with, and the character; 0 bytes when there is none.
std::size_t firstCharacter( std::string_view text, wchar_t& character ) {
    std::mbstate_t state{};
    const std::size_t bytes = std::mbrtowc( &character, text.data(), text.size(), &state );
    return bytes > text.size() ? 0 : bytes; // malformed, or cut off
}

PrintablePiece firstPiece( std::string_view text, const Utf8Scope& utf8 ) {
    const auto byte = static_cast<unsigned char>( text.front() );
    if ( byte < 0x80 )
        return byte >= 0x20 && byte < 0x7F ? PrintablePiece{ 1, 1, false } : escapedByte;
    if ( !utf8.holds() )
        return escapedByte;
    wchar_t character = 0;
    const std::size_t bytes = firstCharacter( text, character );
    if ( bytes == 0 )
        return escapedByte;
    const int columns = ::wcwidth( character );
    return columns > 0 ? PrintablePiece{ bytes, static_cast<std::size_t>( columns ), false } : escapedByte;
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
    const std::size_t leftOut = line.size() - shownInFront - shownBehind;
    return std::string( line.substr( 0, shownInFront ) ) + "[... " + std::to_string( leftOut ) +
           " characters left out ...]" + std::string( line.substr( line.size() - shownBehind ) );
}

std::string wellFormed( std::string_view text ) {
    const Utf8Scope utf8;
    std::string out;
    while ( !text.empty() ) {
        wchar_t ignored = 0;
        const bool isAscii = static_cast<unsigned char>( text.front() ) < 0x80;
        const std::size_t bytes = isAscii ? 1 : utf8.holds() ? firstCharacter( text, ignored ) : 0;
        if ( bytes == 0 )
            appendHex( out, "\\x", text.front() );
        else
            out.append( text.substr( 0, bytes ) );
        text.remove_prefix( std::max<std::size_t>( bytes, 1 ) );
    }
    return out;
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
