#pragma once

// How the generated parser gets at its tokens: inline from the window, or the library's way when it has none.
// For the generated parser only, behind its own header.

#include "ProfileParser/TokenWindow.h"

namespace Corvid {

/// The current token (1) or the one before it (−1), to be remembered as the first or the last one of the rule
/// being read. Its callers may look at it as long as they do not call that rule from the same place again.
inline pANTLR3_COMMON_TOKEN ruleBoundary( mountProfileParser_Ctx_struct* ctx, int k ) {
    if ( ctx->window ) [[likely]] {
        const pANTLR3_COMMON_TOKEN token = k == 1 ? ctx->window->current() : ctx->window->previous();
        if ( !ctx->window->isInLongLine() ) [[likely]]
            return token;
        const ANTLR3_UINT32 depth = ctx->followCount;
        const void* const caller =
            depth == 0 ? nullptr : ctx->follows[depth - 1]; // every call has its own set
        return ctx->window->kept( *token, { depth, caller, k } );
    }
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    return tokens->_LT( tokens, k );
}

inline ANTLR3_UINT32 tokenType( mountProfileParser_Ctx_struct* ctx, int k ) {
    if ( ctx->window ) [[likely]]
        return k == 1 ? ctx->window->current()->type : ctx->window->token( k )->type;
    const pANTLR3_INT_STREAM tokens = ctx->pParser->tstream->istream;
    return tokens->_LA( tokens, k );
}

inline void consume( mountProfileParser_Ctx_struct* ctx ) {
    if ( ctx->window ) [[likely]]
        return ctx->window->consume();
    const pANTLR3_INT_STREAM tokens = ctx->pParser->tstream->istream;
    tokens->consume( tokens );
}

/// As the library's `match`, which takes over when the token is not the expected one. (It also takes back two
/// marks of recovery and backtracking, which nothing here ever sets.)
/// @return the token; only to be looked at before the next one is matched.
inline void* match( mountProfileParser_Ctx_struct* ctx, ANTLR3_UINT32 type, pANTLR3_BITSET_LIST follow ) {
    if ( ctx->window ) [[likely]] {
        const pANTLR3_COMMON_TOKEN token = ctx->window->current();
        if ( token->type == type ) [[likely]] {
            if ( type != ANTLR3_TOKEN_EOF )
                ctx->window->step( type == NEWLN && !ctx->state->error ); // an error still names its token
            return token;
        }
    }
    const pANTLR3_BASE_RECOGNIZER recognizer = ctx->pParser->rec;
    return recognizer->match( recognizer, type, follow );
}

/// The stack of follow sets tells a missing token from a wrong one. The library looks at its own only then
/// (`ErrorDescription.cpp` fills it), so the rules keep theirs within shorter reach. No rule calls itself:
/// the stack never holds more than there are rules.
inline void pushFollow( mountProfileParser_Ctx_struct* ctx, pANTLR3_BITSET_LIST follow ) {
    ctx->follows[ctx->followCount++] = follow;
}

inline void popFollow( mountProfileParser_Ctx_struct* ctx ) {
    --ctx->followCount;
}

} // namespace Corvid
