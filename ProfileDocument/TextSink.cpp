#include "ProfileDocument/TextSink.h"

#include <charconv>

namespace Corvid {

TextSink::TextSink( std::size_t capacity )
    : buffer_( std::make_unique_for_overwrite<char[]>( capacity ) ), next_( buffer_.get() ),
      end_( next_ + capacity ) {}

void TextSink::appendNumber( std::int64_t number ) {
    char digits[20];
    const auto end = std::to_chars( digits, digits + sizeof digits, number ).ptr;
    append( std::string_view( digits, static_cast<std::size_t>( end - digits ) ) );
}

void TextSink::flush() {
    receive( { buffer_.get(), next_ } );
    discardBuffered();
}

void TextSink::appendToFull( std::string_view text ) {
    flush();
    if ( text.size() > static_cast<std::size_t>( end_ - next_ ) )
        receive( text );
    else
        append( text );
}

} // namespace Corvid
