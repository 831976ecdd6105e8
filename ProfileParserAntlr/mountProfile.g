// The mount-profile language: tokens first, then the parser's rules. Left column language, right column what the
// handler is told.
//
// Order matters in three places: a token's type is its place among all names in ASCII order; of two lexer rules that
// match the same text the earlier one wins; a parser rule's number, which it reports when it fails, is its place
// below, counted from 0.

grammar mountProfile;

options { language = C; }

// ------------------------------------------------------------------------------------------------------ tokens --

tokens {
    AND         = 'and';
    ASTERISK    = '*';
    CLOSEPAREN  = ')';
    COLON       = ':';
    COMMA       = ',';
    DOLLAR      = '$';
    DOT         = '.';
    DOUBLECOLON = '::';
    EQUAL       = '=';
    HYPHEN      = '-';
    OPENPAREN   = '(';
    PERCENTAGE  = '%';
    QSNMARK     = '?';
    SLASH       = '/';
}

@lexer::preincludes  { #include "ProfileParser/GrammarSupport.h" }
@parser::preincludes { #include "ProfileParser/TokenWindow.h" }

@lexer::context {
    Corvid::MountProfileHdlr * hdlr; // not owned
}

@parser::context {
    void ( *reportError )( struct mountProfileParser_Ctx_struct * ctx, ANTLR3_INT32 ruleNumber );
    void ( *setErrorDesc )( struct mountProfileParser_Ctx_struct * ctx, pANTLR3_UINT8 * tokenNames,
                            ANTLR3_INT32 ruleNumber );
    bool isIncludeFile;
    ANTLR3_INT32 section;            // one of Corvid::Section
    Corvid::MountProfileHdlr * hdlr; // not owned
    Corvid::TokenWindow * window;    // not owned; null when the tokens come from the library's token stream
    Corvid::MountLine * line;        // not owned
    pANTLR3_RECOGNIZER_SHARED_STATE state; // the recogniser's own, within short reach
    pANTLR3_BITSET_LIST follows[38]; // what may follow each of the rules being read; there are 38 rules
    ANTLR3_UINT32 followCount;
}

@parser::postinclude {
    #include "ProfileParser/ParserTokens.h"

    #define HDLR        CTX->hdlr
    #define TEXT( start, stop )      Corvid::ruleText( CTX, start, stop )
    #define SET( text, start, stop ) Corvid::setRuleText( text, CTX, start, stop )
    // Actions run on after a failed check, until the next match; a rule that fails by itself must leave at once, or
    // the next match would put its own mismatch on top and the message would be lost.
    #define FAIL( name, message ) { Corvid::raiseRecognitionError( CTX, message ); goto rule##name##Ex; }
    #define REPORT( ruleNumber )  CTX->reportError( CTX, ruleNumber )
}

@parser::members {
    // What the rules do for every token, inline in place of calls through several pointers each.
    #undef LA
    #undef LT
    #undef MATCHT
    #undef CONSUME
    #undef FOLLOWPUSH
    #undef FOLLOWPOP
    #undef PSRSTATE
    #define PSRSTATE               CTX->state
    #define LA( k )                Corvid::tokenType( CTX, k )
    #define LT( k )                Corvid::ruleBoundary( CTX, k )
    #define MATCHT( type, follow ) Corvid::match( CTX, type, follow )
    #define CONSUME()              Corvid::consume( CTX )
    #define FOLLOWPUSH( follow )   Corvid::pushFollow( CTX, &( follow ) )
    #define FOLLOWPOP()            Corvid::popFollow( CTX )
}

@lexer::postinclude {
    #define FAIL( name, text ) \
        { CONSTRUCTEX(); EXCEPTION->message = const_cast<char *>( text ); goto rule##name##Ex; }
}

// ------------------------------------------------------------------------------------------------- parser rules --

profile[ bool isIncludeFile ]                                                                                // 0
@init { CTX->isIncludeFile = isIncludeFile; CTX->section = Corvid::topLevel; HDLR->maybeIncludeFileIs( false ); }
    : NEWLN*                            {
                                            if ( !isIncludeFile && !( LA( 1 ) == AGENTNAME && LA( 2 ) == COLON ) ) {
                                                HDLR->maybeIncludeFileIs( true );
                                                goto ruleprofileEx;
                                            }
                                        }
      ( { CTX->isIncludeFile }?=> includeFile | { !CTX->isIncludeFile }?=> agentFile )
    ;
catch [ any ] { REPORT( 0 ); }

agentFile : agent EOF ;                                                                                      // 1
catch [ any ] { REPORT( 1 ); }

includeFile                                                                                                  // 2
@init { CTX->section = Corvid::inIncludeFile; }
    : mountEntry+                       {
                                            if ( LA( 1 ) == HYBRIDMOUNT || LA( 1 ) == LOWMOUNTPRIO ||
                                                 LA( 1 ) == NODEFAULTMOUNTGROUP )
                                                FAIL( includeFile, "Include file should contain only mounts." )
                                        }
      EOF
    ;
catch [ any ] { REPORT( 2 ); }

agent                                                                                                        // 3
@declarations { std::string name; }
@init { CTX->section = Corvid::inAgentTitle; }
    : AGENTNAME COLON agentId           { name = TEXT( $agentId.start, $agentId.stop ); if ( LA( 1 ) == HYPHEN ) name += '-';
                                          HDLR->agentProfileIs( name ); }
      ( templateKeys                    { HDLR->addTemplateKeys( $templateKeys.keys ); }
      )?
      NEWLN+ statements
    ;
catch [ any ] { REPORT( 3 ); }

agentId : ( ident | INT | HYPHEN )* ( ident | INT ) ;                                                        // 4
catch [ any ] { REPORT( 4 ); }

templateKeys returns [ std::vector<std::string> keys ]                                                       // 5
    : ( HYPHEN templateKey              { $keys.push_back( TEXT( $templateKey.start, $templateKey.stop ) );
                                          HDLR->registerTemplateKeyDecl( $keys.back() ); }
      )+
      ( DOLLAR                          { $keys.back() += '$';
                                          if ( LA( 1 ) != NEWLN )
                                              FAIL( templateKeys, "$ allowed with only last template key" ) }
      )?
    ;
catch [ any ] { REPORT( 5 ); }

templateKey : PERCENTAGE ident ;                                                                             // 6
catch [ any ] { REPORT( 6 ); }

ident : keyword | LIDENT | UIDENT ;                                                                          // 7
catch [ any ] { REPORT( 7 ); }

keyword                                                                                                      // 8
    : AGENTNAME | ALIAS | CONDITION | CONDITIONBLOCKER | INCLUDE | MOUNTFILTER | MOUNTGROUP | ROOTFLAGS | SUBAGENT ;
catch [ any ] { REPORT( 8 ); }

attrIdent : keyword | LIDENT ;                                                                               // 9
catch [ any ] { REPORT( 9 ); }

typeIdent : keyword | UIDENT ;                                                                               // 10
catch [ any ] { REPORT( 10 ); }

statements                                                                                                   // 11
@init { CTX->section = Corvid::topLevel; }
    : ( mountFilter | property | subAgent | alias | rootFlags )*
                                        { HDLR->addMountGroup(); CTX->section = Corvid::inMountGroup; }
      ( include | mountEntry )*
      ( mountFilter | mountGroup )*     {
                                            if ( LA( 1 ) != ANTLR3_TOKEN_EOF )
                                                FAIL( statements, "Failed to associate this line to mount filter "
                                                                  "or mount group." )
                                        }
    ;
catch [ any ] { REPORT( 11 ); }

mountFilter                                                                                                  // 12
    : MOUNTFILTER COLON mountFilterId   { HDLR->registerMountFilterDecl( TEXT( $mountFilterId.start, $mountFilterId.stop ) ); }
      NEWLN+ mountFilterBody
    ;
catch [ any ] { REPORT( 12 ); }

mountFilterId : ( HYPHEN | ident | INT )+ ;                                                                  // 13
catch [ any ] { REPORT( 13 ); }

mountFilterBody : mountFilterAttrSpec* ;                                                                     // 14
catch [ any ] { REPORT( 14 ); }

mountFilterAttrSpec                                                                                          // 15
@declarations { std::string attribute; std::string value; }
    : attrIdent                         { attribute = TEXT( $attrIdent.start, $attrIdent.stop ); }
      ( COMMA
        ( ( text = STRING               { Corvid::appendUnquoted( $text, value ); }
          )+
        | mountFilterKey                { value = TEXT( $mountFilterKey.start, $mountFilterKey.stop ); }
        )
      )?
                                        { HDLR->addAttrFilter( attribute, value ); }
      NEWLN+
    ;
catch [ any ] { REPORT( 15 ); }

mountFilterKey : ( ident | HYPHEN | INT )+ ;                                                                 // 16
catch [ any ] { REPORT( 16 ); }

property                                                                                                     // 17
    : ( LOWMOUNTPRIO                    { HDLR->setLowMountPrio( true ); }
      | NODEFAULTMOUNTGROUP             { HDLR->setNoDefaultMountGroup( true ); }
      | HYBRIDMOUNT                     { HDLR->setHybridMount( true ); }
      )
      NEWLN+
    ;
catch [ any ] { REPORT( 17 ); }

subAgent                                                                                                     // 18
@declarations { std::string name; std::string key; }
    : SUBAGENT COLON agentId            { name = TEXT( $agentId.start, $agentId.stop ); }
      ( HYPHEN templateKey              { key = TEXT( $templateKey.start, $templateKey.stop ); HDLR->validateTemplateKey( key );
                                          name += '-'; name += key; }
      )*
                                        { HDLR->addSubAgent( name ); }
      NEWLN+
    ;
catch [ any ] { REPORT( 18 ); }

alias                                                                                                        // 19
@declarations { std::string key; std::string target; std::string targets; }
    : ALIAS COLON declared = templateKey { key = TEXT( $declared.start, $declared.stop ); }
      EQUAL first = templateKey         { targets = TEXT( $first.start, $first.stop ); HDLR->validateTemplateKey( targets ); }
      ( COMMA further = templateKey     { target = TEXT( $further.start, $further.stop ); HDLR->validateTemplateKey( target );
                                          targets += ", "; targets += target; }
      )*
                                        { HDLR->registerTemplateKeyDecl( key ); HDLR->addAlias( key, targets ); }
      NEWLN+
    ;
catch [ any ] { REPORT( 19 ); }

rootFlags : ROOTFLAGS COLON ident       { HDLR->setRootFlags( TEXT( $ident.start, $ident.stop ) ); } NEWLN+ ;                   // 20
catch [ any ] { REPORT( 20 ); }

mountEntry                                                                                                   // 21
@init { Corvid::MountLine & line = *CTX->line; line.clear(); }
    : ( ( text = STRING                 { Corvid::appendUnquoted( $text, line.path ); }
        )+
      | path                            { SET( line.path, $path.start, $path.stop ); }
      )
                                        {
                                            if ( LA( 1 ) == COLON )
                                                FAIL( mountEntry, CTX->isIncludeFile
                                                    ? "Found ':', include file should only contain mounts"
                                                    : "Invalid keyword before ':'" )
                                        }
      COMMA entityType                  { SET( line.type, $entityType.start, $entityType.stop ); }
      COMMA ident                       { SET( line.flags, $ident.start, $ident.stop ); }
      ( COMMA mountFilterId             { SET( line.filter, $mountFilterId.start, $mountFilterId.stop ); }
      )?
                                        { HDLR->addMount( line.path, line.type, line.flags, line.filter ); }
      NEWLN+
    ;
catch [ any ] { REPORT( 21 ); }

include : INCLUDE COLON includeFilePattern { HDLR->parseIncludes( TEXT( $includeFilePattern.start, $includeFilePattern.stop ) ); } NEWLN+ ;  // 22
catch [ any ] { REPORT( 22 ); }

includeFilePattern : ( ident | HYPHEN | INT | ASTERISK | DOT )+ ;                                            // 23
catch [ any ] { REPORT( 23 ); }

path : SLASH? pathUnit ( SLASH pathUnit )* SLASH? QSNMARK? ;                                                 // 24
catch [ any ] { REPORT( 24 ); }

pathUnit                                                                                                     // 25
    : ( INT | ident | HYPHEN | DOUBLECOLON
      | templateKey                     { HDLR->validateTemplateKey( TEXT( $templateKey.start, $templateKey.stop ) ); }
      )+
    ;
catch [ any ] { REPORT( 25 ); }

entityType : DOUBLECOLON? typeIdent ( DOUBLECOLON typeIdent )* ;                                             // 26
catch [ any ] { REPORT( 26 ); }

mountGroup                                                                                                   // 27
@declarations { std::string name; bool hasPriority = false; ANTLR3_UINT32 priority = 0; }
@init { CTX->section = Corvid::inMountGroup; }
    : MOUNTGROUP COLON mountGroupId     { name = TEXT( $mountGroupId.start, $mountGroupId.stop ); HDLR->validateMountGroupName( name ); }
      ( COMMA INT                       { hasPriority = true; priority = Corvid::decimalNumber( $INT ); }
      )?
                                        { if ( hasPriority ) HDLR->addMountGroup( name, priority );
                                          else HDLR->addMountGroup( name ); }
      NEWLN+ mountGroupBody
    ;
catch [ any ] { REPORT( 27 ); }

mountGroupId : ( HYPHEN | ident | INT )+ ;                                                                   // 28
catch [ any ] { REPORT( 28 ); }

mountGroupBody : entireCondition? ( include | mountEntry )* ;                                                // 29
catch [ any ] { REPORT( 29 ); }

entireCondition                                                                                              // 30
    : ( CONDITION
      | CONDITIONBLOCKER                { HDLR->setBlockingConditional( true ); }
      )
                                        { HDLR->validateMgConditionNotSet(); }
      COLON conditions NEWLN+
    ;
catch [ any ] { REPORT( 30 ); }

conditions                                                                                                   // 31
@declarations { std::string whole; }
    : first = condition                 { whole = $first.text_; }
      ( AND further = condition         { whole += " and "; whole += $further.text_; }
      )*
                                        { HDLR->setEntireCondition( whole ); }
    ;
catch [ any ] { REPORT( 31 ); }

condition returns [ std::string text_ ]                                                                      // 32
    : lvalue                            { $text_ = TEXT( $lvalue.start, $lvalue.stop ); $text_ += ' '; }
      OP                                { $text_ += Corvid::tokenText( $OP ); }
      rvalue                            { $text_ += ' '; $text_ += $rvalue.text_;
                                          if ( $rvalue.isTemplate ) HDLR->addTemplateCondition( $text_ );
                                          else HDLR->addCondition( $text_ ); }
    ;
catch [ any ] { REPORT( 32 ); }

lvalue : str | number ;                                                                                      // 33
catch [ any ] { REPORT( 33 ); }

str                                                                                                          // 34
    : ( ident
      | first = templateKey             { HDLR->validateTemplateKey( TEXT( $first.start, $first.stop ) ); }
      )
      ( ident | HYPHEN | INT
      | further = templateKey           { HDLR->validateTemplateKey( TEXT( $further.start, $further.stop ) ); }
      )*
    ;
catch [ any ] { REPORT( 34 ); }

number : HYPHEN? ( FLOAT | HEX | INT ) ;                                                                     // 35
catch [ any ] { REPORT( 35 ); }

condPath : SLASH pathUnit ( SLASH pathUnit )* ;                                                              // 36
catch [ any ] { REPORT( 36 ); }

rvalue returns [ std::string text_, bool isTemplate ]                                                        // 37
@init { $isTemplate = false; }
    : ident                             {
                                            if ( LA( 1 ) != OPENPAREN )
                                                FAIL( rvalue, "condition path should be full path from root '/'" )
                                            $text_ = TEXT( $ident.start, $ident.stop );
                                            HDLR->validateCondPathFunc( $text_ );
                                        }
      OPENPAREN inner = condPath DOT innerAttr = attrIdent CLOSEPAREN
                                        { $text_ += "( " + TEXT( $inner.start, $inner.stop ) + '.' + TEXT( $innerAttr.start, $innerAttr.stop ) + " )"; }
    | templateKey                       { $text_ = TEXT( $templateKey.start, $templateKey.stop ); HDLR->validateTemplateKey( $text_ );
                                          $isTemplate = true; }
    | condPath DOT attrIdent            { $text_ = TEXT( $condPath.start, $condPath.stop ) + '.' + TEXT( $attrIdent.start, $attrIdent.stop ); }
    ;
catch [ any ] { REPORT( 37 ); }

// -------------------------------------------------------------------------------------------------- lexer rules --

// Keywords match in either case, and never a colon along.
AGENTNAME           : A G E N T N A M E ;
MOUNTGROUP          : M O U N T G R O U P ;
CONDITION           : C O N D I T I O N ;
CONDITIONBLOCKER    : C O N D I T I O N B L O C K E R ;
INCLUDE             : I N C L U D E ;
ALIAS               : A L I A S ;
SUBAGENT            : S U B A G E N T ;
ROOTFLAGS           : R O O T F L A G S ;
NODEFAULTMOUNTGROUP : N O D E F A U L T M O U N T G R O U P ;
HYBRIDMOUNT         : H Y B R I D M O U N T ;
MOUNTFILTER         : M O U N T F I L T E R ;
LOWMOUNTPRIO        : L O W M O U N T P R I O ;

// Each line-end character is a token of its own: CR LF makes two.
NEWLN : '\n' | '\r' ;

// A backslash at the very end of a line, or of the file, joins it with the next one. Anything else behind it is an
// error at the end of that line: blanks and a CR, too.
LINECONT
    : '\\'
      ( '\n'
      | EOF
      | ( ~'\n' )+                      { FAIL( LINECONT, "unexpected character after line continuation character" ) }
      )                                 { SKIP(); }
    ;

OP : '==' | '!=' | '<=' | '>=' | '<' | '>' | 'in' | 'notin' ;

UIDENT : 'A'..'Z' ( 'a'..'z' | 'A'..'Z' | '0'..'9' | '_' )* ;
LIDENT : 'a'..'z' ( 'a'..'z' | 'A'..'Z' | '0'..'9' | '_' )* ;

INT   : '0'..'9'+ ;
HEX   : ( '0x' | '0X' ) ( '0'..'9' | 'A'..'F' | 'a'..'f' )+ ;
FLOAT : '0'..'9'+ '.' '0'..'9'+ ;

// No escape sequences. A CR may stand inside.
STRING
    : '"' ( ~( '"' | '\n' ) )*          { if ( LA( 1 ) != '"' ) FAIL( STRING, "EOL or EOF while scanning string literal" ) }
      '"'
    ;

WS : ( ' ' | '\t' )+                    { SKIP(); } ;

// Takes its line's end along: a statement with a comment behind it runs on into the next line.
LINE_COMMENT : '#' ( ~( '\n' | '\r' ) )* '\r'? ( '\n' | EOF ) { SKIP(); } ;

fragment A : 'a' | 'A' ;
fragment B : 'b' | 'B' ;
fragment C : 'c' | 'C' ;
fragment D : 'd' | 'D' ;
fragment E : 'e' | 'E' ;
fragment F : 'f' | 'F' ;
fragment G : 'g' | 'G' ;
fragment H : 'h' | 'H' ;
fragment I : 'i' | 'I' ;
fragment J : 'j' | 'J' ;
fragment K : 'k' | 'K' ;
fragment L : 'l' | 'L' ;
fragment M : 'm' | 'M' ;
fragment N : 'n' | 'N' ;
fragment O : 'o' | 'O' ;
fragment P : 'p' | 'P' ;
fragment Q : 'q' | 'Q' ;
fragment R : 'r' | 'R' ;
fragment S : 's' | 'S' ;
fragment T : 't' | 'T' ;
fragment U : 'u' | 'U' ;
fragment V : 'v' | 'V' ;
fragment W : 'w' | 'W' ;
fragment X : 'x' | 'X' ;
fragment Y : 'y' | 'Y' ;
fragment Z : 'z' | 'Z' ;
