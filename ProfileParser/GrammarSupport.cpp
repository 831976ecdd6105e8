#include "ProfileParser/GrammarSupport.h"

#include "ProfileParser/TokenWindow.h"

#include <cstdlib>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

std::string_view tokenText( pANTLR3_COMMON_TOKEN token ) {
    // Both are addresses within the file's text; the second is the last character's.
    const auto* first = reinterpret_cast<const char*>( token->start );
    const auto* last = reinterpret_cast<const char*>( token->stop );
    return { first, static_cast<std::size_t>( last + 1 - first ) };
}

void setRuleText( std::string& text, mountProfileParser_Ctx_struct* ctx, pANTLR3_COMMON_TOKEN start,
                  pANTLR3_COMMON_TOKEN stop ) {
    if ( start->start == stop->start || ( ctx->window && ctx->window->areAdjacent( start, stop ) ) ) {
        text.assign( reinterpret_cast<const char*>( start->start ),
                     static_cast<std::size_t>( stop->stop + 1 - start->start ) );
        return;
    }
    text.clear();
    if ( ctx->window ) {
        ctx->window->appendTexts( text, start, stop );
        return;
    }
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    for ( ANTLR3_MARKER index = start->index; index <= stop->index; ++index )
        text += tokenText( tokens->get( tokens, static_cast<ANTLR3_UINT32>( index ) ) );
}

std::string ruleText( mountProfileParser_Ctx_struct* ctx, pANTLR3_COMMON_TOKEN start,
                      pANTLR3_COMMON_TOKEN stop ) {
    std::string text;
    setRuleText( text, ctx, start, stop );
    return text;
}

void appendUnquoted( pANTLR3_COMMON_TOKEN string, std::string& text ) {
    const std::string_view quoted = tokenText( string );
    text += quoted.substr( 1, quoted.size() - 2 );
}

ANTLR3_UINT32 decimalNumber( pANTLR3_COMMON_TOKEN number ) {
    return static_cast<ANTLR3_UINT32>(
        std::strtol( std::string( tokenText( number ) ).c_str(), nullptr, 10 ) );
}

namespace {

/// The k-th token before the current one in the same statement, from 1; null when there is none.
pANTLR3_COMMON_TOKEN earlierToken( pANTLR3_TOKEN_STREAM tokens, ANTLR3_INT32 k ) {
    const auto token = tokens->_LT( tokens, -k );
    return token && token->type != NEWLN ? token : nullptr; // null: those of earlier statements may be gone
}

/// The first of the tokens that make up a text and the last of which is the k-th earlier one; or null.
pANTLR3_COMMON_TOKEN firstOf( pANTLR3_TOKEN_STREAM tokens, ANTLR3_INT32 k, std::string_view text ) {
    for ( auto token = earlierToken( tokens, k ); token && text.ends_with( tokenText( token ) );
          token = earlierToken( tokens, ++k ) ) {
        text.remove_suffix( tokenText( token ).size() );
        if ( text.empty() )
            return token;
    }
    return nullptr;
}

} // namespace

std::string_view lastText( mountProfileParser_Ctx_struct* ctx, std::string_view text,
                           std::string_view behind ) {
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    ANTLR3_INT32 k = 1;
    for ( ; !behind.empty(); ++k ) {
        const auto token = earlierToken( tokens, k );
        if ( !token || !behind.ends_with( tokenText( token ) ) )
            return {};
        behind.remove_suffix( tokenText( token ).size() );
    }
    for ( auto last = earlierToken( tokens, k ); last; last = earlierToken( tokens, ++k ) )
        if ( const auto first = firstOf( tokens, k, text ) ) {
            const char* begin = tokenText( first ).data();
            const std::string_view end = tokenText( last );
            return { begin, static_cast<std::size_t>( end.data() + end.size() - begin ) };
        }
    return {};
}

std::string_view lastTokenText( mountProfileParser_Ctx_struct* ctx ) {
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    return tokenText( tokens->_LT( tokens, -1 ) );
}

std::uint32_t lastTokenLine( mountProfileParser_Ctx_struct* ctx ) {
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    return tokens->_LT( tokens, -1 )->line;
}

std::uint32_t statementLine( mountProfileParser_Ctx_struct* ctx ) {
    const pANTLR3_TOKEN_STREAM tokens = ctx->pParser->tstream;
    pANTLR3_COMMON_TOKEN first = tokens->_LT( tokens, -1 );
    ANTLR3_INT32 k = 1;
    while ( const auto earlier = earlierToken( tokens, ++k ) )
        first = earlier;
    return first->line;
}

void raiseHandlerException( mountProfileParser_Ctx_struct* ctx ) {
    const pANTLR3_BASE_RECOGNIZER recognizer = ctx->pParser->rec;
    recognizer->exConstruct(
        recognizer ); // of the mismatched-token kind: a parser's recogniser makes no other
}

void raiseRecognitionError( mountProfileParser_Ctx_struct* ctx, const char* message ) {
    raiseHandlerException( ctx );
    const pANTLR3_EXCEPTION exception = ctx->pParser->rec->state->exception;
    exception->type = ANTLR3_RECOGNITION_EXCEPTION;
    exception->name = const_cast<char*>( "" );
    exception->message = const_cast<char*>( message );
}

void freeOlderExceptions( pANTLR3_BASE_RECOGNIZER recognizer ) {
    ANTLR3_EXCEPTION& newest = *recognizer->state->exception;
    if ( newest.nextException )
        newest.nextException->freeEx( newest.nextException );
    newest.nextException = nullptr;
}

void finishLexing( mountProfileParser_Ctx_struct* ctx ) {
    if ( ctx->window )
        ctx->window->finishLexing();
}

} // namespace Corvid
