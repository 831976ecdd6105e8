#include "Kiv/String8.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <ostream>
#include <stdexcept>

namespace Kiv {

constinit String8::Datum String8::emptyDatum{ RefCount( 1 ), 0, { '\0' } };

String8::Datum* String8::newDatum( std::string_view text ) {
    if ( text.empty() )
        return &emptyDatum;
    if ( text.size() > maxSize )
        throw std::length_error( "Kiv::String8: text of " + std::to_string( text.size() ) +
                                 " bytes is too long" );
    void* memory = ::operator new( std::max( sizeof( Datum ), offsetof( Datum, text ) + text.size() + 1 ) );
    auto* datum = ::new ( memory ) Datum{ RefCount( 1 ), static_cast<std::uint32_t>( text.size() ), {} };
    char* bytes = static_cast<char*>( memory ) + offsetof( Datum, text );
    std::memcpy( bytes, text.data(), text.size() );
    bytes[text.size()] = '\0';
    return datum;
}

void String8::freeDatum( Datum* datum ) noexcept {
    ::operator delete( datum );
}

std::ostream& operator<<( std::ostream& out, const String8& text ) {
    return out << text.view();
}

} // namespace Kiv
