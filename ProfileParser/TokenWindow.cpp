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
    numbers.mark = []( pANTLR3_INT_STREAM is ) { return windowOf( is ).mark(); };
    numbers.rewind = []( pANTLR3_INT_STREAM is, ANTLR3_MARKER index ) { windowOf( is ).rewind( index ); };
    numbers.seek = []( pANTLR3_INT_STREAM is, ANTLR3_MARKER index ) { windowOf( is ).indexIs( index ); };
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

/// Room for tokens behind all blocks: another block, or the last but one again if the line is long.
void TokenWindow::makeRoom() {
    if ( blocks_.size() != mostBlocks || block_ != mostBlocks - 1 || marks_ != 0 )
        return addBlock();
    for ( std::size_t slot = firstReused * blockSize; slot < ( firstReused + 1 ) * blockSize; ++slot )
        dropped_.push_back( tokenText( at( slot ) ) );
    std::swap( blocks_[firstReused], blocks_[firstReused + 1] );
    --block_;
    read_ -= blockSize;
    forgotten_ += blockSize;
}

/// Makes the token that the parser has just stepped to a real one.
void TokenWindow::readOn( bool lineIsRead ) {
    if ( lineIsRead &&
         slotOfCurrent() == read_ ) { // else the parser has looked ahead; the next line end will do
        copyToken( *previous(), blocks_.front()->front() );
        forgotten_ += std::exchange( read_, 0 );
        dropped_.clear();
        currentIs( 0 );
    }
    while ( slotOfCurrent() >= read_ )
        readLine();
    currentIs( slotOfCurrent() ); // may begin another block
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
    const std::size_t ahead = static_cast<std::size_t>( k ) - 1;
    while ( slotOfCurrent() + ahead >= read_ )
        readLine();
    currentIs( slotOfCurrent() ); // its block may hold more now
    return at( slotOfCurrent() + ahead );
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
        makeRoom();
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
    while ( hdlr_.validProfileFile() ) { // later errors change nothing
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

pANTLR3_COMMON_TOKEN TokenWindow::kept( const ANTLR3_COMMON_TOKEN& token, const KeptPlace& place ) {
    const auto [kept, isNew] = kept_.try_emplace( place );
    if ( isNew )
        makeToken( kept->second, nowhere_ );
    copyToken( token, kept->second );
    return &kept->second;
}

/// The text of a token of the line, by its number among all that have been read of the line.
std::string_view TokenWindow::textOf( std::size_t number ) const {
    constexpr std::size_t fixed = firstReused * blockSize;
    if ( number >= fixed && number < fixed + dropped_.size() )
        return dropped_[number - fixed];
    return tokenText( at( number < fixed ? number : number - dropped_.size() ) );
}

void TokenWindow::appendTexts( std::string& text, pANTLR3_COMMON_TOKEN first,
                               pANTLR3_COMMON_TOKEN last ) const {
    // Compared by their texts' places, as tokens may be copies. From the end: texts are asked for when they
    // are read.
    std::size_t number = dropped_.size() + slotOfCurrent();
    while ( textOf( number ).data() != tokenText( first ).data() )
        --number;
    for ( ; textOf( number ).data() != tokenText( last ).data(); ++number )
        text += textOf( number );
    text += tokenText( last );
}

} // namespace Corvid
