// The parser as an object: how it is made, what its context holds, and the hooks that keep errors from being
// repaired.

#include "ProfileParser/ErrorDescription.h"

#include <gtest/gtest.h>

#include "RuleRun.h"

namespace CorvidTest {

namespace {

using Corvid::TokenPath;

/// A parser as the generated code makes it, without the wiring of a parse.
class BareParser {
  public:
    BareParser()
        : input_( antlr3StringStreamNew( text_, ANTLR3_ENC_8BIT, 1, name_ ) ),
          lexer_( mountProfileLexerNew( input_ ) ),
          tokens_(
              antlr3CommonTokenStreamSourceNew( ANTLR3_SIZE_HINT, lexer_->pLexer->rec->state->tokSource ) ),
          parser_( mountProfileParserNew( tokens_ ) ) {}
    BareParser( const BareParser& ) = delete;
    BareParser& operator=( const BareParser& ) = delete;
    ~BareParser() {
        parser_->free( parser_ );
        tokens_->free( tokens_ );
        lexer_->free( lexer_ );
        input_->close( input_ );
    }

    [[nodiscard]] Parser* operator->() const { return parser_; }
    [[nodiscard]] Parser* get() const { return parser_; }
    [[nodiscard]] pANTLR3_COMMON_TOKEN_STREAM tokens() const { return tokens_; }

