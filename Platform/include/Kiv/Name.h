#pragma once

#include "Kiv/String8.h"

namespace Kiv {

/// The key of an entity within its parent: an agent's name, a mount group's name. A text like any other; the
/// type only tells keys from other texts.
class KIV_API Name : public String8 {
  public:
    Name() noexcept = default;
    explicit Name( String8 text ) noexcept : String8( std::move( text ) ) {}
    explicit Name( std::string_view text ) : String8( text ) {}
    explicit Name( const std::string& text ) : String8( text ) {}
    explicit Name( const char* text ) : String8( text ) {}
};

} // namespace Kiv

template <>
struct std::hash<Kiv::Name> : std::hash<Kiv::String8> {};
