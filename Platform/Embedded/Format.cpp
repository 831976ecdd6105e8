#include "Kiv/Format.h"

#include <cstdarg>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace Kiv {

namespace {

int formattedSize( const char* pattern, std::va_list arguments ) {
    std::va_list copy;
    va_copy( copy, arguments );
    const int size = std::vsnprintf( nullptr, 0, pattern, copy );
    va_end( copy );
    return size;
}

} // namespace

String8 format( const char* pattern, ... ) {
    std::va_list arguments;
    va_start( arguments, pattern );
    const int size = formattedSize( pattern, arguments );
    if ( size < 0 ) {
        va_end( arguments );
        throw std::invalid_argument( std::string( "Kiv::format: bad format: " ) + pattern );
    }
    std::string text( static_cast<std::size_t>( size ), '\0' );
    std::vsnprintf( text.data(), text.size() + 1, pattern, arguments );
    va_end( arguments );
    return text;
}

} // namespace Kiv
