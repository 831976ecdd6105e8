#pragma once

// How the generated parser gets at its tokens: inline from the window, or the library's way when it has none.
// For the generated parser only, behind its own header.

#include "ProfileParser/TokenWindow.h"

namespace Corvid {

inline pANTLR3_COMMON_TOKEN lookAhead( mountProfileParser_Ctx_struct* ctx, int k ) {
    if ( ctx->window ) [[likely]]
        return ctx->window->token( k );
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    return tokens->_LT( tokens, k );
}

inline ANTLR3_UINT32 tokenType( mountProfileParser_Ctx_struct* ctx, int k ) {
    if ( ctx->window ) [[likely]]
        return ctx->window->type( k );
    const pANTLR3_INT_STREAM tokens = ctx->pParser->tstream->istream;
    return tokens->_LA( tokens, k );
}

inline void consume( mountProfileParser_Ctx_struct* ctx ) {
    if ( ctx->window ) [[likely]]
        return ctx->window->consume();
    const pANTLR3_INT_STREAM tokens = ctx->pParser->tstream->istream;
    tokens->consume( tokens );
}

/// As the library's `match`, which takes over when the token is not the expected one.
inline void* match( mountProfileParser_Ctx_struct* ctx, ANTLR3_UINT32 type, pANTLR3_BITSET_LIST follow ) {
    if ( ctx->window ) [[likely]]
        if ( const pANTLR3_COMMON_TOKEN token = ctx->window->matched( type ) ) [[likely]] {
            ctx->state->errorRecovery = ANTLR3_FALSE;
            ctx->state->failed = ANTLR3_FALSE;
            if ( type == NEWLN && !ctx->state->error ) // an error still names its token
                ctx->window->lineIsRead();
            return token;
        }
    const pANTLR3_BASE_RECOGNIZER recognizer = ctx->pParser->rec;
    return recognizer->match( recognizer, type, follow );
}

/// The stack of follow sets tells a missing token from a wrong one. Its elements are static data: nothing to
/// free.
inline void pushFollow( mountProfileParser_Ctx_struct* ctx, pANTLR3_BITSET_LIST follow ) {
    const pANTLR3_STACK stack = ctx->state->following;
    ANTLR3_VECTOR& vector = *stack->vector;
    if ( vector.count == vector.elementsSize ) [[unlikely]] {
        stack->push( stack, follow, nullptr );
        return;
    }
    vector.elements[vector.count] = { follow, nullptr };
    ++vector.count;
}

inline void popFollow( mountProfileParser_Ctx_struct* ctx ) {
    --ctx->state->following->vector->count;
}

} // namespace Corvid
