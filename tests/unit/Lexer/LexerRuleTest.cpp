// The lexer's rules called one by one, also where no text of a file would lead to them; and the lexer as an
// object.

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <string>

#include "BareLexer.h"

namespace CorvidTest {

namespace {

using Lexer = mountProfileLexer_Ctx_struct;
using Rule = BareLexer::Rule Lexer::*;

struct FailingRule {
    const char* name;
    Rule rule;
    std::string text;
    std::uint32_t kind;
    std::size_t consumed; ///< a failed match of a character or a set has dropped one already
};

TEST( LexerRules, FailEachWithItsKindOfError ) {
    const FailingRule rows[] = {
        { "AND", &Lexer::mAND, "an", 1, 2 },
        { "AND", &Lexer::mAND, "anx.", 1, 3 },
        { "DOUBLECOLON", &Lexer::mDOUBLECOLON, ":x.", 1, 2 },
        { "COLON", &Lexer::mCOLON, "x.", 1, 1 },
        { "NEWLN", &Lexer::mNEWLN, "x.", 4, 1 },
        { "LINECONT", &Lexer::mLINECONT, "x.", 1, 1 },
        { "LINECONT", &Lexer::mLINECONT, "\\x\n.", 1, 2 },
        { "OP", &Lexer::mOP, "!x.", 1, 2 },
        { "OP", &Lexer::mOP, "=x.", 1, 2 },
        { "OP", &Lexer::mOP, "iN.", 1, 2 },
        { "OP", &Lexer::mOP, "notim.", 1, 5 },
        { "UIDENT", &Lexer::mUIDENT, "a.", 1, 1 },
        { "LIDENT", &Lexer::mLIDENT, "A.", 1, 1 },
        { "INT", &Lexer::mINT, "x.", 5, 0 },
        { "HEX", &Lexer::mHEX, "0xg.", 5, 2 },
        { "HEX", &Lexer::mHEX, "0Xg.", 5, 2 },
        { "FLOAT", &Lexer::mFLOAT, ".5", 5, 0 },
        { "FLOAT", &Lexer::mFLOAT, "1x5", 1, 2 },
        { "FLOAT", &Lexer::mFLOAT, "1.x", 5, 2 },
        { "STRING", &Lexer::mSTRING, "x.", 1, 1 },
        { "STRING", &Lexer::mSTRING, "\"x\n.", 1, 2 },
        { "WS", &Lexer::mWS, "x.", 5, 0 },
        { "LINE_COMMENT", &Lexer::mLINE_COMMENT, "x.", 1, 1 },
        { "LINE_COMMENT", &Lexer::mLINE_COMMENT, "#\rx.", 1, 3 },
        { "AGENTNAME", &Lexer::mAGENTNAME, "aGentnamx.", 4, 9 },
        { "LOWMOUNTPRIO", &Lexer::mLOWMOUNTPRIO, "lowmountpri", 4, 11 },
    };
    for ( const FailingRule& row : rows ) {
        SCOPED_TRACE( std::string( row.name ) + " over " + row.text );
        BareLexer lexer( row.text );
        const ANTLR3_EXCEPTION* exception = lexer.run( row.rule );
        ASSERT_TRUE( exception );
        EXPECT_EQ( exception->type, row.kind );
        EXPECT_EQ( lexer.consumed(), row.consumed );
    }
}

TEST( LexerRules, WithoutAViableAlternativeNameTheirDecisionAndItsState ) {
    const struct {
        Rule rule;
        std::string text;
        std::uint32_t decision;
        std::uint32_t state;
    } rows[] = {
        { &Lexer::mOP, "x", 3, 0 },  { &Lexer::mOP, "", 3, 0 },    { &Lexer::mOP, "Notin", 3, 0 },
        { &Lexer::mHEX, "x", 7, 0 }, { &Lexer::mHEX, "", 7, 0 },   { &Lexer::mHEX, "1x1", 7, 0 },
        { &Lexer::mHEX, "0", 7, 1 }, { &Lexer::mHEX, "01", 7, 1 },
    };
    for ( const auto& row : rows ) {
        SCOPED_TRACE( "text: " + row.text );
        BareLexer lexer( row.text );
        const ANTLR3_EXCEPTION* exception = lexer.run( row.rule );
        ASSERT_TRUE( exception );
        EXPECT_EQ( exception->type, static_cast<ANTLR3_UINT32>( ANTLR3_NO_VIABLE_ALT_EXCEPTION ) );
        EXPECT_EQ( exception->decisionNum, row.decision );
        EXPECT_EQ( exception->state, row.state );
        EXPECT_STREQ( static_cast<const char*>( exception->message ), "" );
        EXPECT_EQ( lexer.consumed(), 0U );
    }
}

TEST( LexerRules, ForOneLetterTakeItInBothCasesAndNothingElse ) {
    const std::array<Rule, 26> fragments{
        &Lexer::mA, &Lexer::mB, &Lexer::mC, &Lexer::mD, &Lexer::mE, &Lexer::mF, &Lexer::mG,
        &Lexer::mH, &Lexer::mI, &Lexer::mJ, &Lexer::mK, &Lexer::mL, &Lexer::mM, &Lexer::mN,
        &Lexer::mO, &Lexer::mP, &Lexer::mQ, &Lexer::mR, &Lexer::mS, &Lexer::mT, &Lexer::mU,
        &Lexer::mV, &Lexer::mW, &Lexer::mX, &Lexer::mY, &Lexer::mZ };
    std::string everyByte;
    for ( unsigned byte = 0; byte < 256; ++byte )
        everyByte += static_cast<char>( byte );
    for ( std::size_t i = 0; i < fragments.size(); ++i ) {
        BareLexer lexer( everyByte );
        for ( unsigned byte = 0; byte < 256; ++byte ) {
            const ANTLR3_EXCEPTION* exception = lexer.run( fragments[i] );
            if ( byte == 'a' + i || byte == 'A' + i )
                EXPECT_FALSE( exception ) << "letter " << i << " over byte " << byte;
            else
                EXPECT_TRUE( exception && exception->type == ANTLR3_MISMATCHED_SET_EXCEPTION )
                    << "letter " << i << " over byte " << byte;
            ASSERT_EQ( lexer.consumed(), byte + 1 );
        }
    }
}

TEST( LexerRules, SetTheTypeAndSkippedOnesTheSkipToken ) {
    const struct {
        Rule rule;
        std::string text;
        std::uint32_t type;
        bool skipped;
    } rows[] = {
        { &Lexer::mWS, " \t x", WS, true },
        { &Lexer::mLINECONT, "\\\nx", LINECONT, true },
        { &Lexer::mLINECONT, "\\", LINECONT, true },
        { &Lexer::mLINE_COMMENT, "# a\nx", LINE_COMMENT, true },
        { &Lexer::mNEWLN, "\rx", NEWLN, false },
        { &Lexer::mSTRING, "\"a\"x", STRING, false },
        { &Lexer::mNODEFAULTMOUNTGROUP, "noDefaultMountGroup:", NODEFAULTMOUNTGROUP, false },
    };
    for ( const auto& row : rows ) {
        SCOPED_TRACE( "text: " + row.text );
        BareLexer lexer( row.text );
        EXPECT_FALSE( lexer.run( row.rule ) );
        EXPECT_EQ( lexer.state().type, row.type );
        EXPECT_EQ( lexer.state().token == &lexer.state().tokSource->skipToken, row.skipped );
        EXPECT_EQ( lexer.state().channel, static_cast<ANTLR3_UINT32>( ANTLR3_TOKEN_DEFAULT_CHANNEL ) );
    }
}

TEST( LexerObject, NamesItsGrammarFile ) {
    BareLexer lexer( "" );
    EXPECT_STREQ( lexer->getGrammarFileName(), "ProfileParserAntlr/mountProfile.g" );
}

TEST( LexerObject, IsMadeWithoutAHandlerAndWithAStateOfItsOwnOrASharedOne ) {
    BareLexer lexer( "a" );
    EXPECT_EQ( lexer->hdlr, nullptr );
    const pmountProfileLexer ownState = mountProfileLexerNewSSD( lexer.input(), nullptr );
    ASSERT_TRUE( ownState );
    EXPECT_NE( ownState->pLexer->rec->state, &lexer.state() );
    ownState->free( ownState );

    const pmountProfileLexer shared = mountProfileLexerNewSSD( lexer.input(), &lexer.state() );
    ASSERT_TRUE( shared );
    EXPECT_EQ( shared->pLexer->rec->state, &lexer.state() );
    EXPECT_EQ( shared->pLexer->input, lexer.input() );
    shared->pLexer->rec->state = nullptr; // who shares a state leaves it to the owner
    shared->free( shared );
}

TEST( LexerObject, ForgetsItsTokenWhenItIsReset ) {
    BareLexer lexer( "alias x" );
    const pANTLR3_TOKEN_SOURCE source = lexer.state().tokSource;
    ASSERT_EQ( source->nextToken( source )->type, static_cast<ANTLR3_UINT32>( ALIAS ) );
    ASSERT_TRUE( lexer.state().token );
    lexer->reset( lexer.operator->() );
    EXPECT_EQ( lexer.state().token, nullptr );
    EXPECT_EQ( lexer.state().type, static_cast<ANTLR3_UINT32>( ANTLR3_TOKEN_INVALID ) );
    EXPECT_EQ( lexer.state().tokenStartCharPositionInLine, -1 );
    EXPECT_EQ( source->nextToken( source )->type, static_cast<ANTLR3_UINT32>( LIDENT ) );
}

} // namespace

} // namespace CorvidTest
