#pragma once

// What the actions of the grammar call beside the handler. The C++ headers come first: the parser library's
// and the generated headers define macros with short names.
#include "ProfileParser/MountProfileHdlr.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <antlr3.h>

struct mountProfileParser_Ctx_struct;

namespace Corvid {

class TokenWindow;

/// Which part of a file the parser is in: the prefix of an error's description.
enum Section : ANTLR3_INT32 { topLevel = -1, inAgentTitle = 0, inIncludeFile = 1, inMountGroup = 2 };

/// The characters of a token as they stand in the file, NULs included. Valid as long as the file's text.
[[nodiscard]] std::string_view tokenText( pANTLR3_COMMON_TOKEN token );

/// Sets text to the texts of the tokens from start to stop, joined with nothing between them. White space,
/// comments and characters that no token begins with never became tokens, so they are not part of it.
void setRuleText( std::string& text, mountProfileParser_Ctx_struct* ctx, pANTLR3_COMMON_TOKEN start,
                  pANTLR3_COMMON_TOKEN stop );
/// The same as a text of its own.
[[nodiscard]] std::string ruleText( mountProfileParser_Ctx_struct* ctx, pANTLR3_COMMON_TOKEN start,
                                    pANTLR3_COMMON_TOKEN stop );

/// The texts of the mount line being read; kept from line to line, because their memory is.
struct MountLine {
    std::string path;
    std::string type;
    std::string flags;
    std::string filter;

    void clear() noexcept {
        path.clear();
        filter.clear(); // the others are set on every line
    }
};

/// Appends a STRING token's text less its first and its last character, the quotes.
void appendUnquoted( pANTLR3_COMMON_TOKEN string, std::string& text );

/// The number that an INT token spells, cut to 32 bits. (Numbers above a long's range count as its maximum.)
[[nodiscard]] ANTLR3_UINT32 decimalNumber( pANTLR3_COMMON_TOKEN number );

/// Where a text stands in the statement that is being read: the last run of matched tokens whose joined texts
/// are that text, from the first byte to the last. Empty when there is none.
/// @param behind the joined texts of the tokens that are not looked at because they stand behind it.
[[nodiscard]] std::string_view lastText( mountProfileParser_Ctx_struct* ctx, std::string_view text,
                                         std::string_view behind = {} );

/// The text of the token that was matched last.
[[nodiscard]] std::string_view lastTokenText( mountProfileParser_Ctx_struct* ctx );

/// The line of the token that was matched last, from 1.
[[nodiscard]] std::uint32_t lastTokenLine( mountProfileParser_Ctx_struct* ctx );
/// The line on which the statement of that token begins, from 1. Takes a time that grows with the statement.
[[nodiscard]] std::uint32_t statementLine( mountProfileParser_Ctx_struct* ctx );

/// Raises a syntax error that the grammar finds by itself, at the current token.
/// @param message a literal: it must outlive the parser.
void raiseRecognitionError( mountProfileParser_Ctx_struct* ctx, const char* message );

/// Raises an error that the handler has found, at the current token. Whoever describes it takes the message
/// from the handler.
void raiseHandlerException( mountProfileParser_Ctx_struct* ctx );

/// Frees all exceptions of a recogniser but the newest, the only one that is ever looked at. The library
/// keeps them all until the recogniser goes: more than 100 bytes for every byte of a file that is none of
/// this language.
void freeOlderExceptions( pANTLR3_BASE_RECOGNIZER recognizer );

/// Reports all lexer errors that are left in the parser's file: they come before the errors of parser and
/// handler. To be called before the file's validity is looked at while it is parsed.
void finishLexing( mountProfileParser_Ctx_struct* ctx );

} // namespace Corvid
