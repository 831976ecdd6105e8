#pragma once

#include "ProfileParser/GrammarSupport.h"

struct mountProfileParser_Ctx_struct;

namespace Corvid {

// The hooks that describe errors of lexer and parser in the handler's `errorDesc`, in this system's own
// words. Only the first error of a handler is described. No error is ever repaired, and the parser library
// prints nothing.

/// Called for every lexer error. @param recognizer the lexer's.
void reportLexerError( pANTLR3_BASE_RECOGNIZER recognizer );
void setLexerErrorDesc( pANTLR3_BASE_RECOGNIZER recognizer, pANTLR3_UINT8* tokenNames );

/// Called by every rule that fails, innermost first. @param ruleNumber the rule's place in the grammar, from
/// 0.
void reportParserError( mountProfileParser_Ctx_struct* ctx, ANTLR3_INT32 ruleNumber );
void setParserErrorDesc( mountProfileParser_Ctx_struct* ctx, pANTLR3_UINT8* tokenNames,
                         ANTLR3_INT32 ruleNumber );

/// Raises the exception for a token that is not the expected one: unwanted, missing or just mismatched.
void mismatch( pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 expectedType, pANTLR3_BITSET_LIST follow );
/// In place of the library's repairs: a token that is not there stays missing, the rule fails. @return null
void* recoverFromMismatchedToken( pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 expectedType,
                                  pANTLR3_BITSET_LIST follow );
/// Code from some versions of the tool asks for a repair after a mismatched set, and the library's would
/// print its own text, clear the error and let an invalid file pass as valid. @return null
void* recoverFromMismatchedSet( pANTLR3_BASE_RECOGNIZER recognizer, pANTLR3_BITSET_LIST follow );

} // namespace Corvid
