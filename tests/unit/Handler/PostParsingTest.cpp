// The handler with its assertions compiled out: there alone an error can be reported while no parser runs.

#include "HandlerTesting.h"

using namespace CorvidTest;
using Corvid::MountProfileHdlr;

namespace {

constexpr char raisedPostParsing[] =
    "8 void Corvid::MountProfileHdlr::constructHdlrException(const string&)\n"
    "1 Constucting handler exception, occured while adding profiles post-parsing the agent file\n";

class PostParsingTest : public HandlerTest {
  protected:
    static Corvid::RecognitionError described( const std::string& agentFile, const std::string& message ) {
        Corvid::RecognitionError error;
        error.recognizerIs( "post-parsing" );
        error.fileNameIs( agentFile );
        error.lineIs( 0xFFFFFFFF );
        error.charPositionInLineIs( -1 );
        error.descriptionIs( "While adding default profiles, " + message );
        return error;
    }

    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root{ new Corvid::PassiveAgentProfileDir };
    MountProfileHdlr hdlr{ "dir/Agent", root, nullptr, true };
};

TEST_F( PostParsingTest, AReportWithoutAParserIsDescribedAtOnce ) {
    const CapturedTrace trace;
    const CapturedStandardError standardError;
    hdlr.constructHdlrException( "something is wrong" );
    EXPECT_FALSE( hdlr.validProfileFile() );
    EXPECT_EQ( hdlr.errorDesc(), described( "dir/Agent", "something is wrong" ) );
    EXPECT_EQ( trace.text(), std::string( raisedPostParsing ) + "1 Invalid profile file dir/Agent\n" );
    EXPECT_EQ( standardError.text(), "" );
}

TEST_F( PostParsingTest, TheFirstErrorStays ) {
    hdlr.constructHdlrException( "first" );
    const CapturedTrace trace;
    hdlr.constructHdlrException( "second" );
    EXPECT_EQ( hdlr.errorDesc(), described( "dir/Agent", "first" ) );
    EXPECT_EQ( trace.text(), raisedPostParsing );
}

TEST_F( PostParsingTest, APriorityIsCheckedBeforeThereMustBeAProfile ) {
    hdlr.addMountGroup( "g", 100 );
    EXPECT_EQ( hdlr.errorDesc(),
               described( "dir/Agent", "mount group priority should be in the range [1,99]" ) );
    EXPECT_EQ( hdlr.currMg(), nullptr );
}

TEST_F( PostParsingTest, RootFlagsAreCheckedBeforeThereMustBeAProfile ) {
    hdlr.setRootFlags( "rX" );
    EXPECT_EQ( hdlr.errorDesc(), described( "dir/Agent", "illegal flag 'X'" ) );
}

TEST_F( PostParsingTest, FlagsOfAMountAreCheckedBeforeThereMustBeAGroup ) {
    hdlr.addMount( "x", "T::T", "X", "" );
    EXPECT_EQ( hdlr.errorDesc(), described( "dir/Agent", "illegal flag 'X'" ) );
}

TEST_F( PostParsingTest, AnIncludeWithoutAMatchIsReportedWithItsFullPattern ) {
    hdlr.parseIncludes( "no-such-file*" );
    EXPECT_EQ( hdlr.errorDesc(),
               described( "dir/Agent", "No include file found matching dir/no-such-file*" ) );
}

TEST_F( PostParsingTest, AClashAmongTheDefaultMountsInvalidatesTheProfile ) {
    Bench bench( "agentName: A\n", true );
    const auto profile = bench.root->agentProfileIs( Kiv::Name( "A" ) );
    const auto group = profile->mountGroupIs( Kiv::Name( "default" ), 1 );
    group->mountProfileIs( Corvid::Mount( "logging/status", "T::T", "r" ) );
    group->mountProfileIs( Corvid::Mount( "Corvid/status", "T::T", "r" ) );

    bool validAtTrace = false;
    bool printedAtTrace = false;
    std::string trace;
    const CapturedStandardError standardError;
    Kiv::Embedded::traceLevelsAre( "MountProfileHdlr" );
    Kiv::Embedded::traceSinkIs(
        [&]( const Kiv::TraceHandle&, unsigned level, const char*, unsigned, std::string_view text ) {
            trace += std::to_string( level ) + " " + std::string( text ) + "\n";
            validAtTrace = profile->validProfile();
            printedAtTrace = !standardError.text().empty();
        } );
    bench.hdlr.run();
    Kiv::Embedded::traceSinkIs( {} );
    Kiv::Embedded::traceLevelsAre( "" );

    EXPECT_EQ( trace, std::string( "8 void Corvid::MountProfileHdlr::addDefaultProfiles()\n" ) +
                          raisedPostParsing + "1 Invalid profile file " + bench.agentFile + "\n" +
                          raisedPostParsing +
                          "0 Invalidating agent profile, due to error in adding default mounts,: 'A'\n" );
    EXPECT_TRUE( printedAtTrace );
    EXPECT_TRUE( validAtTrace );
    EXPECT_FALSE( profile->validProfile() );
    EXPECT_EQ( profile->errorDesc(),
               described( bench.agentFile, "Path logging/status is already present with type: T::T. "
                                           "Mismatched type: Kiv::LogStatus" ) );
    EXPECT_EQ( profile->errorDesc(), bench.hdlr.errorDesc() );
    EXPECT_EQ( standardError.text(), bench.agentFile +
                                         ": error: While adding default profiles, Path logging/status "
                                         "is already present with type: T::T. "
                                         "Mismatched type: Kiv::LogStatus\n" );
    EXPECT_EQ( group->mountProfile( "logging/status" )->type(), "T::T" );
    EXPECT_NE( group->mountProfile( "agent/config" ), nullptr ) << "the other mounts are added all the same";
}

TEST_F( PostParsingTest, AClashInvalidatesTheProfileWhetherItIsTracedOrNot ) {
    const TempDir dir;
    MountProfileHdlr untraced( dir.file( "Agent", "agentName: A\n" ), root, nullptr, true );
    const auto group = root->agentProfileIs( Kiv::Name( "A" ) )->mountGroupIs( Kiv::Name( "default" ), 1 );
    group->mountProfileIs( Corvid::Mount( "logging/status", "T::T", "r" ) );
    const CapturedStandardError standardError;
    untraced.run();
    EXPECT_FALSE( untraced.agentProfile()->validProfile() );
    EXPECT_THAT( standardError.text(), testing::HasSubstr( "Path logging/status is already present" ) );
}

TEST_F( PostParsingTest, AnErrorOfTheFileItselfIsDescribedByItsParserAsEver ) {
    Bench bench( "agentName: A\n/a, T::T, X\n", true );
    bench.run();
    EXPECT_EQ( bench.description(), " In mount group 'all' ,  near '\\n', illegal flag 'X'" );
    EXPECT_EQ( bench.hdlr.errorDesc().recognizer(), "parser" );
}

} // namespace
