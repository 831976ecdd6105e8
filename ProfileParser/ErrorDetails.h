#pragma once

#include "ProfileStore/Export.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace Corvid {

/// What is known of an error beside its record in the store: for tools that sort errors or show them in their
/// source. A value.
struct ErrorDetails {
    /// The code of the error's text; empty while there is no error.
    std::string_view code;
    /// What is wrong, in bytes from the beginning of the text of the error's file; `end` lies behind the last
    /// one. Empty for a place between two characters, such as the end of the file.
    std::size_t begin = 0;
    std::size_t end = 0; ///< see `begin`
    /// Whether there is such a range. Errors that have a line and a position have one.
    bool hasRange = false;
};

/// The code of the errors whose text begins in one way. It never changes.
struct ErrorCode {
    std::string_view code;      ///< "MP" and three digits
    std::string_view beginning; ///< of the texts that have the code
};
/// All codes but `unknownErrorCode`, in the order in which they are looked for: a text that begins with two
/// of them belongs to the first.
[[nodiscard]] CORVID_API std::span<const ErrorCode> errorCodes();

/// The code of a text that begins in none of these ways: one of the host program's own.
inline constexpr std::string_view unknownErrorCode = "MP000";

/// The code for what an error's description says behind the part of the file and the text at its place.
/// Blanks in front do not count.
[[nodiscard]] CORVID_API std::string_view errorCodeOf( std::string_view message );

} // namespace Corvid
