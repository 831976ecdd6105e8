#include "Cli/ReportWriter.h"

#include "Cli/PrintableText.h"

namespace Corvid::Cli {

void ReportWriter::tool( std::string_view before ) {
    member( before, "name", "mountprofile" );
    member( ",", "version", MOUNTPROFILE_VERSION );
}

void ReportWriter::text( std::string_view bytes ) {
    append( '"' );
    while ( !bytes.empty() ) {
        const FirstCharacter first = firstCharacter( bytes );
        const std::string_view itself = bytes.substr( 0, first.bytes );
        if ( first.code )
            character( *first.code );
        else
            for ( const char c : printable( itself ) )
                character( static_cast<unsigned char>( c ) );
        bytes.remove_prefix( itself.size() );
    }
    append( '"' );
}

void ReportWriter::character( char32_t code ) {
    static constexpr std::u32string_view named = U"\"\\\b\f\n\r\t";
    static constexpr std::string_view names = "\"\\bfnrt";
    constexpr char32_t firstOfTwoUnits = 0x10000;
    if ( const auto at = named.find( code ); at != std::u32string_view::npos ) {
        append( '\\' );
        append( names[at] );
    } else if ( code >= 0x20 && code < 0x7F ) {
        append( static_cast<char>( code ) );
    } else if ( code < firstOfTwoUnits ) {
        unit( code );
    } else {
        unit( 0xD800 + ( ( code - firstOfTwoUnits ) >> 10 ) );
        unit( 0xDC00 + ( code & 0x3FF ) );
    }
}

void ReportWriter::unit( char32_t unit ) {
    static constexpr char digits[] = "0123456789abcdef";
    append( "\\u" );
    for ( const int shift : { 12, 8, 4, 0 } )
        append( digits[unit >> shift & 0xF] );
}

} // namespace Corvid::Cli
