#pragma once

// The generated lexer's and parser's headers, for the few files of ours that talk to them. Include it last:
// they define a macro for every token name. Those of the fragment rules, single letters that no token ever
// has, are taken back.
#include "ProfileParser/GrammarSupport.h"

#include "mountProfileLexer.h"
#include "mountProfileParser.h"

#undef A
#undef B
#undef C
#undef D
#undef E
#undef F
#undef G
#undef H
#undef I
#undef J
#undef K
#undef L
#undef M
#undef N
#undef O
#undef P
#undef Q
#undef R
#undef S
#undef T
#undef U
#undef V
#undef W
#undef X
#undef Y
#undef Z

/// Names of all tokens by type; the tool defines it, but declares it nowhere.
extern pANTLR3_UINT8 mountProfileParserTokenNames[];
