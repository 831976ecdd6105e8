#pragma once

#include "ProfileDocument/JsonWriter.h"

#include <concepts>
#include <cstdint>
#include <string_view>

namespace Corvid::Cli {

/// Writes the JSON of reports, compact and in ASCII: nothing in it can control a terminal. Texts are UTF-8;
/// bytes that are not part of it become `\xNN`, as people are shown them.
class ReportWriter : JsonWriter {
  public:
    using JsonWriter::append;
    using JsonWriter::JsonWriter;
    using JsonWriter::list;

    /// A key, with all that stands before it.
    void key( std::string_view before, std::string_view key ) {
        append( before );
        text( key );
        append( ':' );
    }
    void member( std::string_view before, std::string_view name, std::string_view value ) {
        key( before, name );
        text( value );
    }
    void member( std::string_view before, std::string_view name, std::integral auto value ) {
        key( before, name );
        number( static_cast<std::int64_t>( value ) );
    }
    /// The program's name and its version.
    void tool( std::string_view before );

  private:
    void text( std::string_view bytes );
    void character( char32_t code );
    /// A unit of UTF-16, as an escape.
    void unit( char32_t unit );
};

} // namespace Corvid::Cli
