#pragma once

#include "ProfileStore/RecognitionError.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvid::Cli {

/// A place in a file's text.
struct SourcePlace {
    std::size_t line;       ///< from 1
    std::string_view text;  ///< the line without its line end
    std::size_t byteOffset; ///< within the line, at most its size
};

/// Where an error lies in the text of its file. The parser library numbers the line end that is appended to
/// every file, and the end of input, as if they stood on the first two lines; here they stand behind the
/// file's last text.
/// @param error has a place. @param content is the text of `error.placeFileName()`.
[[nodiscard]] SourcePlace placeOf( const RecognitionError& error, std::string_view content );

/// Two lines: the source line, and a caret under the place. A long line is cut around the place; tabs are
/// blanks; bytes that are not printable are shown as `\xNN`.
[[nodiscard]] std::string excerptAt( const SourcePlace& place, bool coloured );

/// The excerpt for an error; empty when it has no place or its file cannot be read any more.
[[nodiscard]] std::string sourceExcerpt( const RecognitionError& error, bool coloured );

} // namespace Corvid::Cli
