#include "model/ModelBuilder.h"
#include "model/ModelParser.h"

namespace Model {

namespace {

bool isAttrIdent( Type type ) {
    return isKeyword( type ) || type == LIDENT;
}

} // namespace

void Parser::mountEntry() {
    const Running running( *this, Rule::mountEntry );
    if ( !startsMountLine( la() ) )
        noViableAlternative();
    const std::string mountPath = la() == STRING ? quotedTexts() : path();
    if ( la() == COLON )
        fail( isIncludeFile_ ? "Found ':', include file should only contain mounts"
                             : "Invalid keyword before ':'" );
    match( COMMA, 0 );
    const std::string type = entityType();
    match( COMMA, 1 );
    const std::string flags = ident();
    std::string filter;
    if ( la() == COMMA ) {
        match( COMMA, 2 );
        filter = joined( Rule::mountFilterId, 0, isNamePart );
    }
    builder_.addMount( mountPath, type, flags, filter );
    lineEnds();
}

std::string Parser::path() {
    const Running running( *this, Rule::path );
    const std::size_t start = at_;
    if ( la() == SLASH )
        match( SLASH, 0 );
    pathUnit( 0 );
    while ( la() == SLASH && startsPathUnit( la( 2 ) ) ) {
        match( SLASH, 1 );
        pathUnit( 1 );
    }
    if ( la() == SLASH )
        match( SLASH, 2 );
    if ( la() == QSNMARK )
        match( QSNMARK );
    return textSince( start );
}

void Parser::pathUnit( unsigned occurrence ) {
    const Running running( *this, Rule::pathUnit, occurrence );
    if ( !startsPathUnit( la() ) )
        earlyExit();
    while ( startsPathUnit( la() ) )
        if ( la() == PERCENTAGE )
            builder_.validateTemplateKey( templateKey() );
        else if ( isIdentifier( la() ) )
            ident();
        else
            consume();
    leaveIfFailed();
}

std::string Parser::entityType() {
    const Running running( *this, Rule::entityType );
    const std::size_t start = at_;
    if ( la() == DOUBLECOLON )
        match( DOUBLECOLON, 0 );
    typeIdent( 0 );
    while ( la() == DOUBLECOLON ) {
        match( DOUBLECOLON, 1 );
        typeIdent( 1 );
    }
    return textSince( start );
}

void Parser::typeIdent( unsigned occurrence ) {
    const Running running( *this, Rule::typeIdent, occurrence );
    if ( isKeyword( la() ) )
        keyword();
    else if ( la() == UIDENT )
        consume();
    else
        noViableAlternative();
}

std::string Parser::attrIdent( unsigned occurrence ) {
    const Running running( *this, Rule::attrIdent, occurrence );
    std::string text = ahead().text;
    if ( isKeyword( la() ) )
        keyword();
    else if ( la() == LIDENT )
        consume();
    else
        noViableAlternative();
    return text;
}

void Parser::mountFilter( unsigned occurrence ) {
    const Running running( *this, Rule::mountFilter, occurrence );
    match( MOUNTFILTER );
    match( COLON );
    builder_.registerMountFilter( joined( Rule::mountFilterId, 0, isNamePart ) );
    lineEnds();
    mountFilterBody();
}

void Parser::mountFilterBody() {
    const Running running( *this, Rule::mountFilterBody );
    while ( isAttrSpec() )
        mountFilterAttrSpec();
}

bool Parser::isAttrSpec() const {
    if ( !isAttrIdent( la() ) )
        return false;
    if ( la( 2 ) == NEWLN )
        return true;
    const Type value = la( 3 );
    if ( la( 2 ) != COMMA )
        return false;
    if ( value == HYPHEN || value == INT || value == LIDENT || value == STRING )
        return true;
    return ( isKeyword( value ) || value == UIDENT ) && ( isNamePart( la( 4 ) ) || la( 4 ) == NEWLN );
}

void Parser::mountFilterAttrSpec() {
    const Running running( *this, Rule::mountFilterAttrSpec );
    const std::string attribute = attrIdent();
    std::string key;
    if ( la() == COMMA ) {
        match( COMMA );
        if ( la() == STRING )
            key = quotedTexts();
        else if ( isNamePart( la() ) )
            key = joined( Rule::mountFilterKey, 0, isNamePart );
        else
            noViableAlternative();
    }
    builder_.addAttrFilter( attribute, key );
    lineEnds();
}

} // namespace Model
