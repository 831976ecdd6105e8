#include "ProfileParser/TokenWindow.h"

#include <array>
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

void setToken( ANTLR3_COMMON_TOKEN& token, ANTLR3_UINT32 type, ANTLR3_UINT32 line, ANTLR3_INT32 charPosition,
               std::string_view text ) {
    token.type = type;
    token.line = line;
    token.charPosition = charPosition;
    token.start = reinterpret_cast<ANTLR3_MARKER>( text.data() );
    token.stop = reinterpret_cast<ANTLR3_MARKER>( text.data() + text.size() - 1 );
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
        makeToken( blocks_.back()[i], nowhere_ );
        slots_.push_back( &blocks_.back()[i] );
    }
}

/// Reads lines until that many slots are filled.
void TokenWindow::fill( std::size_t slots ) {
    while ( filled_ < slots ) {
        if ( filled_ == slots_.size() )
            addBlock();
        const std::size_t first = filled_;
        readLine();
        for ( std::size_t slot = first; slot < filled_; ++slot )
            slots_[slot]->index = static_cast<ANTLR3_MARKER>( forgotten_ + slot );
    }
}

void TokenWindow::forgetReadTokens() noexcept {
    std::swap( slots_[0],
               slots_[current_ - 1] ); // the line end stays: it can be asked for as the token before
    forgotten_ += current_ - 1;
    current_ = 1;
    filled_ = 1;
}

/// Fills at least one slot, and as many as the line has tokens if there is room.
void TokenWindow::readLine() {
    if ( phase_ == Phase::inFile ) {
        std::size_t count = 0;
        const auto result = scanner_.scanLine( std::span( slots_ ).subspan( filled_ ), count );
        filled_ += count;
        if ( count != 0 )
            return; // what stopped the scanner is met again
        if ( result == TokenScanner::Result::notPlain ) {
            readWithLexer( *slots_[filled_++] );
            return;
        }
        phase_ = Phase::atAppendedLineEnd;
    }
    ANTLR3_COMMON_TOKEN*& slot = slots_[filled_++];
    if ( std::exchange( phase_, Phase::atEnd ) == Phase::atAppendedLineEnd )
        setToken( *slot, NEWLN, 1, 0, appendedLineEnd );
    else
        slot = &endOfInput_; // the last thing that this slot will hold
}

/// Has the generated lexer read one token from the scanner's place on. That may be the line end that is
/// appended to the file. @return whether the file goes on.
bool TokenWindow::readWithLexer( ANTLR3_COMMON_TOKEN& token ) {
    GeneratedLexer& generated = lexer();
    generated.placeIs( scanner_.place() );
    const pANTLR3_COMMON_TOKEN read = generated.nextToken();
    setToken( token, read->type, read->line, read->charPosition, tokenText( read ) );
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
    ANTLR3_COMMON_TOKEN token{};
    const std::array slots{ &token };
    for ( std::size_t count = 0;; ) {
        const auto result = scanner_.scanLine( slots, count );
        if ( result == TokenScanner::Result::endOfText )
            break;
        if ( result == TokenScanner::Result::notPlain && !readWithLexer( token ) )
            break;
    }
    scanner_.placeIs( parsersPlace );
    if ( std::exchange( phase_, Phase::inFile ) != Phase::inFile )
        lexer_->returnToFile();
    if ( lexer_ )
        lexer_->silence(); // what the parser still reads has been reported
}

} // namespace Corvid
