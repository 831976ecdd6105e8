#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

/// The text of docs/errors.md, which was put into the program when it was built.
extern const std::string_view errorsPageText;

/// "MP" and three digits.
inline constexpr std::size_t errorCodeLength = 5;

/// What the page on errors tells about one code.
struct ErrorExplanation {
    std::string title;
    std::string body; ///< Markdown, without the heading
};

/// The codes that the page has sections for, in its order.
[[nodiscard]] std::vector<std::string> explainedCodes();

/// All codes that the page tells of, in ascending order: those, and those of texts that no file brings out.
[[nodiscard]] std::vector<std::string> knownCodes();

/// @return nothing when the page does not know the code.
[[nodiscard]] std::optional<ErrorExplanation> explanationOf( std::string_view code );

/// Such a body for people at a terminal: in place of a fenced block's fence a line that tells what it is, and
/// the block's lines indented.
[[nodiscard]] std::string readable( std::string_view markdown );

} // namespace Corvid::Cli
