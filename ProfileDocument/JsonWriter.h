#pragma once

#include "ProfileDocument/TextSink.h"

#include <string_view>

namespace Corvid {

/// Writes JSON piece by piece, straight through. Texts become ASCII: a byte of 0x80 and above, and a control
/// byte, is written as the escape of its value, so no byte is lost.
class JsonWriter {
  public:
    explicit JsonWriter( TextSink& out ) : out_( out ) {}

    void append( std::string_view text ) { out_.append( text ); }
    void append( char c ) { out_.append( c ); }
    void number( std::int64_t number ) { out_.appendNumber( number ); }
    void text( std::string_view text );
    void value( std::string_view value ) { text( value ); }
    void value( bool value ) { out_.append( value ? "true" : "false" ); }

    /// A key, with all that stands before it.
    void key( std::string_view before, std::string_view key ) {
        out_.append( before );
        text( key );
        out_.append( ": " );
    }
    template <class Range, class WriteItem>
    void list( char open, char close, std::string_view separator, const Range& items, WriteItem writeItem ) {
        out_.append( open );
        bool first = true;
        for ( const auto& item : items ) {
            if ( !first )
                out_.append( separator );
            first = false;
            writeItem( item );
        }
        out_.append( close );
    }
    template <class Range>
    void texts( const Range& items ) {
        list( '[', ']', ", ", items, [this]( const auto& item ) { text( item ); } );
    }
    template <class Map>
    void map( const Map& items ) {
        list( '{', '}', ", ", items, [this]( const auto& item ) {
            key( "", item.first );
            value( item.second );
        } );
    }

  private:
    TextSink& out_;
};

} // namespace Corvid
