#include "model/ModelBuilder.h"
#include "model/ModelParser.h"

namespace Model {

namespace {

bool isPatternPart( Type type ) {
    return isNamePart( type ) || type == ASTERISK || type == DOT;
}

} // namespace

void Parser::profile() {
    const Running running( *this, Rule::profile );
    builder_.maybeIncludeFileIs( false );
    while ( la() == NEWLN )
        consume();
    if ( isIncludeFile_ ) {
        if ( !startsMountLine( la() ) || ( la() == AGENTNAME && !continuesPath( la( 2 ) ) ) )
            noViableAlternative();
        includeFile();
    } else if ( la() == AGENTNAME && la( 2 ) == COLON ) {
        agentFile();
    } else {
        builder_.maybeIncludeFileIs( true );
    }
}

void Parser::agentFile() {
    const Running running( *this, Rule::agentFile );
    agent();
    match( END );
}

void Parser::includeFile() {
    const Running running( *this, Rule::includeFile );
    section_ = Section::includeFile;
    while ( startsMountLine( la() ) )
        mountEntry();
    if ( isProperty( la() ) )
        fail( "Include file should contain only mounts." );
    match( END );
}

void Parser::agent() {
    const Running running( *this, Rule::agent );
    section_ = Section::agentTitle;
    match( AGENTNAME );
    match( COLON );
    std::string name = agentId();
    const bool hasKeys = la() == HYPHEN;
    if ( hasKeys )
        name += '-';
    builder_.agentProfileIs( name );
    if ( hasKeys )
        builder_.addTemplateKeys( templateKeys() );
    lineEnds();
    statements();
}

std::string Parser::agentId() {
    const Running running( *this, Rule::agentId );
    const std::size_t start = at_;
    while ( agentIdGoesOn() )
        if ( isIdentifier( la() ) )
            ident( 0 );
        else
            consume();
    if ( !isIdentifier( la() ) && la() != INT )
        noViableAlternative();
    if ( isIdentifier( la() ) )
        ident( 1 );
    else
        match( INT, 1 );
    return textSince( start );
}

bool Parser::agentIdGoesOn() const {
    const auto isWord = []( Type type ) { return isIdentifier( type ) || type == INT; };
    if ( la() == HYPHEN )
        return true;
    return isWord( la() ) && ( isWord( la( 2 ) ) || ( la( 2 ) == HYPHEN && isNamePart( la( 3 ) ) ) );
}

std::vector<std::string> Parser::templateKeys() {
    const Running running( *this, Rule::templateKeys );
    std::vector<std::string> keys;
    while ( la() == HYPHEN ) {
        match( HYPHEN );
        keys.push_back( templateKey() );
        builder_.registerTemplateKey( keys.back() );
    }
    if ( la() == DOLLAR ) {
        match( DOLLAR );
        keys.back() += '$';
        if ( la() != NEWLN )
            fail( "$ allowed with only last template key" );
    }
    return keys;
}

std::string Parser::templateKey( unsigned occurrence ) {
    const Running running( *this, Rule::templateKey, occurrence );
    match( PERCENTAGE );
    return '%' + ident();
}

void Parser::statements() {
    const Running running( *this, Rule::statements );
    section_ = Section::topLevel;
    while ( topLevelStatement() ) {
    }
    builder_.addMountGroup( "all", 99 );
    section_ = Section::mountGroup;
    mountLines();
    while ( la() == MOUNTFILTER || la() == MOUNTGROUP )
        if ( la() == MOUNTFILTER )
            mountFilter( 1 );
        else
            mountGroup();
    if ( la() != END )
        fail( "Failed to associate this line to mount filter or mount group." );
}

bool Parser::topLevelStatement() {
    const Type first = la();
    if ( isProperty( first ) )
        property();
    else if ( first == MOUNTFILTER && isMountFilterHeader() )
        mountFilter( 0 );
    else if ( first == SUBAGENT && isKeywordLine() )
        subAgent();
    else if ( first == ALIAS && isKeywordLine() )
        alias();
    else if ( first == ROOTFLAGS && isKeywordLine() )
        rootFlags();
    else if ( first == END || startsMountLine( first ) )
        return false;
    else
        noViableAlternative();
    return true;
}

/// Whether the keyword ahead begins a statement; a mount line's path otherwise.
bool Parser::isKeywordLine() {
    if ( la( 2 ) != COLON && !continuesPath( la( 2 ) ) )
        noViableAlternative( 2 );
    return la( 2 ) == COLON;
}

bool Parser::isMountFilterHeader() {
    if ( !isKeywordLine() )
        return false;
    std::size_t distance = 3;
    while ( isNamePart( la( distance ) ) )
        ++distance;
    if ( distance == 3 || la( distance ) != NEWLN )
        noViableAlternative( distance );
    return true;
}

void Parser::property() {
    const Running running( *this, Rule::property );
    const Type type = la();
    consume();
    builder_.setProperty( type );
    lineEnds();
}

void Parser::subAgent() {
    const Running running( *this, Rule::subAgent );
    match( SUBAGENT );
    match( COLON );
    std::string name = agentId();
    while ( la() == HYPHEN ) {
        match( HYPHEN );
        const std::string key = templateKey();
        builder_.validateTemplateKey( key );
        name += '-' + key;
    }
    builder_.addSubAgent( name );
    lineEnds();
}

void Parser::alias() {
    const Running running( *this, Rule::alias );
    match( ALIAS );
    match( COLON );
    const std::string declared = templateKey( 0 );
    match( EQUAL );
    std::string targets = templateKey( 1 );
    builder_.validateTemplateKey( targets );
    while ( la() == COMMA ) {
        match( COMMA );
        const std::string target = templateKey( 2 );
        builder_.validateTemplateKey( target );
        targets += ", " + target;
    }
    builder_.registerTemplateKey( declared );
    builder_.addAlias( declared, targets );
    lineEnds();
}

void Parser::rootFlags() {
    const Running running( *this, Rule::rootFlags );
    match( ROOTFLAGS );
    match( COLON );
    builder_.setRootFlags( ident() );
    lineEnds();
}

/// The include and mount lines of a group.
void Parser::mountLines() {
    for ( ;; ) {
        const bool needsPath = la() == INCLUDE || la() == MOUNTFILTER || la() == MOUNTGROUP;
        if ( la() == INCLUDE && la( 2 ) == COLON )
            include();
        else if ( startsMountLine( la() ) && ( !needsPath || continuesPath( la( 2 ) ) ) )
            mountEntry();
        else
            return;
    }
}

void Parser::include() {
    const Running running( *this, Rule::include );
    match( INCLUDE );
    match( COLON );
    builder_.parseIncludes( joined( Rule::includeFilePattern, 0, isPatternPart ) );
    lineEnds();
}

void Parser::mountGroup() {
    const Running running( *this, Rule::mountGroup );
    section_ = Section::mountGroup;
    match( MOUNTGROUP );
    match( COLON );
    const std::string name = joined( Rule::mountGroupId, 0, isNamePart );
    builder_.validateMountGroupName( name );
    if ( la() == COMMA ) {
        match( COMMA );
        builder_.addMountGroup( name, Builder::priority( match( INT ) ) );
    } else {
        builder_.addMountGroup( name, 99 );
    }
    lineEnds();
    mountGroupBody();
}

void Parser::mountGroupBody() {
    const Running running( *this, Rule::mountGroupBody );
    if ( ( la() == CONDITION || la() == CONDITIONBLOCKER ) && la( 2 ) == COLON )
        entireCondition();
    mountLines();
}

} // namespace Model
