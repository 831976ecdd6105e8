#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

/// Whether two texts are equal but for the case of their ASCII letters.
[[nodiscard]] bool sameLetters( std::string_view one, std::string_view other );

/// The candidate that a misspelt word was probably meant to be: one that takes few changes (a letter put in,
/// left out, replaced, or two neighbours exchanged; case does not count), the first of those that take
/// fewest. Empty when there is none.
[[nodiscard]] std::string nearest( std::string_view word, const std::vector<std::string>& candidates );

/// "did you mean 'NEAREST'?", or an empty text.
[[nodiscard]] std::string didYouMean( std::string_view word, const std::vector<std::string>& candidates );

} // namespace Corvid::Cli
