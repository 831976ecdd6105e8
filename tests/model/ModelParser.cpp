#include "model/ModelParser.h"
#include "model/ModelBuilder.h"

#include <algorithm>

namespace Model {

Parser::Parser( std::vector<Token> tokens, bool isIncludeFile, Builder& builder )
    : tokens_( std::move( tokens ) ), isIncludeFile_( isIncludeFile ), builder_( builder ) {
    // The end of input lies behind the line end that is appended to every file, a text of its own.
    tokens_.push_back( { END, 2, 0, {} } );
}

void Parser::parse() {
    try {
        profile();
    } catch ( const Stop& stop ) {
        builder_.parserFailed( failure_, stop.rule, section_ );
    }
}

void Parser::checkFailed() {
    raise( { 2, ahead(), END, {} } );
}

const Token& Parser::ahead( std::size_t distance ) const {
    return tokens_[std::min( at_ + distance - 1, tokens_.size() - 1 )];
}

std::string Parser::textSince( std::size_t start ) const {
    std::string text;
    for ( std::size_t index = start; index < at_; ++index )
        text += tokens_[index].text;
    return text;
}

std::string Parser::match( Type type, unsigned occurrence ) {
    if ( la() != type ) {
        mismatch( type, occurrence );
        leave();
    }
    std::string text = ahead().text;
    consume();
    return text;
}

void Parser::consume() {
    if ( at_ + 1 < tokens_.size() )
        ++at_;
    leaveIfFailed();
}

void Parser::mismatch( Type expected, unsigned occurrence ) {
    constexpr std::uint32_t mismatched = 2;
    constexpr std::uint32_t unwanted = 9;
    constexpr std::uint32_t missing = 10;
    std::uint32_t kind = mismatched;
    if ( la( 2 ) == expected )
        kind = unwanted;
    else if ( seemsMissing( expected, occurrence ) )
        kind = missing;
    raise( { kind, ahead(), expected, {} } );
}

bool Parser::seemsMissing( Type expected, unsigned occurrence ) const {
    TypeSet viable = follow( frames_.back().rule, expected, occurrence );
    if ( viable.test( endOfRule ) ) {
        viable.reset( endOfRule );
        for ( std::size_t depth = 1; depth < frames_.size(); ++depth )
            viable |= follow( frames_[depth - 1].rule, frames_[depth].rule, frames_[depth].occurrence );
    }
    return viable.test( endOfRule ) || ( la() != END && viable.test( la() ) );
}

void Parser::raise( Failure failure ) {
    failed_ = true;
    failure_ = std::move( failure );
}

void Parser::noViableAlternative( std::size_t distance ) {
    raise( { 3, ahead( distance ), END, {} } );
    leave();
}

void Parser::earlyExit() {
    raise( { 5, ahead(), END, {} } );
    leave();
}

void Parser::fail( const char* message ) {
    raise( { 1, ahead(), END, message } );
    leave();
}

void Parser::leaveIfFailed() {
    if ( failed_ )
        leave();
}

void Parser::leave() {
    throw Stop{ frames_.back().rule };
}

void Parser::lineEnds() {
    if ( la() != NEWLN )
        earlyExit();
    while ( la() == NEWLN )
        consume();
}

std::string Parser::quotedTexts() {
    std::string text;
    while ( la() == STRING ) {
        const std::string literal = match( STRING );
        text += literal.substr( 1, literal.size() - 2 );
    }
    return text;
}

std::string Parser::joined( Rule rule, unsigned occurrence, bool ( *belongs )( Type ) ) {
    const Running running( *this, rule, occurrence );
    const std::size_t start = at_;
    if ( !belongs( la() ) )
        earlyExit();
    while ( belongs( la() ) )
        if ( isIdentifier( la() ) )
            ident();
        else
            consume();
    return textSince( start );
}

std::string Parser::ident( unsigned occurrence ) {
    const Running running( *this, Rule::ident, occurrence );
    if ( !isIdentifier( la() ) )
        noViableAlternative();
    std::string text = ahead().text;
    if ( isKeyword( la() ) )
        keyword();
    else
        consume();
    return text;
}

void Parser::keyword() {
    const Running running( *this, Rule::keyword );
    consume();
}

} // namespace Model
