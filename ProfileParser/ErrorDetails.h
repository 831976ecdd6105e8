#pragma once

#include "ProfileStore/Export.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace Corvid {

/// What is known of an error beside its record in the store: for tools that sort errors or show them in their
/// source. A value.
struct ErrorDetails {
    /// The code of the error's text; empty while there is no error.
    std::string_view code;

    /// Whether the numbers below tell a place: they do for errors that have a line and a position. They count
    /// bytes of the text of the error's file, and are at most its size.
    bool hasPlace = false;
    std::size_t place = 0; ///< where the error was found: the record's line and position
    std::size_t begin = 0; ///< where that begins which is wrong; often before the place
    std::size_t end = 0;   ///< behind its last byte; equal to `begin` at the end of a line or of the file

    /// How an include file in error, or that cannot be read, came to be asked for. Without matches, but with
    /// a line, what cannot be read are the configured paths that stand in for it.
    std::uint32_t includeLine = 0;  ///< of the agent file, from 1; else 0
    std::string includePattern;     ///< as it is given there
    std::size_t includeMatch = 0;   ///< of the include file among those that match, from 1
    std::size_t includeMatches = 0; ///< how many files match
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
