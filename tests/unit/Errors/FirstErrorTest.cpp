#include "support/ParsedProfile.h"

#include "unit/Errors/ParserScene.h"

namespace {

using namespace CorvidTest;

/// Parses an agent file and answers the recogniser, the description and the place of the recorded error.
std::string recorded( const std::string& text, const std::map<std::string, std::string>& files = {} ) {
    const ParsedProfile parsed( text, { .files = files } );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    return parsed.error().recognizer().str() + " " + std::to_string( parsed.error().line() ) + ": " +
           parsed.description();
}

TEST( FirstError, WinsOverEveryLaterOne ) {
    // Two of one sort.
    EXPECT_EQ( recorded( "agentName: Fan\n{\n[\n" ), "lexer 2: Unrecongnized character , near '{'\n" );
    // All tokens of a file are read before its first line is parsed: the lexer's error comes first.
    EXPECT_EQ( recorded( "agentName: :\n{\n" ), "lexer 2: Unrecongnized character , near '{'\n" );
    EXPECT_EQ( recorded( "agentName: Fan\n/a, T, X\n{\n" ), "lexer 3: Unrecongnized character , near '{'\n" );
    // A syntax error is the last thing that a parser sees.
    EXPECT_EQ( recorded( "agentName: Fan\nhybridMount x\nrootFlags: X\n" ),
               "parser 2:  near 'x', Expecting end of line." );
    EXPECT_EQ( recorded( "agentName: Fan\nrootFlags: X\nhybridMount x\n" ),
               "parser 2:  near '\\n', illegal flag 'X'" );
    // Two failed checks before the same match: the exception of the later one lies on top when the rule
    // reports.
    EXPECT_EQ( recorded( "agentName: Fan\nalias: %a = %x, %y\n" ),
               "parser 2:  near ',', Reference to undeclared template key %x" );
}

TEST( FirstError, OfAnIncludeFileWinsOverWhatTheAgentFileMakesOfIt ) {
    const std::string agent = "agentName: Fan\ninclude: inc*\n";
    EXPECT_EQ( recorded( agent, { { "inc1", "/a, T, X\n" }, { "inc2", "{" } } ),
               "parser 1:  In include file,  near '\\n', illegal flag 'X'" );
    EXPECT_EQ( recorded( agent, { { "inc1", "/a, T, r\n" }, { "inc2", "/b, T, r\n{\n" } } ),
               "lexer 2: Unrecongnized character , near '{'\n" );
    // An error of the agent file's lexer comes before all includes, which are still parsed.
    EXPECT_EQ( recorded( agent + "{\n", { { "inc1", "[" } } ),
               "lexer 3: Unrecongnized character , near '{'\n" );
}

TEST( FirstError, LeavesTheRecordAsItWasAtThatMoment ) {
    const ParsedProfile parsed( "agentName: Fan\n/a, T, r\n/b = , T, r\n/c, T, r\nmountGroup: g\n" );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    EXPECT_EQ( parsed.dump(), "agent Fan\ngroup all 99\na T r\n" );
}

TEST( FirstError, OfTheLexerDoesNotStopTheParse ) {
    const ParsedProfile parsed( "agentName: Fan\n/a, T, r {\n/b, T, r\nmountGroup: g\n" );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    EXPECT_EQ( parsed.description(), "Unrecongnized character , near '{'\n" );
    EXPECT_EQ( parsed.dump(), "agent Fan\ngroup all 99\na T r\nb T r\ngroup g 99\n" );
}

TEST( FirstError, WithoutATitleLineLeavesNoProfile ) {
    for ( const char* text : { "{\n", "agentName:\n", "agentName: \"x\"\n" } ) {
        const ParsedProfile parsed( text );
        EXPECT_EQ( parsed.outcome(), "invalid" ) << text;
        EXPECT_EQ( parsed.dump(), "no profile\n" ) << text;
        EXPECT_TRUE( parsed.root().agentProfile().empty() ) << text;
    }
}

TEST( FirstError, OfAnIncludeFileIsRaisedInTheAgentFileToo ) {
    // Nobody sees that message, because the include file's error is already recorded. Make the file valid
    // again in between, where the handler traces what it is about to do.
    const TempDir dir;
    dir.file( "inc", "/a, T, X\n" );
    const auto agentFile = dir.file( "Agent", "agentName: Fan\ninclude: inc\n" );
    Corvid::MountProfileHdlr hdlr( agentFile, new Corvid::PassiveAgentProfileDir, nullptr, false );
    const CapturedTrace restoredAtTheEnd;
    int seen = 0;
    Kiv::Embedded::traceSinkIs(
        [&]( const Kiv::TraceHandle&, unsigned, const char*, unsigned, std::string_view text ) {
            if ( text == "Include file parser found error. Constructing handler exception to inform this to "
                         "agent file parser" ) {
                ++seen;
                EXPECT_EQ( hdlr.errorDesc().description().str(),
                           " In include file,  near '\\n', illegal flag 'X'" );
                hdlr.validProfileFileIs( true );
            }
        } );
    const CapturedStandardError silent;
    hdlr.run();
    EXPECT_EQ( seen, 1 );
    EXPECT_EQ( hdlr.errorDesc().description().str(),
               " In mount group 'all' ,  near '\\n', "
               "Mount profile is invalid due to error in include file: " +
                   dir.path() + "/inc" );
    EXPECT_EQ( hdlr.errorDesc().line(), 2U );
    EXPECT_EQ( hdlr.errorDesc().charPositionInLine(), 12 );
    EXPECT_EQ( hdlr.errorDesc().exceptionType(), 2U );
}

TEST( HandlerMessage, IsUsedForOneDescriptionOnly ) {
    const TempDir dir;
    const auto failedCheck = dir.file( "FailedCheck", "agentName: Fan\n/a, T, X\n" );
    const auto syntaxError = dir.file( "SyntaxError", "agentName: Fan\n/a : T\n" );
    Corvid::MountProfileHdlr hdlr( failedCheck, new Corvid::PassiveAgentProfileDir, nullptr, false );
    hdlr.parseFile( failedCheck, false );
    EXPECT_EQ( hdlr.errorDesc().description().str(),
               " In mount group 'all' ,  near '\\n', illegal flag 'X'" );
    hdlr.validProfileFileIs( true );
    hdlr.parseFile( syntaxError, false );
    EXPECT_EQ( hdlr.errorDesc().description().str(),
               " In mount group 'all' ,  near ':', Invalid keyword before ':'" );
}

TEST( ErrorCount, RisesForEveryErrorOfTheLexer ) {
    ParserScene scene( "agentName: Fan\n{\n[ _\n" );
    scene.parser()->profile( scene.parser(), false );
    EXPECT_EQ( scene.lexer()->rec->state->errorCount, 3U );
    EXPECT_EQ( scene.recognizer()->state->errorCount, 0U );
    EXPECT_EQ( scene.description(), "Unrecongnized character , near '{'\n" );
}

TEST( ErrorCount, RisesOnceForAnErrorThatManyRulesReport ) {
    ParserScene scene( "agentName: Fan\nmountGroup: g\ncondition: 1 == /a.Foo\n" );
    scene.parser()->profile( scene.parser(), false );
    EXPECT_EQ( scene.recognizer()->state->errorCount, 1U );
    EXPECT_TRUE( scene.recognizer()->state->errorRecovery );
    EXPECT_EQ( scene.description(), " In mount group 'g' ,  near 'Foo', Invalid attribute name" );
}

TEST( ErrorCount, OfTheParserRisesAlsoWhenTheFileIsAlreadyInvalid ) {
    ParserScene scene( "agentName: Fan\n/a, 5 {\n" );
    scene.parser()->profile( scene.parser(), false );
    EXPECT_EQ( scene.lexer()->rec->state->errorCount, 1U );
    EXPECT_EQ( scene.recognizer()->state->errorCount, 1U );
    EXPECT_EQ( scene.description(), "Unrecongnized character , near '{'\n" );
}

TEST( ParserReport, ChangesNothingDuringRecoveryAndDescribesNothingInAnInvalidFile ) {
    ParserScene scene( "x y" );
    const pANTLR3_BASE_RECOGNIZER recognizer = scene.recognizer();
    recognizer->exConstruct( recognizer );
    recognizer->state->errorRecovery = ANTLR3_TRUE;
    Corvid::reportParserError( scene.parser(), 1 );
    EXPECT_EQ( recognizer->state->errorCount, 0U );
    EXPECT_TRUE( scene.hdlr().validProfileFile() );

    recognizer->state->errorRecovery = ANTLR3_FALSE;
    Corvid::reportParserError( scene.parser(), 1 );
    EXPECT_EQ( recognizer->state->errorCount, 1U );
    EXPECT_TRUE( recognizer->state->errorRecovery );
    EXPECT_FALSE( scene.hdlr().validProfileFile() );
    const Corvid::RecognitionError first = scene.error();
    EXPECT_FALSE( first.description().empty() );

    scene.tokens()->istream->consume( scene.tokens()->istream );
    recognizer->exConstruct( recognizer );
    recognizer->state->errorRecovery = ANTLR3_FALSE;
    Corvid::reportParserError( scene.parser(), 27 );
    EXPECT_EQ( recognizer->state->errorCount, 2U );
    EXPECT_TRUE( recognizer->state->errorRecovery );
    EXPECT_EQ( scene.error(), first );
}

TEST( Reports, GoThroughTheHooksThatAreInstalled ) {
    ParserScene scene( "{" );
    static int described;
    described = 0;
    scene.lexer()->rec->displayRecognitionError = []( pANTLR3_BASE_RECOGNIZER, pANTLR3_UINT8* ) {
        ++described;
    };
    scene.parser()->setErrorDesc = []( mountProfileParser_Ctx_struct*, pANTLR3_UINT8* names,
                                       ANTLR3_INT32 rule ) {
        EXPECT_STREQ( reinterpret_cast<const char*>( names[COMMA] ), "COMMA" );
        described += rule;
    };
    scene.parser()->profile( scene.parser(), false );
    EXPECT_EQ( described, 1 );
    scene.hdlr().validProfileFileIs( true );
    Corvid::reportParserError( scene.parser(), 30 );
    EXPECT_EQ( described, 31 );
    EXPECT_FALSE( scene.hdlr().validProfileFile() );
}

TEST( ParserLibrary, PrintsNothingAndRepairsNothing ) {
    const std::vector<std::string> lines{ "{\n",
                                          "_ [ ; \x80\n",
                                          "0x \n",
                                          "1.\n",
                                          "\"abc",
                                          "\\ x\n",
                                          "!\n",
                                          "# a\rb\n",
                                          "/a = , T, r\n",
                                          "/a? T, r\n",
                                          "/a, T\n",
                                          "mountGroup: g\ncondition: -x == /a.b\n",
                                          "mountGroup: g\ncondition: - == /a.b\n",
                                          "/a, t, r\n",
                                          "/a, T, 5\n",
                                          "= x\n",
                                          "/a, T, X\n",
                                          "mountGroup: all\n",
                                          "include: none\n",
                                          "include: inc\n" };
    for ( const std::string& text : lines ) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        // The handler's own line goes into std::cerr, which the helper has taken; what the library prints
        // does not.
        const ParsedProfile parsed( "agentName: Fan\n" + text, { .files = { { "inc", "- : x {\n" } } } );
        EXPECT_EQ( testing::internal::GetCapturedStdout(), "" ) << text;
        EXPECT_EQ( testing::internal::GetCapturedStderr(), "" ) << text;
        EXPECT_EQ( parsed.standardError(), parsed.error().composeErrorDescMessage().str() + "\n" ) << text;
        EXPECT_EQ( parsed.outcome(), "invalid" ) << text;
    }
}

} // namespace
