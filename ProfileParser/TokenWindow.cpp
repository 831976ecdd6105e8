#include "ProfileParser/TokenWindow.h"

#include <algorithm>
#include <utility>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

namespace {

constexpr std::string_view appendedLineEnd = "\n"; // the blank before it never becomes a token

TokenWindow& windowOf( pANTLR3_TOKEN_STREAM stream ) {
    return *static_cast<TokenWindow*>( stream->tokenSource->super );
}

TokenWindow& windowOf( pANTLR3_INT_STREAM stream ) {
    return windowOf( static_cast<pANTLR3_TOKEN_STREAM>( stream->super ) );
}

/// Everything that the generated parser and the library ask of a parser's token stream.
void serve( const ANTLR3_TOKEN_STREAM& stream ) {
    auto& tokens = const_cast<ANTLR3_TOKEN_STREAM&>( stream );
    tokens._LT = []( pANTLR3_TOKEN_STREAM ts, ANTLR3_INT32 k ) { return windowOf( ts ).token( k ); };
    tokens.get = []( pANTLR3_TOKEN_STREAM ts, ANTLR3_UINT32 index ) {
        return windowOf( ts ).tokenAt( static_cast<ANTLR3_MARKER>( index ) );
    };
    ANTLR3_INT_STREAM& numbers = *tokens.istream;
    numbers._LA = []( pANTLR3_INT_STREAM is, ANTLR3_INT32 k ) { return windowOf( is ).type( k ); };
    numbers.consume = []( pANTLR3_INT_STREAM is ) { windowOf( is ).consume(); };
    numbers.index = []( pANTLR3_INT_STREAM is ) { return windowOf( is ).index(); };
    numbers.mark = []( pANTLR3_INT_STREAM is ) { return windowOf( is ).index(); };
    numbers.rewind = []( pANTLR3_INT_STREAM is, ANTLR3_MARKER index ) { windowOf( is ).indexIs( index ); };
    numbers.seek = numbers.rewind;
}

void makeToken( ANTLR3_COMMON_TOKEN& token, ANTLR3_INPUT_STREAM& input ) {
    antlr3SetTokenAPI( &token );
    token.factoryMade = ANTLR3_TRUE;
    token.input = &input;
}

} // namespace

TokenWindow::TokenWindow( MountProfileHdlr& hdlr, std::string fileName, std::string_view text )
    : hdlr_( hdlr ), fileName_( std::move( fileName ) ), text_( text ), scanner_( text ) {
    source_.super = this;
    stream_ = owned( antlr3CommonTokenStreamSourceNew( 0, &source_ ) );
    serve( *stream_->tstream );
    makeToken( endOfInput_, nowhere_ );
    endOfInput_.type = ANTLR3_TOKEN_EOF;
    endOfInput_.line = 2; // behind the appended line end
    addBlock();
}

TokenWindow::~TokenWindow() = default;

void TokenWindow::addBlock() {
    blocks_.push_back( std::make_unique<ANTLR3_COMMON_TOKEN[]>( blockSize ) );
    for ( std::size_t i = 0; i < blockSize; ++i ) {
        makeToken( blocks_.back()[ i ], nowhere_ );
        slots_.push_back( &blocks_.back()[ i ] );
    }
}

/// Reads tokens until that many slots are filled. At the end of input the rest gets the end-of-input token.
void TokenWindow::fill( std::size_t slots ) {
    while ( filled_ < slots ) {
        if ( filled_ == slots_.size() )
            addBlock();
        TokenScanner::Token scanned;
        if ( !read( scanned ) ) {
            slots_[ filled_ ] = &endOfInput_; // the last thing that this slot will hold
            ++filled_;
            continue;
        }
        ANTLR3_COMMON_TOKEN& token = *slots_[ filled_ ];
        token.type = scanned.type;
        token.line = scanned.line;
        token.charPosition = scanned.charPositionInLine;
        token.start = reinterpret_cast<ANTLR3_MARKER>( scanned.text.data() );
        token.stop = token.start + static_cast<ANTLR3_MARKER>( scanned.text.size() ) - 1;
        token.index = static_cast<ANTLR3_MARKER>( forgotten_ + filled_ );
        ++filled_;
    }
}

void TokenWindow::forgetReadTokens() noexcept {
    std::swap( slots_[ 0 ], slots_[ current_ - 1 ] ); // the line end stays: it can be asked for as the token before
    forgotten_ += current_ - 1;
    current_ = 1;
    filled_ = 1;
}

/// @return false at the end of input.
bool TokenWindow::read( TokenScanner::Token& token ) {
    if ( phase_ == Phase::inFile ) {
        switch ( scanner_.scan( token ) ) {
        case TokenScanner::Result::token:
            return true;
        case TokenScanner::Result::notPlain:
            readWithLexer( token );
            return true;
        case TokenScanner::Result::endOfText:
            phase_ = Phase::atAppendedLineEnd;
        }
    }
    if ( phase_ == Phase::atEnd )
        return false;
    token = { NEWLN, 1, 0, appendedLineEnd };
    phase_ = Phase::atEnd;
    return true;
}

/// Has the generated lexer read one token from the scanner's place on. That may be the line end that is appended to
/// the file. @return whether the file goes on.
bool TokenWindow::readWithLexer( TokenScanner::Token& token ) {
    GeneratedLexer& generated = lexer();
    generated.placeIs( scanner_.place() );
    const pANTLR3_COMMON_TOKEN read = generated.nextToken();
    token = { read->type, read->line, read->charPosition, tokenText( read ) };
    generated.forgetTokens();
    if ( generated.isPastFile() )
        phase_ = Phase::atEnd;
    else
        scanner_.placeIs( generated.place() );
    return phase_ == Phase::inFile;
}

GeneratedLexer& TokenWindow::lexer() {
    if ( !lexer_ )
        lexer_ = std::make_unique<GeneratedLexer>( hdlr_, fileName_, text_ );
    return *lexer_;
}

void TokenWindow::finishLexing() {
    if ( std::exchange( lexingIsFinished_, true ) || phase_ != Phase::inFile )
        return;
    const TokenScanner::Place parsersPlace = scanner_.place();
    TokenScanner::Token token;
    for ( auto result = scanner_.scan( token ); result != TokenScanner::Result::endOfText;
          result = scanner_.scan( token ) )
        if ( result == TokenScanner::Result::notPlain && !readWithLexer( token ) )
            break;
    scanner_.placeIs( parsersPlace );
    if ( std::exchange( phase_, Phase::inFile ) != Phase::inFile )
        lexer_->returnToFile();
    if ( lexer_ )
        lexer_->silence(); // what the parser still reads has been reported
}

} // namespace Corvid
