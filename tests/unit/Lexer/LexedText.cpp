#include "LexedText.h"

#include "ProfileParser/ErrorDescription.h"
#include "ProfileParser/GeneratedLexer.h"
#include "ProfileParser/TokenWindow.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "ProfileParser/GeneratedParser.h"

namespace CorvidTest {

namespace {

LexedText* recording = nullptr;

void append( std::string& list, const std::string& item ) {
    list.append( list.empty() ? "" : " " ).append( item );
}

LexedToken lexedToken( pANTLR3_COMMON_TOKEN token ) {
    return { token->type,
             reinterpret_cast<const char*>( mountProfileParserTokenNames[token->type] ),
             std::string( Corvid::tokenText( token ) ),
             token->line,
             token->charPosition,
             {} };
}

void recordAndReport( pANTLR3_BASE_RECOGNIZER recognizer ) {
    const ANTLR3_EXCEPTION& exception = *recognizer->state->exception;
    const auto lexer = static_cast<pANTLR3_LEXER>( recognizer->super );
    const auto* start = static_cast<const char*>( lexer->input->data );
    recording->errors.push_back(
        { exception.type, exception.message ? static_cast<const char*>( exception.message ) : "(none)",
          exception.decisionNum, exception.state, static_cast<std::uint32_t>( exception.line ),
          exception.charPositionInLine,
          static_cast<std::size_t>( reinterpret_cast<const char*>( exception.index ) - start ),
          reinterpret_cast<const char*>( exception.streamName->chars ) } );
    const std::string mark = "!" + std::to_string( exception.type );
    append( recording->names, mark );
    append( recording->dump, mark );
    Corvid::reportLexerError( recognizer );
    recording->errorCount = recognizer->state->errorCount;
    recording->keepsOlderExceptions |= exception.nextException != nullptr;
}

/// One token a line, to tell where two lists differ.
std::string listed( const std::vector<LexedToken>& tokens ) {
    std::string list;
    for ( const LexedToken& token : tokens )
        list += token.name + " " + std::to_string( token.line ) + ":" + std::to_string( token.position ) +
                " " + escaped( token.text ) + "\n";
    return list;
}

} // namespace

std::string escaped( std::string_view text ) {
    std::string shown;
    for ( const char character : text ) {
        const auto byte = static_cast<unsigned char>( character );
        char hex[5];
        std::snprintf( hex, sizeof hex, "\\x%02X", byte );
        shown += character == '\n'             ? "\\n"
                 : character == '\r'           ? "\\r"
                 : character == '\\'           ? "\\\\"
                 : byte >= 0x20 && byte < 0x7F ? std::string( 1, character )
                                               : hex;
    }
    return shown;
}

LexedText::LexedText( std::string_view text ) {
    Corvid::MountProfileHdlr hdlr( "Agent", nullptr, nullptr, false );
    Corvid::GeneratedLexer lexer( hdlr, "Agent", text );
    static_cast<pANTLR3_LEXER>( lexer.tokenSource()->super )->rec->reportError = recordAndReport;
    recording = this;
    pANTLR3_COMMON_TOKEN token = lexer.nextToken();
    for ( ; token->type != ANTLR3_TOKEN_EOF; token = lexer.nextToken() ) {
        tokens.push_back( lexedToken( token ) );
        tokens.back().stream = reinterpret_cast<const char*>( token->input->fileName->chars );
        append( names, tokens.back().name );
        append( dump, tokens.back().name + "[" + escaped( tokens.back().text ) + "]" );
    }
    recording = nullptr;
    endLine = token->line;
    endPosition = token->charPosition;
    append( names, "EOF" );
    append( dump, "EOF" );
    description = hdlr.errorDesc().description().str();
}

void expectSameInTheWindow( std::string_view text, const LexedText& lexed ) {
    SCOPED_TRACE( "text: " + escaped( text ) );
    Corvid::MountProfileHdlr hdlr( "Agent", nullptr, nullptr, false );
    Corvid::TokenWindow window( hdlr, "Agent", text );
    std::vector<LexedToken> tokens;
    for ( window.begin(); window.current()->type != ANTLR3_TOKEN_EOF; window.consume() )
        tokens.push_back( lexedToken( window.current() ) );
    EXPECT_EQ( listed( tokens ), listed( lexed.tokens ) );
    EXPECT_EQ( window.current()->line, lexed.endLine );
    EXPECT_EQ( window.current()->charPosition, lexed.endPosition );
    EXPECT_EQ( hdlr.errorDesc().description().str(), lexed.description );
}

} // namespace CorvidTest
