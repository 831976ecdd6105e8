#include "ProfileDocument/JsonWriter.h"

#include <array>

namespace Corvid {

namespace {

/// Which bytes cannot stand for themselves inside a JSON text.
constexpr auto mustBeEscaped = [] {
    std::array<bool, 256> table{};
    for ( unsigned byte = 0; byte < table.size(); ++byte )
        table[byte] = byte < 0x20 || byte >= 0x7F || byte == '"' || byte == '\\';
    return table;
}();

} // namespace

void JsonWriter::text( std::string_view text ) {
    static constexpr char digits[] = "0123456789ABCDEF";
    out_.append( '"' );
    std::size_t done = 0;
    for ( std::size_t at = 0; at < text.size(); ++at ) {
        const auto byte = static_cast<unsigned char>( text[at] );
        if ( !mustBeEscaped[byte] )
            continue;
        out_.append( text.substr( done, at - done ) );
        done = at + 1;
        const char simple[] = { '\\', text[at] };
        const char coded[] = { '\\', 'u', '0', '0', digits[byte >> 4], digits[byte & 0xF] };
        const bool isSimple = byte == '"' || byte == '\\';
        out_.append( isSimple ? std::string_view( simple, 2 ) : std::string_view( coded, 6 ) );
    }
    out_.append( text.substr( done ) );
    out_.append( '"' );
}

} // namespace Corvid
