#include "model/ModelTokens.h"

#include <iterator>

namespace Model {

namespace {

// clang-format off
constexpr const char* names[] = {
    "<invalid>", "<EOR>", "<DOWN>", "<UP>", "A", "AGENTNAME",
    "ALIAS", "AND", "ASTERISK", "B", "C", "CLOSEPAREN",
    "COLON", "COMMA", "CONDITION", "CONDITIONBLOCKER", "D", "DOLLAR",
    "DOT", "DOUBLECOLON", "E", "EQUAL", "F", "FLOAT",
    "G", "H", "HEX", "HYBRIDMOUNT", "HYPHEN", "I",
    "INCLUDE", "INT", "J", "K", "L", "LIDENT",
    "LINECONT", "LINE_COMMENT", "LOWMOUNTPRIO", "M", "MOUNTFILTER", "MOUNTGROUP",
    "N", "NEWLN", "NODEFAULTMOUNTGROUP", "O", "OP", "OPENPAREN",
    "P", "PERCENTAGE", "Q", "QSNMARK", "R", "ROOTFLAGS",
    "S", "SLASH", "STRING", "SUBAGENT", "T", "U",
    "UIDENT", "V", "W", "WS", "X", "Y",
    "Z" };
// clang-format on
static_assert( std::size( names ) == typeCount );

} // namespace

const char* typeName( Type type ) {
    return type == END ? "<EOF>" : names[type];
}

bool isKeyword( Type type ) {
    return type == AGENTNAME || type == ALIAS || type == CONDITION || type == CONDITIONBLOCKER ||
           type == INCLUDE || type == MOUNTFILTER || type == MOUNTGROUP || type == ROOTFLAGS ||
           type == SUBAGENT;
}

bool isIdentifier( Type type ) {
    return isKeyword( type ) || type == LIDENT || type == UIDENT;
}

bool isNamePart( Type type ) {
    return isIdentifier( type ) || type == HYPHEN || type == INT;
}

bool startsPathUnit( Type type ) {
    return isNamePart( type ) || type == DOUBLECOLON || type == PERCENTAGE;
}

bool startsMountLine( Type type ) {
    return startsPathUnit( type ) || type == SLASH || type == STRING;
}

bool continuesPath( Type type ) {
    return startsPathUnit( type ) || type == COMMA || type == QSNMARK || type == SLASH;
}

bool isProperty( Type type ) {
    return type == HYBRIDMOUNT || type == LOWMOUNTPRIO || type == NODEFAULTMOUNTGROUP;
}

} // namespace Model
