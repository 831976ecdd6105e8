%code requires {
#include "MountLinesState.h"
}
%code {
int mountLineslex( MOUNTLINESSTYPE *, void * scanner );

static void mountLineserror( void * scanner, struct MountLinesState * state, const char * message ) {
    (void)scanner;
    state->error = message;
}

static struct MountLinesText joined( struct MountLinesText first, struct MountLinesText last ) {
    first.end = last.end;
    return first;
}
}

%define api.pure full
%define api.prefix {mountLines}
%param { void * scanner }
%parse-param { struct MountLinesState * state }

%union { struct MountLinesText text; }
%token <text> AGENT_NAME UPPER_WORD LOWER_WORD NUMBER DOUBLE_COLON LINE_END
%token <text> '-' ',' '/' ':' '%' '?'
%type <text> path optional_slash units unit word type type_words

%%
profile
    : title lines
    ;
title
    : AGENT_NAME ':' units LINE_END
    ;
lines
    : %empty
    | lines LINE_END
    | lines mount LINE_END
    ;
mount
    : path ',' type ',' word            { mountLinesAdd( state->records, $1, $3, $5 ); }
    ;
path
    : optional_slash units              { $$ = $2; }
    | path '/' units                    { $$ = joined( $1, $3 ); }
    ;
optional_slash
    : %empty                            { $$.start = $$.end = 0; }
    | '/'
    ;
units
    : unit
    | units unit                        { $$ = joined( $1, $2 ); }
    ;
unit
    : word
    | NUMBER
    | '-'
    | DOUBLE_COLON
    | '%' word                          { $$ = joined( $1, $2 ); }
    ;
word
    : UPPER_WORD
    | LOWER_WORD
    | AGENT_NAME
    ;
type
    : type_words
    | DOUBLE_COLON type_words           { $$ = joined( $1, $2 ); }
    ;
type_words
    : UPPER_WORD
    | type_words DOUBLE_COLON UPPER_WORD { $$ = joined( $1, $3 ); }
    ;
