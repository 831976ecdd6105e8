#pragma once

#include "ProfileStore/Export.h"
#include "ProfileStore/RecognitionError.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace Corvid {

/// One token as the parser sees it.
struct ListedToken {
    std::uint32_t type; ///< its number in the table of token names
    const char* name;   ///< its name there
    std::uint32_t line; ///< from 1
    std::int32_t
        charPositionInLine; ///< as the parser library counts: from 0, but from −1 on a file's first line
    std::string_view text;  ///< valid during the call only
};

/// Hands every token of a file to a function, in order: those of the file, then the line end that is appended
/// to every file; not the end of input. Lexing goes on after an error, as it does before a parse.
/// @return the first error, or one with an empty description.
/// @throws std::runtime_error when the file cannot be opened, like MountProfileHdlr::parseFile.
CORVID_API RecognitionError listTokens( const std::string& fileName,
                                        const std::function<void( const ListedToken& )>& receive );

} // namespace Corvid
