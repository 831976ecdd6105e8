#include "ProfileParser/TokenListing.h"

#include "ProfileParser/ParseSession.h"

#include <stdexcept>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

RecognitionError listTokens( const std::string& fileName,
                             const std::function<void( const ListedToken& )>& receive ) {
    MountProfileHdlr hdlr( fileName, nullptr, nullptr, false ); // only receives the lexer's first error
    auto file = readInputFile( fileName, hdlr.maxFileSize() );
    if ( !file )
        throw std::runtime_error( "cannot read " + fileName + " as a mount-profile file" );
    ParseSession session( hdlr, fileName, std::move( *file ) );
    const auto* names = reinterpret_cast<const char* const*>( session.parser()->pParser->rec->state->tokenNames );
    for ( auto* token = session.nextToken(); token->type != ANTLR3_TOKEN_EOF; token = session.nextToken() )
        receive( { token->type, names[ token->type ], token->line, token->charPosition, tokenText( token ) } );
    return hdlr.errorDesc();
}

} // namespace Corvid
