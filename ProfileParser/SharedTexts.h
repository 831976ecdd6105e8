#pragma once

#include "Kiv/String8.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace Corvid {

/// Lets equal texts share one datum: a profile's mounts have few different types and flags. Remembers some
/// texts that were seen lately; a text that it has forgotten is just made anew.
class SharedTexts {
  public:
    /// A copy of the one that is remembered, if there is one.
    [[nodiscard]] Kiv::String8 of( std::string_view text ) {
        Kiv::String8& remembered = texts_[slotOf( text )];
        if ( remembered.view() != text )
            remembered = Kiv::String8( text );
        return remembered;
    }

  private:
    static constexpr std::size_t slots = 64;

    /// Cheap, and apart for what types and flags differ in: length, first, middle and last characters.
    [[nodiscard]] static std::size_t slotOf( std::string_view text ) noexcept {
        if ( text.empty() )
            return 0;
        const auto at = [&]( std::size_t i ) -> std::size_t { return static_cast<unsigned char>( text[i] ); };
        return ( text.size() * 7 + at( 0 ) * 31 + at( text.size() / 2 ) * 17 + at( text.size() - 1 ) * 5 ) %
               slots;
    }

    std::array<Kiv::String8, slots> texts_;
};

} // namespace Corvid
