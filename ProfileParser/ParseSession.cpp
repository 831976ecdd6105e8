#include "ProfileParser/ParseSession.h"

#include "ProfileParser/ErrorDescription.h"

#include <utility>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

namespace {

constexpr ANTLR3_UINT32 tokenSizeHint = 1025; // the library's own default

} // namespace

ParseSession::ParseSession( MountProfileHdlr& hdlr, const std::string& fileName, InputFile file,
                            TokenPath tokenPath )
    : file_( std::move( file ) ) {
    const std::string_view text( file_.data.get(), file_.size );
    if ( tokenPath == TokenPath::fast ) {
        window_.emplace( hdlr, fileName, text );
    } else {
        lexer_.emplace( hdlr, fileName, text );
        plainTokens_ = owned( antlr3CommonTokenStreamSourceNew( tokenSizeHint, lexer_->tokenSource() ) );
    }
    parser_ = owned( mountProfileParserNew( window_ ? window_->tokenStream() : plainTokens_.get() ) );
    parser_->window = window_ ? &*window_ : nullptr;
    parser_->line = &line_;
    parser_->state = parser_->pParser->rec->state;
    parser_->pParser->super = parser_.get();
    parser_->hdlr = &hdlr;
    parser_->reportError = reportParserError;
    parser_->setErrorDesc = setParserErrorDesc;
    const pANTLR3_BASE_RECOGNIZER recognizer = parser_->pParser->rec;
    recognizer->mismatch = mismatch;
    recognizer->recoverFromMismatchedToken = recoverFromMismatchedToken;
    recognizer->recoverFromMismatchedSet = recoverFromMismatchedSet;
}

ParseSession::~ParseSession() = default;

void ParseSession::begin() {
    if ( window_ )
        window_->begin();
}

void ParseSession::parse( bool isInclude ) {
    begin();
    parser_->profile( parser_.get(), isInclude );
    finishLexing( parser_.get() ); // a file without a title line is not read to its end
}

} // namespace Corvid
