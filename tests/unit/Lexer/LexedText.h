#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace CorvidTest {

struct LexedToken {
    std::uint32_t type;
    std::string name;
    std::string text;
    std::uint32_t line;
    std::int32_t position;
    std::string stream; ///< name of the stream that it was read from
};

struct LexerError {
    std::uint32_t kind;
    std::string message;
    std::uint32_t decision; ///< of a no-viable-alternative only
    std::uint32_t state;    ///< of a no-viable-alternative only
    std::uint32_t line;
    std::int32_t position;
    std::size_t offset; ///< of the offending character in its stream
    std::string stream; ///< name of that stream
};

/// All that the generated lexer makes of a file with this text: wired as for a parse, with the appended line
/// end.
struct LexedText {
    explicit LexedText( std::string_view text );

    std::vector<LexedToken> tokens; ///< without the end of input
    std::vector<LexerError> errors;
    bool keepsOlderExceptions = false; ///< behind the newest one, after any error
    std::size_t errorCount = 0;        ///< as the recogniser counts
    std::string description = {};      ///< of the first error
    std::uint32_t endLine = 0;
    std::int32_t endPosition = 0;

    /// The names of the tokens up to the end of input; an error, in its place, as "!" and its kind: "INT !3
    /// NEWLN EOF".
    std::string names = {};
    /// The same with each token's text, in square brackets: "INT[12] !3 NEWLN[\n] EOF".
    std::string dump = {};
};

/// Expects that the parser gets the same tokens at the same places, and the same first error, from its token
/// window.
void expectSameInTheWindow( std::string_view text, const LexedText& lexed );

/// The text with every byte that is not printable ASCII, and the backslash, as \n, \r, \\ or \xNN.
std::string escaped( std::string_view text );

} // namespace CorvidTest
