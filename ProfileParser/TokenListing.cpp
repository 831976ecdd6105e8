#include "ProfileParser/TokenListing.h"

#include "ProfileParser/GeneratedLexer.h"
#include "ProfileParser/InputFile.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <stdexcept>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

RecognitionError listTokens( const std::string& fileName,
                             const std::function<void( const ListedToken& )>& receive ) {
    MountProfileHdlr hdlr( fileName, nullptr, nullptr, false ); // only receives the lexer's first error
    const auto file = readInputFile( fileName, hdlr.maxFileSize() );
    if ( !file )
        throw std::runtime_error( "cannot read " + fileName + " as a mount-profile file" );
    GeneratedLexer lexer( hdlr, fileName, { file->data.get(), file->size } );
    const auto* names = reinterpret_cast<const char* const*>( mountProfileParserTokenNames );
    for ( auto* token = lexer.nextToken(); token->type != ANTLR3_TOKEN_EOF; token = lexer.nextToken() ) {
        receive( { token->type, names[token->type], token->line, token->charPosition, tokenText( token ) } );
        lexer.forgetTokens();
    }
    return hdlr.errorDesc();
}

} // namespace Corvid
