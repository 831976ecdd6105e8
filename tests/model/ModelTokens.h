#pragma once

#include <cstdint>
#include <string>

namespace Model {

/// The tokens that a file can hold, by their numbers.
enum Type : std::uint32_t {
    AGENTNAME = 5,
    ALIAS = 6,
    AND = 7,
    ASTERISK = 8,
    CLOSEPAREN = 11,
    COLON = 12,
    COMMA = 13,
    CONDITION = 14,
    CONDITIONBLOCKER = 15,
    DOLLAR = 17,
    DOT = 18,
    DOUBLECOLON = 19,
    EQUAL = 21,
    FLOAT = 23,
    HEX = 26,
    HYBRIDMOUNT = 27,
    HYPHEN = 28,
    INCLUDE = 30,
    INT = 31,
    LIDENT = 35,
    LOWMOUNTPRIO = 38,
    MOUNTFILTER = 40,
    MOUNTGROUP = 41,
    NEWLN = 43,
    NODEFAULTMOUNTGROUP = 44,
    OP = 46,
    OPENPAREN = 47,
    PERCENTAGE = 49,
    QSNMARK = 51,
    ROOTFLAGS = 53,
    SLASH = 55,
    STRING = 56,
    SUBAGENT = 57,
    UIDENT = 60,
    END = 0xFFFFFFFF ///< the end of input
};

/// How many types there are, the end of input not counted: one more than the highest.
inline constexpr std::size_t typeCount = 67;

[[nodiscard]] const char* typeName( Type type );

struct Token {
    Type type = END;
    std::uint32_t line = 0;
    std::int32_t position = 0;
    std::string text;
};

/// The keywords that may stand in names too.
[[nodiscard]] bool isKeyword( Type type );
[[nodiscard]] bool isIdentifier( Type type );
/// What names of groups and filters consist of.
[[nodiscard]] bool isNamePart( Type type );
/// Whether a mount line can begin with it.
[[nodiscard]] bool startsMountLine( Type type );
/// Whether it can be the second token of a mount line.
[[nodiscard]] bool continuesPath( Type type );
[[nodiscard]] bool startsPathUnit( Type type );
[[nodiscard]] bool isProperty( Type type );

} // namespace Model
