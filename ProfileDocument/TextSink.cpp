#include "ProfileDocument/TextSink.h"

#include <charconv>

namespace Corvid {

void TextSink::appendNumber( std::int64_t number ) {
    char digits[20];
    const auto end = std::to_chars( digits, digits + sizeof digits, number ).ptr;
    append( std::string_view( digits, static_cast<std::size_t>( end - digits ) ) );
}

} // namespace Corvid
