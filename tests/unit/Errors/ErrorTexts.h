#pragma once

#include <string>
#include <vector>

namespace CorvidTest {

/// A text that can be part of an error's description.
struct ErrorText {
    std::string text;
    std::uint32_t kind; ///< the only kind of errors that it is part of; 0 for any
};

/// All of them: the wording tables, the other constants of the wording, and the literals in what the
/// handler's checks and the grammar's own checks report, read from the sources so that a new message cannot
/// be forgotten. Fragments of one or two characters are left out.
[[nodiscard]] std::vector<ErrorText> allErrorTexts();

/// Texts that no file can bring out, each with the reason.
struct UnreachableText {
    ErrorText text;
    const char* reason;
};
[[nodiscard]] std::vector<UnreachableText> unreachableErrorTexts();

/// The string literals in C++ source text, unescaped, neighbours joined; comments and preprocessor lines are
/// skipped.
[[nodiscard]] std::vector<std::string> stringLiterals( const std::string& source );

} // namespace CorvidTest
