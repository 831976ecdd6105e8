#include "LexedText.h"

#include "ProfileParser/ErrorDescription.h"
#include "ProfileParser/ParseSession.h"

#include <algorithm>
#include <cstdio>

#include "ProfileParser/GeneratedParser.h"

namespace CorvidTest {

namespace {

LexedText* recording = nullptr;

void append( std::string& list, const std::string& item ) {
    list.append( list.empty() ? "" : " " ).append( item );
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
}

Corvid::InputFile fileOf( std::string_view text ) {
    Corvid::InputFile file{ std::make_unique<char[]>( text.size() + 1 ), text.size() };
    std::ranges::copy( text, file.data.get() );
    return file;
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
    Corvid::ParseSession session( hdlr, "Agent", fileOf( text ) );
    const pANTLR3_TOKEN_STREAM stream = session.parser()->pParser->tstream;
    static_cast<pANTLR3_LEXER>( stream->tokenSource->super )->rec->reportError = recordAndReport;
    recording = this;
    for ( auto* token = session.nextToken();; token = session.nextToken() ) {
        if ( token->type == ANTLR3_TOKEN_EOF ) {
            endLine = token->line;
            endPosition = token->charPosition;
            break;
        }
        const auto* name = reinterpret_cast<const char*>( mountProfileParserTokenNames[token->type] );
        tokens.push_back( { token->type, name, std::string( Corvid::tokenText( token ) ), token->line,
                            token->charPosition,
                            reinterpret_cast<const char*>( token->input->fileName->chars ) } );
        append( names, name );
        append( dump, std::string( name ) + "[" + escaped( tokens.back().text ) + "]" );
    }
    recording = nullptr;
    append( names, "EOF" );
    append( dump, "EOF" );
    description = hdlr.errorDesc().description().str();
}

} // namespace CorvidTest
