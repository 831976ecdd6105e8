#include "ProfileParser/ErrorDescription.h"

#include "ProfileParser/ErrorWording.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

namespace {

/// Where a part of a text begins. What stands behind it, such as the appended line end, begins at its end.
std::size_t offsetIn( std::string_view text, std::string_view part ) {
    constexpr std::less_equal<> inOrder;
    const bool isInside =
        inOrder( text.data(), part.data() ) && inOrder( part.data(), text.data() + text.size() );
    return isInside ? static_cast<std::size_t>( part.data() - text.data() ) : text.size();
}

} // namespace

/// The handler's side of the hooks.
class ErrorDescription {
  public:
    /// The first error wins: invalidates the file and answers whether it was valid until now.
    static bool isFirstError( MountProfileHdlr& hdlr ) {
        if ( !hdlr.validProfileFile() )
            return false;
        hdlr.validProfileFileIs( false );
        return true;
    }

    /// Fills the fields that errors of lexer and parser have in common.
    static RecognitionError& describe( MountProfileHdlr& hdlr, const char* recognizer,
                                       const ANTLR3_EXCEPTION& exception ) {
        RecognitionError& error = hdlr.errorDesc_;
        error.recognizerIs( recognizer );
        error.fileNameIs( hdlr.parserCtx_.agentFileName );
        if ( hdlr.parserCtx_.parsingIncludeFile )
            error.includeFileNameIs( hdlr.parserCtx_.includeFileName );
        error.lineIs( static_cast<std::uint32_t>( exception.line ) );
        error.charPositionInLineIs( exception.charPositionInLine );
        error.exceptionTypeIs( exception.type );
        return error;
    }

    /// Notes the code, and where in the file's text that stands which was found, and that which is wrong.
    static void detail( MountProfileHdlr& hdlr, std::string_view message, std::string_view found,
                        std::string_view wrong ) {
        const std::string_view text = hdlr.parserCtx_.runningText();
        ErrorDetails& details = hdlr.errorDetails_;
        details.code = errorCodeOf( message );
        details.hasPlace = true;
        details.place = offsetIn( text, found );
        details.begin = offsetIn( text, wrong );
        details.end = std::min( details.begin + wrong.size(), text.size() );
    }

    static AntlrParserCtx& parserCtx( MountProfileHdlr& hdlr ) { return hdlr.parserCtx_; }
};

