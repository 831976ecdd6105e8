#include "model/ModelBuilder.h"
#include "model/ModelParser.h"

namespace Model {

void Parser::entireCondition() {
    const Running running( *this, Rule::entireCondition );
    const bool blocks = la() == CONDITIONBLOCKER;
    consume();
    if ( blocks )
        builder_.setBlocking();
    builder_.validateConditionNotSet();
    match( COLON );
    conditions();
    lineEnds();
}

void Parser::conditions() {
    const Running running( *this, Rule::conditions );
    std::string whole = condition( 0 );
    while ( la() == AND ) {
        match( AND );
        whole += " and " + condition( 1 );
    }
    builder_.setEntireCondition( whole );
}

std::string Parser::condition( unsigned occurrence ) {
    const Running running( *this, Rule::condition, occurrence );
    const std::string left = lvalue();
    const std::string comparison = match( OP );
    const RightSide right = rvalue();
    std::string text = left + ' ' + comparison + ' ' + right.text;
    if ( right.isTemplate )
        builder_.addTemplateCondition( text );
    else
        builder_.addCondition( text );
    return text;
}

std::string Parser::lvalue() {
    const Running running( *this, Rule::lvalue );
    const std::size_t start = at_;
    if ( isIdentifier( la() ) || la() == PERCENTAGE )
        str();
    else if ( la() == FLOAT || la() == HEX || la() == HYPHEN || la() == INT )
        number();
    else
        noViableAlternative();
    return textSince( start );
}

void Parser::str() {
    const Running running( *this, Rule::str );
    for ( bool first = true;; first = false )
        if ( isIdentifier( la() ) )
            ident( first ? 0 : 1 );
        else if ( la() == PERCENTAGE )
            builder_.validateTemplateKey( templateKey( first ? 0 : 1 ) );
        else if ( la() == HYPHEN || la() == INT )
            consume();
        else
            break;
    leaveIfFailed();
}

void Parser::number() {
    const Running running( *this, Rule::number );
    if ( la() == HYPHEN )
        match( HYPHEN );
    if ( la() != FLOAT && la() != HEX && la() != INT ) {
        constexpr std::uint32_t mismatchedSet = 4;
        raise( { mismatchedSet, ahead(), END, {} } );
        leave();
    }
    consume();
}

Parser::RightSide Parser::rvalue() {
    const Running running( *this, Rule::rvalue );
    if ( isIdentifier( la() ) )
        return { functionCall(), false };
    if ( la() == SLASH )
        return { pathAttribute( 1 ), false };
    if ( la() != PERCENTAGE )
        noViableAlternative();
    const std::string key = templateKey();
    builder_.validateTemplateKey( key );
    leaveIfFailed();
    return { key, true };
}

/// Part of the rule rvalue.
std::string Parser::functionCall() {
    const std::string function = ident();
    if ( la() != OPENPAREN )
        fail( "condition path should be full path from root '/'" );
    builder_.validateFunction( function );
    match( OPENPAREN );
    const std::string attribute = pathAttribute( 0 );
    match( CLOSEPAREN );
    return function + "( " + attribute + " )";
}

/// Part of the rule rvalue, where it stands twice.
std::string Parser::pathAttribute( unsigned occurrence ) {
    const std::string where = condPath( occurrence );
    match( DOT, occurrence );
    return where + '.' + attrIdent( occurrence );
}

std::string Parser::condPath( unsigned occurrence ) {
    const Running running( *this, Rule::condPath, occurrence );
    const std::size_t start = at_;
    match( SLASH, 0 );
    pathUnit( 0 );
    while ( la() == SLASH ) {
        match( SLASH, 1 );
        pathUnit( 1 );
    }
    return textSince( start );
}

} // namespace Model
