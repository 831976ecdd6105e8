#include "model/Bytes.h"

namespace Model {

namespace {

void appendEscaped( std::string& out, char character ) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
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
        ( ( out += "\\x" ) += digits[byte >> 4] ) += digits[byte & 15];
}

} // namespace

std::string escaped( std::string_view text ) {
    std::string out = "\"";
    for ( const char character : text )
        appendEscaped( out, character );
    return out += '"';
}

} // namespace Model
