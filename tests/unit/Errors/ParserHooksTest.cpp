// The hooks, called directly: what the parser of a file never lets happen.

#include <gtest/gtest.h>

#include "unit/Errors/ParserScene.h"

namespace {

using namespace CorvidTest;

enum Kind : ANTLR3_UINT32 {
    recognition = 1,
    mismatched,
    noViable,
    mismatchedSet,
    earlyExit,
    predicate,
    unwanted = 9,
    missing
};

constexpr ANTLR3_UINT32 endOfInput = ANTLR3_TOKEN_EOF;

TEST( ParserErrorDescription, NamesTheExpectedTokenInTheKindsThatExpectOne ) {
    ParserScene scene( "x" );
    EXPECT_EQ( scene.describe( mismatched, COMMA ), " near 'x',  Expected COMMA" );
    EXPECT_EQ( scene.describe( unwanted, COMMA ), " near 'x',  Extraneous input - expected COMMA" );
    EXPECT_EQ( scene.describe( missing, COMMA ), " near 'x',  Missing COMMA" );
    EXPECT_EQ( scene.describe( mismatched, endOfInput ), " near 'x',  Expected <EOF>" );
    EXPECT_EQ( scene.describe( unwanted, endOfInput ), " near 'x',  Extraneous input - expected <EOF>" );
    EXPECT_EQ( scene.describe( missing, endOfInput ), " near 'x',  Missing <EOF>" );
}

TEST( LastText, IsNoTextThatIsLongerThanTheStatement ) {
    for ( const auto path : { Corvid::TokenPath::plain, Corvid::TokenPath::fast } ) {
        ParserScene scene( "a b c", Corvid::topLevel, path );
        const pANTLR3_INT_STREAM tokens = scene.tokens()->istream;
        tokens->_LA( tokens, 1 );
        tokens->consume( tokens );
        tokens->consume( tokens );
        EXPECT_EQ( Corvid::lastText( scene.parser(), "ab" ), "a b" );
        EXPECT_EQ( Corvid::lastText( scene.parser(), "xab" ), "" );
        EXPECT_EQ( Corvid::lastText( scene.parser(), "a", "b" ), "a" );
        EXPECT_EQ( Corvid::lastText( scene.parser(), "b", "b" ), "" );
        EXPECT_EQ( Corvid::lastText( scene.parser(), "a", "x" ), "" );
        EXPECT_EQ( Corvid::lastText( scene.parser(), "", "xab" ), "" );
    }
}

TEST( ParserErrorDescription, KnowsEveryNameOfTheTable ) {
    ParserScene scene( "x" );
    const pANTLR3_UINT8* names = scene.recognizer()->state->tokenNames;
    for ( ANTLR3_UINT32 type = 4; type <= 66; ++type )
        EXPECT_EQ( scene.describe( missing, type ),
                   " near 'x',  Missing " + std::string( reinterpret_cast<const char*>( names[type] ) ) );
}

TEST( ParserErrorDescription, DoesWithoutATableOfNames ) {
    ParserScene scene( "x" );
    for ( const ANTLR3_UINT32 expected : { ANTLR3_UINT32( COMMA ), endOfInput } ) {
        EXPECT_EQ( scene.describe( mismatched, expected, 1, nullptr ),
                   " near 'x',  Unexpected characters..." );
        EXPECT_EQ( scene.describe( unwanted, expected, 1, nullptr ), " near 'x',  Extraneous input..." );
        EXPECT_EQ( scene.describe( missing, expected, 1, nullptr ), " near 'x',  Missing characters..." );
    }
}

TEST( ParserErrorDescription, HasNoKindMessageForTheOtherKinds ) {
    ParserScene scene( "x" );
    for ( const ANTLR3_UINT32 kind : { noViable, mismatchedSet, earlyExit, predicate } )
        EXPECT_EQ( scene.describe( kind ), " near 'x', Syntax error." ) << kind;
    EXPECT_EQ( scene.describe( 7 ), " near 'x', Syntax error." );
    // Without a message of its own, a recognition error tells no more.
    EXPECT_EQ( scene.describe( recognition ), " near 'x',  Syntax error..." );
}

TEST( ParserErrorDescription, AppendsTheHintToTheKindMessageWithoutASeparator ) {
    ParserScene scene( "x" );
    EXPECT_EQ( scene.describe( earlyExit, 0, 27 ), " near 'x', Expecting end of line" );
    EXPECT_EQ( scene.describe( earlyExit, 0, 28 ),
               " near 'x', Invalid mount group id. Expecting combination of: [number, identifier, '-'] " );
    EXPECT_EQ( scene.describe( noViable, 0, 27 ), " near 'x', Syntax error." );
}

TEST( ParserErrorDescription, PutsThePrefixOfTheSectionInFront ) {
    const auto prefixOf = []( ANTLR3_INT32 section ) {
        ParserScene scene( "x", section );
        return scene.describe( missing, COMMA );
    };
    EXPECT_EQ( prefixOf( 0 ), " In agent title,  near 'x',  Missing COMMA" );
    EXPECT_EQ( prefixOf( 1 ), " In include file,  near 'x',  Missing COMMA" );
    EXPECT_EQ( prefixOf( 2 ), " In mount group '' ,  near 'x',  Missing COMMA" );
    EXPECT_EQ( prefixOf( -1 ), " near 'x',  Missing COMMA" );
    EXPECT_EQ( prefixOf( 3 ), " near 'x',  Missing COMMA" );
}

TEST( ParserErrorDescription, LeavesOutATokenThatTheExceptionDoesNotCarry ) {
    ParserScene scene( "x" );
    scene.recognizer()->exConstruct( scene.recognizer() );
    scene.recognizer()->state->exception->token = nullptr;
    scene.recognizer()->state->exception->expecting = COMMA;
    Corvid::setParserErrorDesc( scene.parser(), scene.recognizer()->state->tokenNames, 1 );
    EXPECT_EQ( scene.description(), " Expected COMMA" );
}

TEST( ParserErrorDescription, TellsTheEndOfInput ) {
    ParserScene scene( "" );
    const pANTLR3_INT_STREAM tokens = scene.tokens()->istream;
    ASSERT_EQ( tokens->_LA( tokens, 1 ), ANTLR3_UINT32( NEWLN ) ); // the appended one
    tokens->consume( tokens );
    EXPECT_EQ( scene.describe( missing, COMMA ), " at <EOF>,  Missing COMMA" );
    EXPECT_EQ( scene.error().line(), 2U );
    EXPECT_EQ( scene.error().charPositionInLine(), 0 );
}

/// The kind and the name of the exception that a token other than the expected one raises.
std::string classified( std::string_view text, ANTLR3_UINT32 expected, pANTLR3_BITSET_LIST follow ) {
    ParserScene scene( text );
    Corvid::mismatch( scene.recognizer(), expected, follow );
    const ANTLR3_EXCEPTION& exception = *scene.recognizer()->state->exception;
    EXPECT_TRUE( scene.recognizer()->state->error );
    EXPECT_EQ( exception.expecting, expected );
    EXPECT_EQ( scene.tokens()->istream->index( scene.tokens()->istream ), 0 ) << "a token was consumed";
    return std::to_string( exception.type ) + " " + static_cast<const char*>( exception.name );
}

TEST( Mismatch, IsClassifiedByTheTokensAround ) {
    // What could follow the expected token: a bit for each token type.
    ANTLR3_BITWORD onlyComma[] = { ANTLR3_BITWORD( 1 ) << COMMA };
    ANTLR3_BITSET_LIST comma{ onlyComma, 1 };

    EXPECT_EQ( classified( "x /", SLASH, &comma ), "9 org.antlr.runtime.UnwantedTokenException" );
    EXPECT_EQ( classified( ", x", SLASH, &comma ), "10 org.antlr.runtime.MissingTokenException" );
    EXPECT_EQ( classified( "x x", SLASH, &comma ), "2 org.antlr.runtime.MismatchedTokenException" );
    // Both hold: unwanted goes first.
    EXPECT_EQ( classified( ", /", SLASH, &comma ), "9 org.antlr.runtime.UnwantedTokenException" );
    // Nothing is known about what follows: never missing.
    EXPECT_EQ( classified( ", x", SLASH, nullptr ), "2 org.antlr.runtime.MismatchedTokenException" );
    EXPECT_EQ( classified( "", ANTLR3_TOKEN_EOF, nullptr ), "9 org.antlr.runtime.UnwantedTokenException" );
}

TEST( Mismatch, AtTheEndOfARuleIsMissingWhateverStandsThere ) {
    ANTLR3_BITWORD onlyEndOfRule[] = { ANTLR3_BITWORD( 1 ) << ANTLR3_EOR_TOKEN_TYPE };
    ANTLR3_BITSET_LIST endOfRule{ onlyEndOfRule, 1 };
    ParserScene scene( "x x" );
    const pANTLR3_BASE_RECOGNIZER recognizer = scene.recognizer();
    ANTLR3_BITSET_LIST atTheBottom = endOfRule;
    recognizer->state->following->push( recognizer->state->following, &atTheBottom, nullptr );
    Corvid::mismatch( recognizer, SLASH, &endOfRule );
    EXPECT_EQ( recognizer->state->exception->type, 10U );
}

TEST( MismatchedToken, IsNeverRepaired ) {
    ANTLR3_BITWORD onlyComma[] = { ANTLR3_BITWORD( 1 ) << COMMA };
    ANTLR3_BITSET_LIST comma{ onlyComma, 1 };
    // The library would drop the x in the first text, and invent the slash in the second.
    for ( const std::string_view text : { "x /", ", x" } ) {
        ParserScene scene( text );
        const pANTLR3_BASE_RECOGNIZER recognizer = scene.recognizer();
        EXPECT_EQ( recognizer->recoverFromMismatchedToken( recognizer, SLASH, &comma ), nullptr );
        EXPECT_TRUE( recognizer->state->error );
        EXPECT_EQ( scene.tokens()->istream->index( scene.tokens()->istream ), 0 );
        EXPECT_EQ( recognizer->match( recognizer, SLASH, &comma ), nullptr );
        EXPECT_EQ( scene.tokens()->istream->index( scene.tokens()->istream ), 0 );
        EXPECT_EQ( recognizer->state->errorCount, 0U ) << "it is the failing rule that reports";
        EXPECT_TRUE( scene.hdlr().validProfileFile() );
    }
}

TEST( MismatchedToken, IsClassifiedByTheHookThatIsInstalled ) {
    ParserScene scene( "x" );
    const pANTLR3_BASE_RECOGNIZER recognizer = scene.recognizer();
    EXPECT_EQ( recognizer->mismatch, Corvid::mismatch );
    EXPECT_EQ( recognizer->recoverFromMismatchedToken, Corvid::recoverFromMismatchedToken );
    static ANTLR3_UINT32 seen;
    recognizer->mismatch = []( pANTLR3_BASE_RECOGNIZER, ANTLR3_UINT32 expected, pANTLR3_BITSET_LIST ) {
        seen = expected;
    };
    EXPECT_EQ( Corvid::recoverFromMismatchedToken( recognizer, SLASH, nullptr ), nullptr );
    EXPECT_EQ( seen, ANTLR3_UINT32( SLASH ) );
}

TEST( MismatchedSet, KeepsItsErrorWhicheverTemplateTheToolUses ) {
    ParserScene scene( "x 1" );
    const pANTLR3_BASE_RECOGNIZER recognizer = scene.recognizer();
    recognizer->exConstruct( recognizer );
    ANTLR3_BITWORD onlyNumber[] = { ANTLR3_BITWORD( 1 ) << INT };
    ANTLR3_BITSET_LIST number{ onlyNumber, 1 };
    EXPECT_EQ( recognizer->recoverFromMismatchedSet( recognizer, &number ), nullptr );
    EXPECT_TRUE( recognizer->state->error );
    EXPECT_EQ( scene.tokens()->istream->index( scene.tokens()->istream ), 0 );
}

} // namespace
