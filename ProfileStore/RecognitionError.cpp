#include "ProfileStore/RecognitionError.h"

#include <string>
#include <string_view>

namespace Corvid {

namespace {

void appendPrintable( std::string& out, std::string_view text ) {
    static constexpr char digits[] = "0123456789ABCDEF";
    for ( const char c : text ) {
        const auto byte = static_cast<unsigned char>( c );
        if ( c == '\n' )
            out += "\\n";
        else if ( byte >= 0x20 && byte < 0x7F )
            out += c;
        else
            out.append( { '\\', 'x', digits[byte >> 4], digits[byte & 0xF] } );
    }
}

std::string_view withoutBlanksAtEnds( std::string_view text ) {
    static constexpr std::string_view blanks = " \t\n\r\v\f";
    const auto first = text.find_first_not_of( blanks );
    if ( first == std::string_view::npos )
        return {};
    return text.substr( first, text.find_last_not_of( blanks ) - first + 1 );
}

} // namespace

Kiv::String8 RecognitionError::composeErrorDescMessage() const {
    std::string message;
    appendPrintable( message, placeFileName() );
    if ( hasPlace() ) {
        message += ':';
        message += std::to_string( line_ );
        message += ':';
        message += std::to_string( column() );
    }
    message += ": error: ";
    appendPrintable( message, withoutBlanksAtEnds( description_ ) );
    if ( !includeFileName_.empty() ) {
        message += " (included from ";
        appendPrintable( message, fileName_ );
        message += ")";
    }
    return message;
}

} // namespace Corvid