  private:
    ANTLR3_UINT8 text_[2] = { 'a', '\0' };
    ANTLR3_UINT8 name_[5] = { 't', 'e', 'x', 't', '\0' };
    pANTLR3_INPUT_STREAM input_;
    pmountProfileLexer lexer_;
    pANTLR3_COMMON_TOKEN_STREAM tokens_;
    Parser* parser_;
};

TEST( ParserObject, NamesItsGrammarFile ) {
    const BareParser parser;
    EXPECT_STREQ( parser->getGrammarFileName(), "ProfileParserAntlr/mountProfile.g" );
}

TEST( ParserObject, IsMadeZeroFilledWithTheTableOfTokenNames ) {
    const BareParser parser;
    EXPECT_EQ( parser->reportError, nullptr );
    EXPECT_EQ( parser->setErrorDesc, nullptr );
    EXPECT_EQ( parser->hdlr, nullptr );
    EXPECT_FALSE( parser->isIncludeFile );
    EXPECT_EQ( parser->section, 0 );
    EXPECT_EQ( parser->pParser->tstream, parser.tokens()->tstream );
    EXPECT_EQ( parser->pParser->rec->state->tokenNames, mountProfileParserTokenNames );
    EXPECT_EQ( ANTLR3_SIZE_HINT, 1025U );
}

TEST( ParserObject, IsMadeWithAStateOfItsOwnOrASharedOne ) {
    const BareParser parser;
    const pANTLR3_RECOGNIZER_SHARED_STATE state = parser->pParser->rec->state;
    const pmountProfileParser ownState = mountProfileParserNewSSD( parser.tokens(), nullptr );
    ASSERT_TRUE( ownState );
    EXPECT_NE( ownState->pParser->rec->state, state );
    EXPECT_EQ( ownState->pParser->rec->state->tokenNames, mountProfileParserTokenNames );
    ownState->free( ownState );
    const pmountProfileParser shared = mountProfileParserNewSSD( parser.tokens(), state );
    ASSERT_TRUE( shared );
    EXPECT_EQ( shared->pParser->rec->state, state );
    shared->pParser->rec->state = nullptr; // who shares a state leaves it to the owner
    shared->free( shared );
}

TEST( ParserObject, ForgetsItsErrorsWhenItIsReset ) {
    const RuleRun run( []( Parser* parser ) { parser->ident( parser ); }, "7", TokenPath::plain );
    const ANTLR3_RECOGNIZER_SHARED_STATE& state = *run.parser()->pParser->rec->state;
    EXPECT_TRUE( state.errorRecovery );
    EXPECT_EQ( state.errorCount, 1U );
    run.parser()->reset( run.parser() );
    EXPECT_FALSE( state.errorRecovery );
    EXPECT_EQ( state.errorCount, 0U );
}

TEST( ParserContext, KeepsTheKindOfFileAndTheSectionThatIsRead ) {
    const auto agentFile = []( Parser* parser ) { parser->profile( parser, false ); };
    const auto includeFile = []( Parser* parser ) { parser->profile( parser, true ); };
    const struct {
        std::function<void( Parser* )> rule;
        const char* text;
        bool isIncludeFile;
        std::int32_t section;
    } rows[] = {
        { agentFile, "", false, -1 },
        { agentFile, "agentName: )", false, 0 },
        { agentFile, "agentName: A-)", false, 0 },
        { agentFile, "agentName: A\nhybridMount x", false, -1 },
        { agentFile, "agentName: A\nmountFilter: f\na, b)", false, -1 },
        { agentFile, "agentName: A", false, 2 },
        { agentFile, "agentName: A\n/a, T\n", false, 2 },
        { agentFile, "agentName: A\n/a, T, r\nmountFilter: f)", false, 2 },
        { agentFile, "agentName: A\nmountGroup: )", false, 2 },
        { includeFile, "", true, -1 },
        { includeFile, "/a, T\n", true, 1 },
        { includeFile, "/a, T, r", true, 1 },
    };
    for ( const auto& row : rows )
        for ( const TokenPath path : { TokenPath::fast, TokenPath::plain } ) {
            const RuleRun run( row.rule, row.text, path );
            EXPECT_EQ( run.parser()->isIncludeFile, row.isIncludeFile ) << row.text;
            EXPECT_EQ( run.parser()->section, row.section ) << row.text;
        }
}

TEST( ParserHooks, AreThoseThatRepairNothing ) {
    const RuleRun run( []( Parser* ) {}, "", TokenPath::fast );
    const ANTLR3_BASE_RECOGNIZER& recognizer = *run.parser()->pParser->rec;
    EXPECT_EQ( recognizer.mismatch, Corvid::mismatch );
    EXPECT_EQ( recognizer.recoverFromMismatchedToken, Corvid::recoverFromMismatchedToken );
    EXPECT_EQ( recognizer.recoverFromMismatchedSet, Corvid::recoverFromMismatchedSet );
    EXPECT_EQ( run.parser()->setErrorDesc, Corvid::setParserErrorDesc );
}

// The library's own hook would print, clear the error and let the rule pass.
TEST( ParserHooks, LeaveAMismatchedSetAnError ) {
    const RuleRun run( []( Parser* parser ) { parser->number( parser ); }, "-x", TokenPath::plain );
    const pANTLR3_BASE_RECOGNIZER recognizer = run.parser()->pParser->rec;
    ASSERT_TRUE( recognizer->state->error );
    testing::internal::CaptureStderr();
    EXPECT_EQ( recognizer->recoverFromMismatchedSet( recognizer, nullptr ), nullptr );
    EXPECT_EQ( testing::internal::GetCapturedStderr(), "" );
    EXPECT_TRUE( recognizer->state->error );
    EXPECT_TRUE( recognizer->state->errorRecovery );
    EXPECT_EQ( run.next(), "LIDENT" );
    EXPECT_EQ( recognizer->state->exception->type,
               static_cast<ANTLR3_UINT32>( ANTLR3_MISMATCHED_SET_EXCEPTION ) );
}

TEST( ParserHooks, ConsumeAndInsertNothingAtAMismatchedToken ) {
    for ( const TokenPath path : { TokenPath::fast, TokenPath::plain } )
        for ( const char* text : { "/a ), T, r", "/a? T, r", "/a = r" } ) {
            testing::internal::CaptureStderr();
            const RuleRun run( []( Parser* parser ) { parser->mountEntry( parser ); }, text, path );
            EXPECT_EQ( testing::internal::GetCapturedStderr(), "" );
            EXPECT_EQ( run.next(), run.error().token ) << text;
            EXPECT_EQ( run.reports(), "21" ) << text;
            EXPECT_TRUE( run.hdlr().currMg()->mountProfile().empty() );
        }
}

} // namespace

} // namespace CorvidTest
