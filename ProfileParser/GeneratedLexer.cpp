#include "ProfileParser/GeneratedLexer.h"

#include "ProfileParser/ErrorDescription.h"

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

namespace {

constexpr std::string_view appendedLineEnd = " \n";

Owner<ANTLR3_INPUT_STREAM> newStream( std::string_view text, const char* name ) {
    // The library takes no const text, but only reads it; it copies the name.
    return owned( antlr3StringStreamNew( reinterpret_cast<pANTLR3_UINT8>( const_cast<char*>( text.data() ) ),
                                         ANTLR3_ENC_8BIT, static_cast<ANTLR3_UINT32>( text.size() ),
                                         reinterpret_cast<pANTLR3_UINT8>( const_cast<char*>( name ) ) ) );
}

} // namespace

GeneratedLexer::GeneratedLexer( MountProfileHdlr& hdlr, const std::string& fileName, std::string_view text )
    : newline_( newStream( appendedLineEnd, "newlnStr" ) ), file_( newStream( text, fileName.c_str() ) ),
      lexer_( owned( mountProfileLexerNew( newline_.get() ) ) ) {
    const pANTLR3_LEXER lexer = lexer_->pLexer;
    lexer->pushCharStream( lexer, file_.get() );
    lexer_->hdlr = &hdlr;
    lexer->rec->displayRecognitionError = setLexerErrorDesc;
    lexer->rec->reportError = reportLexerError;
}

GeneratedLexer::~GeneratedLexer() = default;

pANTLR3_TOKEN_SOURCE GeneratedLexer::tokenSource() const noexcept {
    return lexer_->pLexer->rec->state->tokSource;
}

pANTLR3_COMMON_TOKEN GeneratedLexer::nextToken() {
    return tokenSource()->nextToken( tokenSource() );
}

TokenScanner::Place GeneratedLexer::place() const noexcept {
    return { static_cast<const char*>( file_->nextChar ), static_cast<const char*>( file_->currentLine ),
             file_->line };
}

void GeneratedLexer::placeIs( const TokenScanner::Place& place ) noexcept {
    file_->nextChar = const_cast<char*>( place.next );
    file_->currentLine = const_cast<char*>( place.lineStart );
    file_->line = place.line;
    file_->charPositionInLine = place.charPositionInLine();
}

bool GeneratedLexer::isPastFile() const noexcept {
    return lexer_->pLexer->input != file_.get();
}

void GeneratedLexer::returnToFile() {
    newline_->reset( newline_.get() );
    lexer_->pLexer->pushCharStream( lexer_->pLexer, file_.get() );
}

void GeneratedLexer::forgetTokens() noexcept {
    lexer_->pLexer->rec->state->tokFactory->nextToken = 0;
}

void GeneratedLexer::silence() noexcept {
    lexer_->pLexer->rec->reportError = freeOlderExceptions;
}

} // namespace Corvid
