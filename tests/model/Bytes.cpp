#include "model/Bytes.h"

namespace Model {

namespace {

void appendEscaped( std::string& out, char character ) {
    const auto byte = static_cast<unsigned char>( character );
    if ( character == '\n' )
        out += "\\n";
    else if ( character == '\r' )
        out += "\\r";
    else if ( character == '\t' )
        out += "\\t";
    else if ( character == '"' || character == '\\' )
        ( out += '\\' ) += character;
    else if ( byte >= 0x20 && byte < 0x7F )
        out += character;
    else
        out += escapedByte( character );
}

} // namespace

std::string escaped( std::string_view text ) {
    std::string out = "\"";
    for ( const char character : text )
        appendEscaped( out, character );
    return out += '"';
}

std::string escapedByte( char byte ) {
    static constexpr char digits[] = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>( byte );
    return { '\\', 'x', digits[value >> 4], digits[value & 15] };
}

} // namespace Model
