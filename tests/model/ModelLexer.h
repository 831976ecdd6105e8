#pragma once

#include "model/ModelTokens.h"

#include <optional>
#include <string_view>
#include <vector>

namespace Model {

struct LexError {
    std::uint32_t kind = 0;
    std::uint32_t line = 0;
    std::int32_t position = 0;
    std::string description;
    std::string sourceLine;
};

struct Lexed {
    std::vector<Token> tokens; ///< with the line end that is appended to every file, without the end of input
    std::optional<LexError> firstError;
};

[[nodiscard]] Lexed lex( std::string_view text );

} // namespace Model
