// The whole job: every way in which run() can end, what it traces and prints, and in which order.

#include "HandlerTesting.h"

#include <stdexcept>
#include <system_error>

using namespace CorvidTest;

namespace {

constexpr char raisedDuringParse[] =
    "8 void Corvid::MountProfileHdlr::constructHdlrException(const string&)\n"
    "1 Constucting handler exception, occured while parsing agent file\n";

class RunTest : public HandlerTest {
  protected:
    static std::string invalidFile( const Bench& bench ) {
        return "1 Invalid profile file " + bench.agentFile + "\n";
    }
    /// The exception's text, or what there was instead of a std::runtime_error.
    static std::string runtimeErrorOf( const std::function<void()>& action ) {
        try {
            action();
        } catch ( const std::runtime_error& error ) {
            return typeid( error ) == typeid( std::runtime_error ) ? error.what() : "of a derived class";
        }
        return "nothing thrown";
    }
};
using RunDeathTest = RunTest;

TEST_F( RunTest, AValidFileLeavesAValidProfileAndSaysNothing ) {
    Bench bench( "agentName: A\n/a, T::T, r\n" );
    bench.run();
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\na T::T r\n" );
    EXPECT_TRUE( bench.hdlr.validProfileFile() );
    EXPECT_TRUE( bench.hdlr.agentProfile()->validProfile() );
    EXPECT_EQ( bench.hdlr.agentProfile()->errorDesc(), Corvid::RecognitionError() );
    EXPECT_EQ( bench.trace, "" );
    EXPECT_EQ( bench.standardError, "" );
}

TEST_F( RunTest, AFileWithoutATitleLineTouchesNothing ) {
    for ( const char* text :
          { "", "\n\n", "/a, T::T, r\n", "agentName\n", "agentName A\n", "# only a comment" } ) {
        Bench bench( text, true );
        bench.run();
        EXPECT_EQ( bench.trace, "0 agent name for " + bench.agentFile + " not provided\n" ) << text;
        EXPECT_EQ( bench.standardError, "" );
        EXPECT_TRUE( bench.hdlr.validProfileFile() );
        EXPECT_TRUE( bench.hdlr.maybeIncludeFile() );
        EXPECT_EQ( bench.hdlr.agentProfile(), nullptr );
        EXPECT_THAT( bench.root->agentProfile(), testing::IsEmpty() );
    }
}

TEST_F( RunTest, AnErrorBeforeTheTitleLineInvalidatesNoProfile ) {
    const std::string atColon =
        " In agent title,  near ':', Unsupported agent id. Allowed character set: [a-z,A-Z,0-9,-,_]";
    for ( const auto& [text, description] :
          { std::pair<std::string, std::string>{ "\nagentName: :\n", atColon },
            { "/a, T::T, r\n{\n", "Unrecongnized character , near '{'\n" },
            { "{", "Unrecongnized character , near '{'\n" } } ) {
        Bench bench( text, true );
        bench.run();
        EXPECT_EQ( bench.description(), description );
        EXPECT_EQ( bench.trace, invalidFile( bench ) + "0 Invalidating agent profile: NA\n" );
        EXPECT_EQ( bench.standardError, bench.hdlr.errorDesc().composeErrorDescMessage().str() + "\n" );
        EXPECT_FALSE( bench.hdlr.validProfileFile() );
        EXPECT_THAT( bench.root->agentProfile(), testing::IsEmpty() );
    }
}

TEST_F( RunTest, AnErrorBehindTheTitleLineInvalidatesTheProfileWhichKeepsWhatItHas ) {
    Bench bench( "agentName: A\n/a, T::T, r\n/b, t\n/c, T::T, r\n", true );
    bench.run();
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\na T::T r\n" ) << "no default profiles either";
    const auto& error = bench.hdlr.errorDesc();
    EXPECT_EQ( error.description(), " In mount group 'all' ,  near 't', Invalid kiv type." );
    EXPECT_EQ( error.fileName(), bench.agentFile );
    EXPECT_EQ( error.line(), 3U );
    EXPECT_FALSE( bench.hdlr.agentProfile()->validProfile() );
    EXPECT_EQ( bench.hdlr.agentProfile()->errorDesc(), error );
    EXPECT_EQ( bench.trace, invalidFile( bench ) + "0 Invalidating agent profile: 'A'\n" );
    EXPECT_EQ( bench.standardError,
               bench.agentFile + ":3:5: error: In mount group 'all' ,  near 't', Invalid kiv type.\n" );
}

TEST_F( RunTest, AFailedCheckIsTracedWhenItIsRaisedAndWhenItIsDescribed ) {
    Bench bench( "agentName: A\n/a, T::T, X\n" );
    bench.run();
    EXPECT_EQ( bench.description(), " In mount group 'all' ,  near '\\n', illegal flag 'X'" );
    EXPECT_EQ( bench.hdlr.errorDesc().recognizer(), "parser" );
    EXPECT_EQ( bench.hdlr.errorDesc().exceptionType(), 2U );
    EXPECT_EQ( bench.trace,
               raisedDuringParse + invalidFile( bench ) + "0 Invalidating agent profile: 'A'\n" );
}

TEST_F( RunTest, OfTwoErrorsTheFirstIsKept ) {
    Bench lexerFirst( "agentName: A\n/a, T::T, X\n/b, T::T, {\n/c, T::T, }\n" );
    lexerFirst.run();
    EXPECT_EQ( lexerFirst.description(), "Unrecongnized character , near '{'\n" )
        << "all tokens are read before the first is parsed";
    EXPECT_EQ( lexerFirst.trace,
               invalidFile( lexerFirst ) + raisedDuringParse + "0 Invalidating agent profile: 'A'\n" );
    EXPECT_EQ( lexerFirst.hdlr.agentProfile()->errorDesc().line(), 3U );
    Bench parser( "agentName: A\n/a, T::T, X\nmountGroup: all, 0\n/b, t\n" );
    parser.run();
    EXPECT_EQ( parser.description(), " In mount group 'all' ,  near '\\n', illegal flag 'X'" );
}

TEST_F( RunTest, TheErrorIsPrintedThenTracedThenStored ) {
    Bench bench( "agentName: A\n/a\n" );
    const CapturedStandardError standardError;
    std::string events;
    Kiv::Embedded::traceLevelsAre( "MountProfileHdlr" );
    Kiv::Embedded::traceSinkIs( [&]( const Kiv::TraceHandle& handle, unsigned level, const char* function,
                                     unsigned line, auto ) {
        const auto profile = bench.root->agentProfileIs( Kiv::Name( "A" ) );
        events += std::string( handle.name() ) + "/" + std::to_string( level ) + " " + function +
                  ( line > 0 ? "" : " line?" ) + ( bench.hdlr.validProfileFile() ? " valid" : " invalid" ) +
                  ( standardError.text().empty() ? "" : " printed" ) +
                  ( profile->validProfile() ? "" : " marked" ) +
                  ( profile->errorDesc().description().empty() ? "" : " stored" ) + "\n";
    } );
    bench.hdlr.run();
    Kiv::Embedded::traceSinkIs( {} );
    Kiv::Embedded::traceLevelsAre( "" );
    EXPECT_EQ( events,
               "MountProfileHdlr/1 validProfileFileIs valid\nMountProfileHdlr/0 run invalid printed\n" );
    EXPECT_FALSE( bench.hdlr.agentProfile()->validProfile() );
}

TEST_F( RunTest, InvalidityIsTracedEveryTimeAndValidityNever ) {
    Bench bench( "" );
    const CapturedTrace trace;
    bench.hdlr.validProfileFileIs( true );
    EXPECT_EQ( trace.text(), "" );
    bench.hdlr.validProfileFileIs( false );
    bench.hdlr.validProfileFileIs( false );
    EXPECT_EQ( trace.text(), invalidFile( bench ) + invalidFile( bench ) );
    EXPECT_FALSE( bench.hdlr.validProfileFile() );
}

TEST_F( RunTest, DefaultProfilesAreAddedWhenAskedForAndNotDeclined ) {
    struct Row {
        bool addDefaults;
        bool declined;
        bool groupBefore;
        std::string expectedDefaultGroup;
    };
    const std::string before = "group default 5\nbefore T::T r\n";
    for ( const Row& row : { Row{ false, false, false, "" },
                             { false, false, true, before },
                             { false, true, false, "" },
                             { false, true, true, "" },
                             { true, true, false, "" },
                             { true, true, true, "" } } ) {
        Bench bench( row.declined ? "agentName: A\nnoDefaultMountGroup\n" : "agentName: A\n",
                     row.addDefaults );
        if ( row.groupBefore )
            bench.root->agentProfileIs( Kiv::Name( "A" ) )
                ->mountGroupIs( Kiv::Name( "default" ), 5 )
                ->mountProfileIs( Corvid::Mount( "before", "T::T", "r" ) );
        bench.run();
        EXPECT_EQ( bench.dump(), std::string( "agent A\n" ) +
                                     ( row.declined ? "noDefaultMountGroup\n" : "" ) + "group all 99\n" +
                                     row.expectedDefaultGroup );
        EXPECT_EQ( bench.trace, "" );
    }
    Bench added( "agentName: A\n", true );
    added.run();
    EXPECT_EQ( added.hdlr.agentProfile()->mountGroup().count( Kiv::Name( "default" ) ), 1U );
    EXPECT_EQ( added.trace, "8 void Corvid::MountProfileHdlr::addDefaultProfiles()\n" );
}

TEST_F( RunTest, ALastLineWithoutItsNewlineParsesLikeOneWithIt ) {
    for ( const std::string text :
          { "agentName: A-%k", "agentName: A\n/a, T::T, r", "agentName: A\nlowMountPrio",
            "agentName: A\nmountGroup: g, 3\ncondition: 1 == /a.b",
            "agentName: A\nmountFilter: f\nname, key" } ) {
        Bench without( text );
        Bench with( text + "\n" );
        without.run();
        with.run();
        EXPECT_TRUE( without.hdlr.validProfileFile() ) << without.description();
        EXPECT_EQ( without.dump(), with.dump() );
    }
}

TEST_F( RunTest, AMissingAgentFilePassesThroughAndTouchesNothing ) {
    Bench bench( "", true );
    const std::string missing = bench.dir.path() + "/missing";
    Corvid::MountProfileHdlr hdlr( missing, bench.root, nullptr, true );
    EXPECT_EQ( runtimeErrorOf( [&] { hdlr.run(); } ),
               "void Corvid::MountProfileHdlr::parseFile(const string&, bool): "
               "Antlr failed to create file stream for " +
                   missing );
    EXPECT_TRUE( hdlr.validProfileFile() );
    EXPECT_THAT( bench.root->agentProfile(), testing::IsEmpty() );
}

TEST_F( RunTest, ARuntimeErrorWithinAParseIsThrownAnewAndTheProfileStaysAsItIsThen ) {
    for ( const auto& raise : std::vector<std::function<void()>>{
              [] { throw std::runtime_error( "something" ); },
              [] { throw std::system_error( std::make_error_code( std::errc::io_error ) ); } } ) {
        Bench bench( "agentName: A\n/a, T::T, r\ninclude: ConfigMountProfile\n/b, T::T, r\n", true,
                     entityManager() );
        EXPECT_EQ(
            runtimeErrorOf( [&] { runDuringParse( bench, raise ); } ),
            "void Corvid::MountProfileHdlr::parseFile(const string&, bool): runtime error while parsing " +
                bench.agentFile );
        EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\na T::T r\n" );
        EXPECT_TRUE( bench.hdlr.validProfileFile() );
        EXPECT_TRUE( bench.hdlr.agentProfile()->validProfile() );
        EXPECT_EQ( bench.hdlr.errorDesc(), Corvid::RecognitionError() );
    }
}

TEST_F( RunDeathTest, AnyOtherExceptionPassesAsItIsAndLeavesNoParserBehind ) {
    Bench bench( "agentName: A\n/a, T::T, r\ninclude: ConfigMountProfile\n/b, T::T, r\n", false,
                 entityManager() );
    EXPECT_THROW( runDuringParse( bench, [] { throw std::logic_error( "something" ); } ), std::logic_error );
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\na T::T r\n" );
    EXPECT_ASSERTION( bench.hdlr.constructHdlrException( "x" ),
                      R"(agentFileParserCtx && "agentFileParserCtx is NULL")" );
    runDuringParse( bench, [] {} );
    EXPECT_EQ( bench.dump(), "agent A\ngroup all 99\na T::T r\nb T::T r\n" );
    EXPECT_TRUE( bench.hdlr.validProfileFile() ) << bench.description();
}

TEST_F( RunDeathTest, AnExceptionOutOfAnIncludeFilesParserEndsBothParses ) {
    Bench bench( "agentName: A\ninclude: inc\n" );
    const std::string inc = bench.dir.file( "inc", "/a, t\n" );
    Kiv::Embedded::traceLevelsAre( "MountProfileHdlr/1" );
    Kiv::Embedded::traceSinkIs(
        [&]( const Kiv::TraceHandle&, unsigned, const char*, unsigned, std::string_view text ) {
            if ( text.starts_with( "Invalid profile file" ) )
                throw std::logic_error( "while the include file's error is recorded" );
        } );
    EXPECT_THROW( bench.hdlr.run(), std::logic_error );
    Kiv::Embedded::traceSinkIs( {} );
    Kiv::Embedded::traceLevelsAre( "" );
    EXPECT_ASSERTION( bench.hdlr.constructHdlrException( "x" ),
                      R"(agentFileParserCtx && "agentFileParserCtx is NULL")" );
}

} // namespace
