#pragma once

// How the generated parser gets at its tokens: inline from the window, or the library's way when it has none.
// For the generated parser only, behind its own header.

#include "ProfileParser/TokenWindow.h"

namespace Corvid {

inline pANTLR3_COMMON_TOKEN lookAhead( mountProfileParser_Ctx_struct* ctx, int k ) {
    if ( ctx->window ) [[likely]] {
        switch ( k ) {
        case 1:
            return ctx->window->current();
        case -1:
            return ctx->window->previous();
        default:
            return ctx->window->token( k );
        }
    }
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    return tokens->_LT( tokens, k );
}

inline ANTLR3_UINT32 tokenType( mountProfileParser_Ctx_struct* ctx, int k ) {
    if ( ctx->window ) [[likely]]
        return lookAhead( ctx, k )->type;
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
