// The parser's token window: what it must keep although it reads tokens late and forgets them early.

#include "LexedText.h"

#include "ProfileParser/TokenWindow.h"

#include <gtest/gtest.h>

#include "ProfileParser/GeneratedParser.h"

namespace CorvidTest {

namespace {

const char* const texts[] = {
    "",
    "a",
    "agentName: A\n/a, T, r\n",
    "{ a {\n} b 1. c\n\"open\nd \\x\ne !f # g\rh\n",
    "a\nb {",
    "a b c\n\n\"open",
    "{",
    "x # note\\\n\\\n{ y 0x",
};

struct Window {
    explicit Window( std::string_view text )
        : hdlr( "Agent", nullptr, nullptr, false ), tokens( hdlr, "Agent", text ) {
        tokens.begin();
    }
    Corvid::MountProfileHdlr hdlr;
    Corvid::TokenWindow tokens;
};

bool isSame( const ANTLR3_COMMON_TOKEN& token, const LexedToken& expected ) {
    return token.type == expected.type &&
           Corvid::tokenText( const_cast<pANTLR3_COMMON_TOKEN>( &token ) ) == expected.text &&
           token.line == expected.line && token.charPosition == expected.position;
}

TEST( TokenWindows, ReportTheFirstErrorWhenLexingIsFinishedAndDoNotMove ) {
    for ( const char* text : texts ) {
        const LexedText lexed( text );
        for ( std::size_t before = 0; before <= lexed.tokens.size(); ++before ) {
            SCOPED_TRACE( escaped( text ) + ", finished before token " + std::to_string( before ) );
            Window window( text );
            for ( std::size_t i = 0; i < lexed.tokens.size(); ++i ) {
                if ( i == before ) {
                    window.tokens.finishLexing();
                    EXPECT_EQ( window.hdlr.errorDesc().description().str(), lexed.description );
                    EXPECT_EQ( window.hdlr.validProfileFile(), lexed.errors.empty() );
                }
                ASSERT_TRUE( isSame( *window.tokens.current(), lexed.tokens[i] ) ) << "token " << i;
                window.tokens.consume();
            }
            EXPECT_EQ( window.tokens.current()->type, ANTLR3_TOKEN_EOF );
            window.tokens.finishLexing();
            window.tokens.consume();
            EXPECT_EQ( window.tokens.current()->type, ANTLR3_TOKEN_EOF );
            EXPECT_EQ( window.hdlr.errorDesc().description().str(), lexed.description );
        }
    }
}

TEST( TokenWindows, LookAheadAndGoBackOverAnyNumberOfTokens ) {
    std::string text = "first\n";
    for ( int i = 0; i < 200; ++i )
        text += "a, ";
    const LexedText lexed( text );
    Window window( text );
    const auto last = static_cast<int>( lexed.tokens.size() );
    EXPECT_EQ( window.tokens.token( -1 ), nullptr );
    EXPECT_TRUE( isSame( *window.tokens.token( last ), lexed.tokens.back() ) );
    EXPECT_EQ( window.tokens.token( last + 1 )->type, ANTLR3_TOKEN_EOF );
    EXPECT_EQ( window.tokens.token( last + 100 )->type, ANTLR3_TOKEN_EOF );
    const ANTLR3_MARKER start = window.tokens.index();
    for ( int i = 0; i < 150; ++i )
        window.tokens.consume();
    EXPECT_TRUE( isSame( *window.tokens.token( -1 ), lexed.tokens[149] ) );
    EXPECT_TRUE( isSame( *window.tokens.previous(), lexed.tokens[149] ) );
    window.tokens.indexIs( start );
    EXPECT_TRUE( isSame( *window.tokens.current(), lexed.tokens[0] ) );
}

TEST( TokenWindows, KeepTheLineEndWhenTheyForgetALine ) {
    const std::string text = "a b\nc d\ne";
    const LexedText lexed( text );
    Window window( text );
    for ( std::size_t next = 0; next < lexed.tokens.size(); ++next ) {
        ASSERT_TRUE( isSame( *window.tokens.current(), lexed.tokens[next] ) );
        EXPECT_EQ( window.tokens.index(), static_cast<ANTLR3_MARKER>( next ) );
        window.tokens.step( lexed.tokens[next].type == NEWLN );
        EXPECT_TRUE( isSame( *window.tokens.previous(), lexed.tokens[next] ) );
        EXPECT_TRUE( isSame( *window.tokens.token( -1 ), lexed.tokens[next] ) );
    }
}

TEST( TokenWindows, KnowTheTokensOfTheLineAndTheLineEndInFront ) {
    const LexedText lexed( "a\nb c d" );
    Window window( "a\nb c d" );
    for ( int i = 0; i < 4; ++i )
        window.tokens.step( lexed.tokens[static_cast<std::size_t>( i )].type == NEWLN );
    EXPECT_TRUE( isSame( *window.tokens.token( -1 ), lexed.tokens[3] ) );
    EXPECT_TRUE( isSame( *window.tokens.token( -2 ), lexed.tokens[2] ) );
    EXPECT_TRUE( isSame( *window.tokens.token( -3 ), lexed.tokens[1] ) );
    EXPECT_EQ( window.tokens.token( -4 ), nullptr );
}

TEST( TokenWindows, ForgetNothingThatTheParserHasLookedAt ) {
    const std::string text = "a\nb c\n";
    const LexedText lexed( text );
    Window window( text );
    const pANTLR3_COMMON_TOKEN ahead = window.tokens.token( 3 );
    window.tokens.step( false );
    window.tokens.step( true );
    EXPECT_EQ( window.tokens.current(), ahead );
    EXPECT_TRUE( isSame( *ahead, lexed.tokens[2] ) );
}

TEST( TokenWindows, ForgetNothingThatTheParserHasLookedAtInTheNextBlock ) {
    std::string text; // a line that fills a block to its end
    for ( int i = 0; i < 31; ++i )
        text += "a ";
    text += "\nb c\n";
    const LexedText lexed( text );
    Window window( text );
    const pANTLR3_COMMON_TOKEN ahead = window.tokens.token( 34 );
    for ( int i = 0; i < 31; ++i )
        window.tokens.step( false );
    window.tokens.step( true );
    EXPECT_TRUE( isSame( *window.tokens.current(), lexed.tokens[32] ) );
    EXPECT_TRUE( isSame( *window.tokens.token( -1 ), lexed.tokens[31] ) );
    EXPECT_EQ( window.tokens.token( 2 ), ahead );
    EXPECT_TRUE( isSame( *ahead, lexed.tokens[33] ) );
}

TEST( TokenWindows, LookAheadOverMoreTokensThanTheyKeepOfALongLine ) {
    constexpr std::ptrdiff_t many = 9000;
    std::string text;
    for ( std::ptrdiff_t i = 0; i < many; ++i )
        text += "a ";
    Window window( text );
    const auto textAhead = [&window]( int k ) {
        return Corvid::tokenText( window.tokens.token( k ) ).data();
    };
    EXPECT_EQ( textAhead( many ), text.data() + 2 * ( many - 1 ) );
    EXPECT_EQ( textAhead( 1 ), text.data() );
    for ( std::ptrdiff_t i = 0; i < many; ++i ) {
        ASSERT_EQ( textAhead( 1 ), text.data() + 2 * i );
        window.tokens.consume();
    }
}

TEST( TokenWindows, JoinTheTextsOfTokensOnOneBlockAndOnSeveral ) {
    for ( const std::size_t count : { 1U, 2U, 31U, 32U, 33U, 64U, 65U, 200U } )
        for ( const bool adjacent : { true, false } ) {
            SCOPED_TRACE( testing::Message() << count << " tokens" << ( adjacent ? "" : " apart" ) );
            std::string text;
            std::string expected;
            for ( std::size_t i = 0; i < count; ++i ) {
                text += i % 2 == 0 ? "ab" : adjacent ? "-" : " - ";
                expected += i % 2 == 0 ? "ab" : "-";
            }
            Window window( text );
            const pANTLR3_COMMON_TOKEN first = window.tokens.current();
            for ( std::size_t i = 0; i < count; ++i )
                window.tokens.step( false );
            const pANTLR3_COMMON_TOKEN last = window.tokens.previous();
            std::string joined = "x";
            window.tokens.appendTexts( joined, first, last );
            EXPECT_EQ( joined, "x" + expected );
            const bool inOneBlock = count <= 31;
            EXPECT_EQ( window.tokens.areAdjacent( first, last ), inOneBlock && ( adjacent || count == 1 ) );
        }
}

} // namespace

} // namespace CorvidTest
