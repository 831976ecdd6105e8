#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// The texts of error descriptions, as data. They are output that users' scripts compare: misspellings,
/// missing and odd blanks are kept.
namespace Corvid::ErrorWording {

/// Kinds of errors, by the parser library's numbers.
enum Kind : std::uint32_t {
    recognitionError = 1,
    mismatchedToken = 2,
    noViableAlternative = 3,
    mismatchedSet = 4,
    earlyExit = 5,
    failedPredicate = 6,
    unwantedToken = 9,
    missingToken = 10,
};

/// How a parser error of one kind begins.
struct KindMessage {
    std::uint32_t kind;
    std::string_view beforeTokenName;   ///< followed by the expected token's name
    std::string_view withoutTokenNames; ///< the whole message where there is no table of token names
};
[[nodiscard]] std::span<const KindMessage> kindMessages();

/// What a rule adds to a parser error of one kind.
struct RuleHint {
    std::int32_t rule;
    std::uint32_t kind;
    std::string_view text;
};
[[nodiscard]] std::span<const RuleHint> ruleHints();
/// The hint of that rule and kind, or an empty text.
[[nodiscard]] std::string_view ruleHint( std::int32_t rule, std::uint32_t kind );

inline constexpr std::string_view endOfInputName = "<EOF>";
inline constexpr std::string_view syntaxErrorWithoutMessage = " Syntax error...";
inline constexpr std::string_view syntaxError = "Syntax error.";

inline constexpr std::string_view agentTitlePrefix = " In agent title, ";
inline constexpr std::string_view includeFilePrefix = " In include file, ";
inline constexpr std::string_view mountGroupPrefix = " In mount group '";
inline constexpr std::string_view mountGroupPrefixEnd = "' , ";

inline constexpr std::string_view nearToken = " near '";
inline constexpr std::string_view nearTokenEnd = "', ";
inline constexpr std::string_view atEndOfInput = " at <EOF>, ";

inline constexpr std::string_view unrecognizedCharacter = "Unrecongnized character "; // sic
inline constexpr std::string_view incorrectNumber = "Incorrect number ";
inline constexpr std::string_view unexpectedCharacter = "Unexpected character ";
inline constexpr std::string_view nearEndOfFile = ", near EOF \n";
inline constexpr std::string_view nearCharacter = ", near '";
inline constexpr std::string_view nearCharacterEnd = "'\n";

inline constexpr std::string_view newlineAsShown = "\\n";

} // namespace Corvid::ErrorWording
