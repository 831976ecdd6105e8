#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvid {

/// The flags that a mount can have; case matters.
inline constexpr std::string_view validFlagChars = "rwicfCDSBNO";

/// The position of the first character that is no flag, or npos.
[[nodiscard]] inline std::size_t firstIllegalFlag( std::string_view flags ) noexcept {
    return flags.find_first_not_of( validFlagChars );
}

/// The first flags, followed by those of the further ones that are not among them yet, in their order.
[[nodiscard]] inline std::string mergedFlags( std::string_view first, std::string_view further ) {
    std::string merged( first );
    for ( const char flag : further )
        if ( merged.find( flag ) == std::string::npos )
            merged += flag;
    return merged;
}

} // namespace Corvid
