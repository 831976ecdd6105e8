#include "ProfileParser/ParseSession.h"

#include "ProfileParser/ErrorDescription.h"

#include <new>
#include <utility>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

namespace {

constexpr ANTLR3_UINT32 tokenSizeHint = 1025; // the library's own default
char appendedLineEnd[] = " \n";
char appendedLineEndName[] = "newlnStr";

template <class T>
T* made( T* part ) {
    if ( !part )
        throw std::bad_alloc();
    return part;
}

pANTLR3_INPUT_STREAM newStream( char* text, std::size_t size, const char* name ) {
    // The library takes no const text, but only reads it; it copies the name.
    return made( antlr3StringStreamNew( reinterpret_cast<pANTLR3_UINT8>( text ), ANTLR3_ENC_8BIT,
                                        static_cast<ANTLR3_UINT32>( size ),
                                        reinterpret_cast<pANTLR3_UINT8>( const_cast<char*>( name ) ) ) );
}

} // namespace

ParseSession::ParseSession( MountProfileHdlr& hdlr, const std::string& fileName, InputFile file )
    : file_( std::move( file ) ),
      newline_( newStream( appendedLineEnd, sizeof appendedLineEnd - 1, appendedLineEndName ) ),
      input_( newStream( file_.data.get(), file_.size, fileName.c_str() ) ),
      lexer_( made( mountProfileLexerNew( newline_.get() ) ) ) {
    const pANTLR3_LEXER lexer = lexer_->pLexer;
    lexer->pushCharStream( lexer, input_.get() );
    lexer_->hdlr = &hdlr;
    lexer->rec->displayRecognitionError = setLexerErrorDesc;
    lexer->rec->reportError = reportLexerError;

    tokens_.reset( made( antlr3CommonTokenStreamSourceNew( tokenSizeHint, lexer->rec->state->tokSource ) ) );
    parser_.reset( made( mountProfileParserNew( tokens_.get() ) ) );
    parser_->hdlr = &hdlr;
    parser_->reportError = reportParserError;
    parser_->setErrorDesc = setParserErrorDesc;
    parser_->pParser->rec->mismatch = mismatch;
    parser_->pParser->rec->recoverFromMismatchedToken = recoverFromMismatchedToken;
    parser_->pParser->rec->recoverFromMismatchedSet = recoverFromMismatchedSet;
}

ParseSession::~ParseSession() = default;

pANTLR3_COMMON_TOKEN ParseSession::nextToken() {
    const pANTLR3_TOKEN_SOURCE source = lexer_->pLexer->rec->state->tokSource;
    return source->nextToken( source );
}

void ParseSession::parse( bool isInclude ) {
    parser_->profile( parser_.get(), isInclude );
}

} // namespace Corvid
