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
    ANTLR3_INT_STREAM& numbers = *tokens.istream;
    numbers._LA = []( pANTLR3_INT_STREAM is, ANTLR3_INT32 k ) { return windowOf( is ).token( k )->type; };
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

void copyToken( const ANTLR3_COMMON_TOKEN& from, ANTLR3_COMMON_TOKEN& to ) {
    to.type = from.type;
    to.line = from.line;
    to.charPosition = from.charPosition;
    to.start = from.start;
    to.stop = from.stop;
}

} // namespace

TokenWindow::TokenWindow( MountProfileHdlr& hdlr, std::string fileName, std::string_view text )
    : hdlr_( hdlr ), fileName_( std::move( fileName ) ), text_( text ), scanner_( text ) {
    source_.super = this;
    stream_ = owned( antlr3CommonTokenStreamSourceNew( 0, &source_ ) );
    serve( *stream_->tstream );
    addBlock();
    currentIs( 0 );
}

TokenWindow::~TokenWindow() = default;

void TokenWindow::addBlock() {
    auto block = std::make_unique<Block>();
    for ( ANTLR3_COMMON_TOKEN& token : *block )
        makeToken( token, nowhere_ );
    blocks_.push_back( std::move( block ) );
}

/// Makes the token that the parser has just stepped to a real one.
void TokenWindow::readOn( bool lineIsRead ) {
    std::size_t slot = slotOfCurrent();
    if ( lineIsRead && slot == read_ ) { // else the parser has looked ahead; the next line end will do
        copyToken( *previous(), blocks_.front()->front() );
        forgotten_ += std::exchange( read_, 0 );
        slot = 0;
    }
    while ( slot >= read_ )
        readLine();
    currentIs( slot );
}

void TokenWindow::currentIs( std::size_t slot ) noexcept {
    block_ = slot / blockSize;
    blockStart_ = at( block_ * blockSize );
    readEnd_ = blockStart_ + std::min( read_ - block_ * blockSize, blockSize );
    at_ = at( slot );
}

pANTLR3_COMMON_TOKEN TokenWindow::tokenElsewhere( int k ) {
    if ( k < 0 )
        return tokenBefore( static_cast<std::size_t>( -k ) );
    const std::size_t slot = slotOfCurrent() + static_cast<std::size_t>( k ) - 1;
    while ( slot >= read_ )
        readLine();
    currentIs( slotOfCurrent() ); // its block may hold more now
    return at( slot );
}

pANTLR3_COMMON_TOKEN TokenWindow::tokenBefore( std::size_t distance ) const noexcept {
    const std::size_t slot = slotOfCurrent();
    if ( distance <= slot )
        return at( slot - distance );
    return distance == slot + 1 && forgotten_ != 0 ? &blocks_.front()->front() : nullptr;
}

/// Reads at least one token, and as many as the line has if the block has room.
void TokenWindow::readLine() {
    if ( read_ == blocks_.size() * blockSize )
        addBlock();
    Block& block = *blocks_[read_ / blockSize];
    if ( read_ != 0 && read_ % blockSize == 0 )
        copyToken( *at( read_ - 1 ), block.front() );
    const pANTLR3_COMMON_TOKEN first = at( read_ );
    pANTLR3_COMMON_TOKEN next = first;
    if ( phase_ == Phase::inFile ) {
        const auto result = scanner_.scanLine( next, block.data() + block.size() );
        if ( next == first && result == TokenScanner::Result::endOfText )
            phase_ = Phase::atAppendedLineEnd;
    }
    if ( next == first ) // what stopped the scanner behind a token is met again
        readOther( *next++ );
    read_ += static_cast<std::size_t>( next - first );
}

/// Reads one token that the scanner does not.
void TokenWindow::readOther( ANTLR3_COMMON_TOKEN& token ) {
    switch ( phase_ ) {
    case Phase::inFile:
        readWithLexer( token );
        break;
    case Phase::atAppendedLineEnd:
        setToken( token, NEWLN, 1, 0, appendedLineEnd );
        phase_ = Phase::atEnd;
        break;
    case Phase::atEnd:
        setToken( token, ANTLR3_TOKEN_EOF, 2, 0, appendedLineEnd.substr( 1 ) );
        break;
    }
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
    for ( ;; ) {
        pANTLR3_COMMON_TOKEN next = &token;
        const auto result = scanner_.scanLine( next, &token + 1 );
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

void TokenWindow::appendTexts( std::string& text, pANTLR3_COMMON_TOKEN first,
                               pANTLR3_COMMON_TOKEN last ) const {
    std::size_t slot = 0;
    while ( at( slot )->start != first->start ) // not by address: the token before a block's first is a copy
        ++slot;
    for ( ; at( slot )->start != last->start; ++slot )
        text += tokenText( at( slot ) );
    text += tokenText( last );
}

} // namespace Corvid
