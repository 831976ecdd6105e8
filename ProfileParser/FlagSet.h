#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace Corvid {

/// The flags that a mount can have; case matters.
inline constexpr std::string_view validFlagChars = "rwicfCDSBNO";

/// The position of the first character that is no flag, or npos.
[[nodiscard]] inline std::size_t firstIllegalFlag( std::string_view flags ) noexcept {
    static constexpr auto isFlag = [] {
        std::array<bool, 256> table{};
        for ( const char flag : validFlagChars )
            table[static_cast<unsigned char>( flag )] = true;
        return table;
    }();
    for ( std::size_t i = 0; i < flags.size(); ++i )
        if ( !isFlag[static_cast<unsigned char>( flags[i] )] )
            return i;
    return std::string_view::npos;
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
