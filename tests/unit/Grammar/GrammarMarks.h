#pragma once

/// Where the grammar can go different ways, in the copy of the generated parser that tells which one it goes.
struct GrammarDecision {
    const char* rule;
    const char* what;
    unsigned alternatives;
};
/// Where a rule takes one token out of several.
struct GrammarSet {
    const char* rule;
    bool ( *contains )( unsigned type );
};
// Both end in a row of nulls.
extern const GrammarDecision grammarDecisions[];
extern const GrammarSet grammarSets[];

/// Called by that parser. @param decision, set row of the table. @param alternative counted from 1.
void alternativeTaken( unsigned decision, unsigned alternative );
void setTokenTaken( unsigned set, unsigned type );
