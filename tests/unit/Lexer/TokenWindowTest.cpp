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
        : hdlr( "Agent", nullptr, nullptr, false ), tokens( hdlr, "Agent", text ) {}
    Corvid::MountProfileHdlr hdlr;
    Corvid::TokenWindow tokens;
};

bool isSame( const ANTLR3_COMMON_TOKEN& token, const LexedToken& expected ) {
    return token.type == expected.type &&
           Corvid::tokenText( const_cast<pANTLR3_COMMON_TOKEN>( &token ) ) == expected.text &&
           token.line == expected.line && token.charPosition == expected.position;
}

TEST( TokenWindows, ReportAllErrorsWhenLexingIsFinishedAndDoNotMove ) {
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
                ASSERT_TRUE( isSame( *window.tokens.token( 1 ), lexed.tokens[i] ) ) << "token " << i;
                window.tokens.consume();
            }
            EXPECT_EQ( window.tokens.type( 1 ), ANTLR3_TOKEN_EOF );
            window.tokens.finishLexing();
            window.tokens.consume();
            EXPECT_EQ( window.tokens.type( 1 ), ANTLR3_TOKEN_EOF );
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
    EXPECT_EQ( window.tokens.type( last + 1 ), ANTLR3_TOKEN_EOF );
    EXPECT_EQ( window.tokens.type( last + 100 ), ANTLR3_TOKEN_EOF );
    const ANTLR3_MARKER start = window.tokens.index();
    for ( int i = 0; i < 150; ++i )
        window.tokens.consume();
    EXPECT_TRUE( isSame( *window.tokens.token( -1 ), lexed.tokens[149] ) );
    EXPECT_TRUE( isSame( *window.tokens.tokenAt( start + 10 ), lexed.tokens[10] ) );
    window.tokens.indexIs( start );
    EXPECT_TRUE( isSame( *window.tokens.token( 1 ), lexed.tokens[0] ) );
}

TEST( TokenWindows, KeepTheLineEndWhenTheyForgetALine ) {
    const std::string text = "a b\nc d\ne";
    const LexedText lexed( text );
    Window window( text );
    std::size_t next = 0;
    for ( const int lineLength : { 3, 3 } ) {
        for ( int i = 0; i < lineLength; ++i, ++next ) {
            ASSERT_TRUE( isSame( *window.tokens.token( 1 ), lexed.tokens[next] ) );
            ASSERT_TRUE( window.tokens.matched( lexed.tokens[next].type ) );
        }
        window.tokens.lineIsRead();
        EXPECT_EQ( window.tokens.index(), static_cast<ANTLR3_MARKER>( next ) );
        EXPECT_TRUE( isSame( *window.tokens.token( -1 ), lexed.tokens[next - 1] ) );
        EXPECT_TRUE( isSame( *window.tokens.tokenAt( static_cast<ANTLR3_MARKER>( next - 1 ) ),
                             lexed.tokens[next - 1] ) );
    }
    EXPECT_FALSE( window.tokens.matched( COMMA ) );
    EXPECT_TRUE( isSame( *window.tokens.token( 1 ), lexed.tokens[next] ) );
}

TEST( TokenWindows, ForgetNothingThatTheParserHasLookedAt ) {
    const std::string text = "a\nb c\n";
    const LexedText lexed( text );
    Window window( text );
    const pANTLR3_COMMON_TOKEN ahead = window.tokens.token( 3 );
    window.tokens.consume();
    window.tokens.consume();
    window.tokens.lineIsRead();
    EXPECT_EQ( window.tokens.token( 1 ), ahead );
    EXPECT_TRUE( isSame( *ahead, lexed.tokens[2] ) );
}

} // namespace

} // namespace CorvidTest
