#pragma once

#include "Kiv/String8.h"

namespace Kiv {

/// The key of an entity within its parent: an agent's name, a mount group's name. A text like any other; the
/// type only tells keys from other texts.
class KIV_API Name : public String8 {
  public:
    Name() noexcept = default;
    /// A copy of a text, only when asked for.
    explicit Name( String8 text ) noexcept : String8( std::move( text ) ) {}
    /// All bytes of the text.
    explicit Name( std::string_view text ) : String8( text ) {}
    /// All bytes of the text.
    explicit Name( const std::string& text ) : String8( text ) {}
    /// The bytes before the first NUL. @param text not null.
    explicit Name( const char* text ) : String8( text ) {}
};

} // namespace Kiv

template <>
struct std::hash<Kiv::Name> : std::hash<Kiv::String8> {};