namespace {

using namespace ErrorWording;

MountProfileHdlr& handlerOf( pANTLR3_BASE_RECOGNIZER lexerRecognizer ) {
    const auto lexer = static_cast<pANTLR3_LEXER>( lexerRecognizer->super );
    return *static_cast<mountProfileLexer_Ctx_struct*>( lexer->ctx )->hdlr;
}

/// The text of an input stream from the offending character on, and the line's text before it. The stream's
/// own mark of the current line cannot be used: a character mismatch drops a character before it is
/// described, maybe a newline.
struct SourceContext {
    std::string_view lineBefore;
    std::string_view rest;
};

SourceContext sourceContext( const ANTLR3_INPUT_STREAM& input, const ANTLR3_EXCEPTION& exception ) {
    const std::string_view text( static_cast<const char*>( input.data ), input.sizeBuf );
    const auto offset =
        static_cast<std::size_t>( reinterpret_cast<const char*>( exception.index ) - text.data() );
    const std::string_view before = text.substr( 0, offset );
    return { before.substr( before.rfind( '\n' ) + 1 ), text.substr( offset ) };
}

bool isContinuationByte( char c ) {
    return ( static_cast<unsigned char>( c ) & 0xC0U ) == 0x80;
}

/// The text that was to become a token, up to the offending character, without a line end.
std::string_view failedToken( const ANTLR3_RECOGNIZER_SHARED_STATE& state, const SourceContext& context ) {
    std::size_t size = context.rest.empty() || context.rest.front() == '\n' ? 0 : 1;
    while ( size > 0 && size < context.rest.size() && isContinuationByte( context.rest[size] ) )
        ++size; // of a character beyond ASCII only the first byte is offending
    const auto before = static_cast<std::size_t>( reinterpret_cast<ANTLR3_MARKER>( context.rest.data() ) -
                                                  state.tokenStartCharIndex );
    if ( before > context.lineBefore.size() ) // it did not begin on this line
        return context.rest.substr( 0, size );
    return { context.rest.data() - before, before + size };
}

std::string_view lexerMessage( const ANTLR3_EXCEPTION& exception ) {
    switch ( exception.type ) {
    case noViableAlternative:
        return unrecognizedCharacter;
    case earlyExit:
        return incorrectNumber;
    default:
        return exception.message ? static_cast<const char*>( exception.message ) : unexpectedCharacter;
    }
}

std::string sectionPrefix( ANTLR3_INT32 section, const std::string& mountGroupName ) {
    switch ( section ) {
    case inAgentTitle:
        return std::string( agentTitlePrefix );
    case inIncludeFile:
        return std::string( includeFilePrefix );
    case inMountGroup:
        return std::string( mountGroupPrefix ).append( mountGroupName ).append( mountGroupPrefixEnd );
    default:
        return {};
    }
}

/// A token's text for the place of an error: a line end is a place between two characters.
std::string_view textAt( pANTLR3_COMMON_TOKEN token ) {
    if ( !token || token->type == ANTLR3_TOKEN_EOF )
        return {};
    return tokenText( token ).substr( 0, token->type == NEWLN ? 0 : std::string_view::npos );
}

void appendOffendingToken( std::string& description, pANTLR3_COMMON_TOKEN token ) {
    if ( !token )
        return;
    if ( token->type == ANTLR3_TOKEN_EOF ) {
        description += atEndOfInput;
        return;
    }
    const std::string_view text = tokenText( token );
    description += nearToken;
    description += text == "\n" ? newlineAsShown : text;
    description += nearTokenEnd;
}

std::string kindMessage( const ANTLR3_EXCEPTION& exception, pANTLR3_UINT8* tokenNames ) {
    if ( exception.type == recognitionError ) {
        if ( !exception.message )
            return std::string( syntaxErrorWithoutMessage );
        return static_cast<const char*>( exception.message );
    }
    const auto messages = kindMessages();
    const auto found = std::ranges::find( messages, exception.type, &KindMessage::kind );
    if ( found == messages.end() )
        return {};
    if ( !tokenNames )
        return std::string( found->withoutTokenNames );
    std::string message( found->beforeTokenName );
    if ( exception.expecting == ANTLR3_TOKEN_EOF )
        message += endOfInputName;
    else
        message += reinterpret_cast<const char*>( tokenNames[exception.expecting] );
    return message;
}

std::string parserMessage( const ANTLR3_EXCEPTION& exception, pANTLR3_UINT8* tokenNames, std::int32_t rule ) {
    std::string message = kindMessage( exception, tokenNames ).append( ruleHint( rule, exception.type ) );
    if ( message.empty() )
        message = syntaxError;
    return message;
}

} // namespace

void reportLexerError( pANTLR3_BASE_RECOGNIZER recognizer ) {
    ++recognizer->state->errorCount;
    if ( ErrorDescription::isFirstError( handlerOf( recognizer ) ) )
        recognizer->displayRecognitionError( recognizer, recognizer->state->tokenNames );
    freeOlderExceptions( recognizer );
}

void setLexerErrorDesc( pANTLR3_BASE_RECOGNIZER recognizer, pANTLR3_UINT8* /*tokenNames*/ ) {
    const ANTLR3_EXCEPTION& exception = *recognizer->state->exception;
    RecognitionError& error = ErrorDescription::describe( handlerOf( recognizer ), "lexer", exception );
    const auto lexer = static_cast<pANTLR3_LEXER>( recognizer->super );
    const SourceContext context = sourceContext( *lexer->input, exception );

    std::string description( lexerMessage( exception ) );
    const std::string_view offending = context.rest.substr( 0, 1 );
    ErrorDescription::detail( handlerOf( recognizer ), description, context.rest,
                              failedToken( *recognizer->state, context ) );
    if ( context.rest.empty() ) {
        error.descriptionIs( description.append( nearEndOfFile ) );
        return;
    }
    description.append( nearCharacter ).append( offending == "\n" ? newlineAsShown : offending );
    error.descriptionIs( description.append( nearCharacterEnd ) );

    std::string sourceLine;
    if ( exception.charPositionInLine >= 0 )
        sourceLine.append( "\t" ).append( context.lineBefore );
    constexpr std::size_t shownAtMost = 10;
    const std::string_view shown = context.rest.substr( 0, shownAtMost );
    error.sourceLineIs( sourceLine.append( shown.substr( 0, shown.find( '\n' ) ) ) );
}

