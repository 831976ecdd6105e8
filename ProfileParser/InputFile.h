#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Corvid {

/// A file's whole content.
struct InputFile {
    std::unique_ptr<char[]> data; ///< followed by a NUL that is not part of it
    std::size_t size = 0;
};

/// Reads a regular file. Directories, FIFOs, sockets and devices are not read and never waited for.
/// @return nothing when it cannot be opened or read, is no regular file, is larger than maxSize bytes, or
/// changes
///     while it is read.
[[nodiscard]] std::optional<InputFile> readInputFile( const std::string& fileName, std::size_t maxSize );

/// A text in place of a file's.
/// @return nothing when it is larger than maxSize bytes.
[[nodiscard]] std::optional<InputFile> givenInput( std::string_view text, std::size_t maxSize );

} // namespace Corvid
