#include "ProfileDocument/TextSink.h"

#include <charconv>

namespace Corvid {

void TextSink::appendNumber( std::int64_t number ) {
    char digits[20];
    const auto end = std::to_chars( digits, digits + sizeof digits, number ).ptr;
    append( std::string_view( digits, static_cast<std::size_t>( end - digits ) ) );
}

void TextInMemory::appendToFull( std::string_view text ) {
    constexpr std::size_t roomAtFirst = 1024;
    const std::size_t before = size();
    text_.resize( std::max( 2 * before + roomAtFirst, before + text.size() ) );
    bufferIs( text_.data() + before, text_.data() + text_.size() );
    append( text );
}

} // namespace Corvid