void reportParserError( mountProfileParser_Ctx_struct* ctx, ANTLR3_INT32 ruleNumber ) {
    const pANTLR3_RECOGNIZER_SHARED_STATE state = ctx->pParser->rec->state;
    if ( state->errorRecovery ) // an inner rule has reported it
        return;
    ++state->errorCount;
    state->errorRecovery = ANTLR3_TRUE;
    finishLexing( ctx );
    if ( ErrorDescription::isFirstError( *ctx->hdlr ) )
        ctx->setErrorDesc( ctx, state->tokenNames, ruleNumber );
}

void setParserErrorDesc( mountProfileParser_Ctx_struct* ctx, pANTLR3_UINT8* tokenNames,
                         ANTLR3_INT32 ruleNumber ) {
    const ANTLR3_EXCEPTION& exception = *ctx->pParser->rec->state->exception;
    RecognitionError& error = ErrorDescription::describe( *ctx->hdlr, "parser", exception );
    std::string description = sectionPrefix( ctx->section, ctx->hdlr->currMgName() );
    appendOffendingToken( description, static_cast<pANTLR3_COMMON_TOKEN>( exception.token ) );

    AntlrParserCtx& parserCtx = ErrorDescription::parserCtx( *ctx->hdlr );
    const std::string_view found = textAt( static_cast<pANTLR3_COMMON_TOKEN>( exception.token ) );
    std::string_view wrong = found;
    std::string message;
    if ( std::exchange( parserCtx.hdlrExceptionRaised, false ) ) {
        message = parserCtx.hdlrExceptionMsg;
        if ( !parserCtx.hdlrExceptionText.empty() )
            wrong = parserCtx.hdlrExceptionText;
    } else {
        message = parserMessage( exception, tokenNames, ruleNumber );
    }
    error.descriptionIs( description + message );
    ErrorDescription::detail( *ctx->hdlr, message, found, wrong );
}

namespace {

/// Asks the library, which looks at its own stack of follow sets: gives it the rules'.
bool isMissingToken( pANTLR3_BASE_RECOGNIZER recognizer, pANTLR3_INT_STREAM tokens,
                     pANTLR3_BITSET_LIST follow ) {
    const auto parser = static_cast<pANTLR3_PARSER>( recognizer->super );
    const auto& ctx = *static_cast<mountProfileParser_Ctx_struct*>( parser->super );
    const pANTLR3_STACK stack = recognizer->state->following;
    for ( ANTLR3_UINT32 i = 0; i < ctx.followCount; ++i )
        stack->push( stack, ctx.follows[i], nullptr );
    const bool missing = recognizer->mismatchIsMissingToken( recognizer, tokens, follow ) == ANTLR3_TRUE;
    for ( ANTLR3_UINT32 i = 0; i < ctx.followCount; ++i )
        stack->pop( stack );
    return missing;
}

} // namespace

void mismatch( pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 expectedType, pANTLR3_BITSET_LIST follow ) {
    antlr3MTExceptionNew( recognizer );
    const pANTLR3_EXCEPTION exception = recognizer->state->exception;
    exception->expecting = expectedType;
    const pANTLR3_INT_STREAM tokens = static_cast<pANTLR3_PARSER>( recognizer->super )->tstream->istream;
    if ( recognizer->mismatchIsUnwantedToken( recognizer, tokens, expectedType ) ) {
        exception->type = ANTLR3_UNWANTED_TOKEN_EXCEPTION;
        exception->name = const_cast<char*>( ANTLR3_UNWANTED_TOKEN_EXCEPTION_NAME );
    } else if ( isMissingToken( recognizer, tokens, follow ) ) {
        exception->type = ANTLR3_MISSING_TOKEN_EXCEPTION;
        exception->name = const_cast<char*>( ANTLR3_MISSING_TOKEN_EXCEPTION_NAME );
    }
}

void* recoverFromMismatchedToken( pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 expectedType,
                                  pANTLR3_BITSET_LIST follow ) {
    recognizer->mismatch( recognizer, expectedType, follow );
    return nullptr;
}

void* recoverFromMismatchedSet( pANTLR3_BASE_RECOGNIZER /*recognizer*/, pANTLR3_BITSET_LIST /*follow*/ ) {
    return nullptr;
}

} // namespace Corvid
