// why FILE PATH: which lines made a mount what it is; and what is said when there is no such mount.

#include "Cli/MountSearch.h"
#include "ProfileDocument/EditDistance.h"
#include "cli/CommandTest.h"

#include <sys/stat.h>

namespace Corvid::Testing {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class WhyTest : public CommandTest {
  protected:
    /// Without the mounts that every agent gets.
    [[nodiscard]] ProgramResult why( const std::string& path, const std::string& file = "agent" ) const {
        return run( { "why", "--no-defaults", file, path } );
    }
    /// What stands on standard error when a valid file does not mount the path, less the first words and the
    /// code.
    [[nodiscard]] std::string complaintAbout( const std::string& path ) const {
        const auto result = why( path );
        EXPECT_EQ( result.exitStatus, 1 );
        EXPECT_EQ( result.out, "" );
        const std::string beginning = "mountprofile: agent: nothing is mounted at ";
        EXPECT_THAT( result.err, StartsWith( beginning ) );
        std::string complaint = result.err.substr( std::min( beginning.size(), result.err.size() ) );
        const std::string code = " [MP093]\n";
        EXPECT_THAT( complaint, HasSubstr( code ) );
        return complaint.replace( std::min( complaint.find( code ), complaint.size() ), code.size(), "\n" );
    }
};

const std::string allByDefault = "  default: makes the group with priority 99\n";

TEST_F( WhyTest, theLineOfAMountIsShownWithItsText ) {
    write( "agent", "agentName: Fan\n\n\t/a/b/, Fan::A, r\r\n" );
    const std::string history = "a/b in mount group all: Fan::A, r\n"
                                "  agent:3: mounts it with the flag r\n"
                                "      3 |  /a/b/, Fan::A, r\n" +
                                allByDefault;
    for ( const char* path : { "a/b", "/a/b", "a/b/", "/a/b/" } )
        EXPECT_THAT( why( path ), Answers( 0, history, "" ) ) << path;
}

TEST_F( WhyTest, aPathMayBeWrittenAsInTheFile ) {
    write( "agent", "agentName: Fan\n\"/sp ace\" \"/x\", Fan::A, r\n/left fan, Fan::B, r\n" );
    for ( const char* path : { "sp ace/x", "\"/sp ace/x\"", "\"/sp ace\" \"/x\"" } )
        EXPECT_THAT( why( path ), Answers( 0, StartsWith( "sp ace/x in mount group all" ), "" ) ) << path;
    for ( const char* path : { "leftfan", "/left fan", " /left\tfan " } )
        EXPECT_THAT( why( path ), Answers( 0, StartsWith( "leftfan in mount group all" ), "" ) ) << path;
    EXPECT_EQ( complaintAbout( "\"/sp ace/y\"" ), "sp ace/y\n  did you mean 'sp ace/x'?\n" );
}

TEST_F( WhyTest, shortPathsAreNotTakenForEachOther ) {
    write( "agent", "agentName: Fan\n/t, Fan::T, r\n\"/\", Fan::T, r\n/abc, Fan::T, r\n" );
    EXPECT_EQ( complaintAbout( "a" ), "a\n" );
    EXPECT_EQ( complaintAbout( "abd" ), "abd\n  did you mean 'abc'?\n" );
}

TEST_F( WhyTest, longPathsMayHaveSixTypos ) {
    const std::string path( 60, 'a' );
    write( "agent", "agentName: Fan\n/" + path + ", Fan::T, r\n" );
    const std::string sixTypos = std::string( 6, 'b' ) + path.substr( 6 );
    EXPECT_EQ( complaintAbout( sixTypos ), sixTypos + "\n  did you mean '" + path + "'?\n" );
    const std::string sevenTypos = std::string( 7, 'b' ) + path.substr( 7 );
    EXPECT_EQ( complaintAbout( sevenTypos ), sevenTypos + "\n" );
}

TEST_F( WhyTest, everyLineOfAMountTellsWhatItChanges ) {
    write( "agent", "agentName: Fan\nmountFilter: f\nmountFilter: g\n/a, Fan::A, ri\n/a, Fan::A, wc, f\n"
                    "/a, Fan::A, r, f\n/a, Fan::A, w, g\n/a, Fan::A, B\n/b, Fan::B, r\n" );
    EXPECT_THAT( why( "a" ), Answers( 0,
                                      "a in mount group all: Fan::A, riwcB\n"
                                      "  agent:4: mounts it with the flags ri\n"
                                      "      4 | /a, Fan::A, ri\n"
                                      "  agent:5: adds the flags wc and sets the filter f\n"
                                      "      5 | /a, Fan::A, wc, f\n"
                                      "  agent:6: adds no flag\n"
                                      "      6 | /a, Fan::A, r, f\n"
                                      "  agent:7: adds no flag and puts the filter g in place of f\n"
                                      "      7 | /a, Fan::A, w, g\n"
                                      "  agent:8: adds the flag B and takes the filter g away\n"
                                      "      8 | /a, Fan::A, B\n" +
                                          allByDefault,
                                      "" ) );
}

TEST_F( WhyTest, aFilterTellsItsLines ) {
    write( "agent",
           "agentName: Fan\nmountFilter: f\n  state, up\n  name\n  state, down\n/a, Fan::A, r, f\n" );
    EXPECT_THAT( why( "a" ).out,
                 HasSubstr( "mounts it with the flag r and the filter f\n"
                            "      6 | /a, Fan::A, r, f\n"
                            "  agent:2: declares the filter f\n"
                            "      2 | mountFilter: f\n"
                            "  agent:4: filters by name\n"
                            "      4 |   name\n"
                            "  agent:3: filters by state = \"up\", which a later line replaces\n"
                            "      3 |   state, up\n"
                            "  agent:5: filters by state = \"down\"\n" ) );
}

TEST_F( WhyTest, aPathInSeveralGroupsIsToldForEach ) {
    write( "agent", "agentName: Fan\nmountGroup: late, 7\ncondition: 1 == /a.b\n/a, Fan::A, r\n"
                    "mountGroup: early\nconditionBlocker: 2 == /a.b\n/a, Fan::B, w\nmountGroup: late, 8\n" );
    EXPECT_THAT( why( "a" ), Answers( 0,
                                      "a in mount group early: Fan::B, w\n"
                                      "  agent:7: mounts it with the flag w\n"
                                      "      7 | /a, Fan::B, w\n"
                                      "  agent:5: makes the group with priority 99\n"
                                      "      5 | mountGroup: early\n"
                                      "  agent:6: holds the agent up until 2 == /a.b\n"
                                      "      6 | conditionBlocker: 2 == /a.b\n"
                                      "\n"
                                      "a in mount group late: Fan::A, r\n"
                                      "  agent:4: mounts it with the flag r\n"
                                      "      4 | /a, Fan::A, r\n"
                                      "  agent:2: makes the group with priority 7\n"
                                      "      2 | mountGroup: late, 7\n"
                                      "  agent:8: opens the group again; its priority stays 7\n"
                                      "      8 | mountGroup: late, 8\n"
                                      "  agent:3: mounts the group when 1 == /a.b\n"
                                      "      3 | condition: 1 == /a.b\n",
                                      "" ) );
}

TEST_F( WhyTest, aLineOfAnIncludeFileTellsHowItCameIn ) {
    write( "d/agent", "agentName: Fan\n/b, Fan::B, r\ninclude: *.inc\n" );
    write( "d/1.inc", "/b, Fan::B, r\n" );
    write( "d/2.inc", "\n/a, Fan::A, r\n" );
    EXPECT_THAT( why( "a", "d/agent" ),
                 Answers( 0,
                          "a in mount group all: Fan::A, r\n"
                          "  d/2.inc:2: mounts it with the flag r\n"
                          "      2 | /a, Fan::A, r\n"
                          "        = included from d/agent:3 (pattern *.inc, match 2 of 2)\n" +
                              allByDefault,
                          "" ) );
}

TEST_F( WhyTest, whatEveryAgentGetsHasNoLine ) {
    write( "agent", "agentName: Fan\n" );
    EXPECT_THAT( run( { "why", "agent", "agent/config" } ),
                 Answers( 0,
                          "agent/config in mount group default: Agent::GlobalConfigDir, r\n"
                          "  default: mounts it for every agent, with the flag r\n"
                          "  default: makes the group with priority 1\n",
                          "" ) );
}

TEST_F( WhyTest, aLineEndsWithItsLineFeed ) {
    write( "agent", "agentName: F\r/a, A, r\r/b, B, w\r\n" );
    EXPECT_THAT( run( { "why", "--no-defaults", "agent", "b" } ).out,
                 HasSubstr( "  agent:1: mounts it with the flag w\n"
                            "      1 | agentName: F\\x0D/a, A, r\\x0D/b, B, w\n" ) );
}

TEST_F( WhyTest, aConditionThatIsReplacedIsToldToo ) {
    write( "agent", "agentName: Fan\nmountGroup: peerReady\ncondition: 1 == /a.b\n/a, Fan::A, r\n" );
    const auto result = run( { "why", "--system", "ar", "--redundancy", "agent", "a" } );
    EXPECT_THAT( result.out,
                 HasSubstr( "agent:3: mounts the group when 1 == /a.b, which a later condition replaces as a "
                            "whole; its comparisons stay\n" ) );
    EXPECT_THAT( result.out, HasSubstr( "  default: holds the agent up until %agentString in " ) );
}

TEST_F( WhyTest, aConditionIsToldByItsOwnKeyword ) {
    write( "agent", "agentName: Fan\nmountGroup: g\ncondition: 1 == /a.b\n/a, Fan::A, r\nmountGroup: g\n"
                    "conditionBlocker: 1 == /c.d\n" );
    const auto result = run( { "why", "--no-defaults", "agent", "a" } );
    EXPECT_EQ( result.exitStatus, 1 ) << "the second condition is one too many";
    EXPECT_THAT( result.out, HasSubstr( "agent:3: mounts the group when 1 == /a.b\n" ) );
}

TEST_F( WhyTest, aConfiguredPathNamesTheLineThatAsksForAll ) {
    write( "agent", "agentName: Fan\ninclude: ConfigMountProfile\n/a, Fan::A, r\n" );
    write( "root", "a Fan::A i\n" );
    EXPECT_THAT( run( { "why", "--no-defaults", "--system", "ar", "--config-root", "root", "agent", "a" },
                      { { "K7_CHROOT", "/" } } ),
                 Answers( 0,
                          "a in mount group all: Fan::A, wir\n"
                          "  agent:2 (configured path): mounts it with the flags wi\n"
                          "      2 | include: ConfigMountProfile\n"
                          "  agent:3: adds the flag r\n"
                          "      3 | /a, Fan::A, r\n" +
                              allByDefault,
                          "" ) );
}

TEST_F( WhyTest, aLongLineIsCutAndNothingInItControlsTheTerminal ) {
    write( "agent", "agentName: Fan\n\"/\033[2Ja\", Fan::A" + std::string( 200, 'A' ) + ", r\n" );
    const auto result = why( "\033[2Ja" );
    EXPECT_THAT( result.out, StartsWith( "\\x1B[2Ja in mount group all: Fan::A" ) );
    EXPECT_THAT( result.out, HasSubstr( "\n      2 | \"/\\x1B[2Ja\", Fan::AAAA" ) );
    EXPECT_THAT( result.out, HasSubstr( "AAA...\n" ) );
    EXPECT_THAT( result.out, Not( HasSubstr( "\033" ) ) );
    EXPECT_THAT( why( "\033" ).err, Not( HasSubstr( "\033" ) ) );
}

TEST_F( WhyTest, aPathThatIsNotMountedIsComparedWithThoseThatAre ) {
    write( "agent",
           "agentName: Fan-%slot\n/hardware/fan-%slot/speed, Fan::Speed, r\n/hardware/led, Fan::Led, r\n"
           "mountGroup: g\n/hardware/led, Fan::Led, r\n" );
    EXPECT_EQ( complaintAbout( "/hardware/lad/" ), "hardware/lad\n  did you mean 'hardware/led'?\n" );
    EXPECT_EQ( complaintAbout( "hardware/fan-3/speed" ),
               "hardware/fan-3/speed\n  did you mean 'hardware/fan-%slot/speed'?\n" );
    EXPECT_EQ( complaintAbout( "hardware" ), "hardware\n  did you mean 'hardware/led'?\n"
                                             "  did you mean 'hardware/fan-%slot/speed'?\n" );
    EXPECT_EQ( complaintAbout( "elsewhere" ), "elsewhere\n" );
    const std::string longer = "hardware/led/" + std::string( 500, 'x' );
    EXPECT_EQ( complaintAbout( longer ), longer + "\n" );
    EXPECT_EQ( complaintAbout( "" ), "\n" );
}

TEST_F( WhyTest, aKeyIsMadeOfLettersDigitsAndUnderscores ) {
    write( "agent", "agentName: Fan-%fan_slot\n/fan-%fan_slot/speed, Fan::Speed, r\n" );
    EXPECT_EQ( complaintAbout( "fan-3/speed" ), "fan-3/speed\n  did you mean 'fan-%fan_slot/speed'?\n" );
}

TEST_F( WhyTest, atMostThreePathsAreOffered ) {
    write( "agent", "agentName: Fan\n/aaa1, A, r\n/aaa2, A, r\n/aaa3, A, r\n/aaa4, A, r\n" );
    EXPECT_EQ( complaintAbout( "aaa5" ),
               "aaa5\n  did you mean 'aaa1'?\n  did you mean 'aaa2'?\n  did you mean 'aaa3'?\n" );
}

TEST_F( WhyTest, anInvalidFileTellsItsErrorAndWhatStandsBeforeIt ) {
    write( "agent", "agentName: Fan\n/a, Fan::A, r\n/b, fan, r\n/c, Fan::C, r\n" );
    const std::string error = "agent:3:5: error: In mount group 'all' ,  near 'fan', Invalid kiv type.\n";
    EXPECT_THAT( why( "a" ),
                 Answers( 1, HasSubstr( "  agent:2: mounts it with the flag r\n" ), StartsWith( error ) ) );
    const auto behind = why( "c" );
    EXPECT_THAT( behind, Answers( 1, "", StartsWith( error ) ) );
    EXPECT_THAT(
        behind.err,
        EndsWith(
            "mountprofile: agent: nothing is mounted at c by what stands before the error [MP093]\n" ) );
}

TEST_F( WhyTest, aFileWithoutAProfileTellsWhyThereIsNone ) {
    write( "inc", "/a, Fan::A, r\n" );
    EXPECT_THAT( why( "a", "inc" ), Answers( 1, "", StartsWith( "mountprofile: inc: not an agent file" ) ) );
    EXPECT_THAT( why( "a", "nowhere" ),
                 Answers( 2, "", StartsWith( "mountprofile: nowhere: No such file or directory" ) ) );
    write( "agent", "agentName: Fan\n/a, Fan::A, r\ninclude: d\n" );
    std::filesystem::create_directory( directory() / "d" );
    EXPECT_THAT( why( "a" ), Answers( 2, "", HasSubstr( "agent: d, included in line 3: Is a directory" ) ) );
}

TEST_F( WhyTest, bothArgumentsAreNeeded ) {
    write( "agent", "agentName: Fan\n" );
    EXPECT_EQ( run( { "why" } ).exitStatus, 2 );
    EXPECT_EQ( run( { "why", "agent" } ).exitStatus, 2 );
}

TEST( MountSearchTest, aKeyStandsForSomethingWithinAUnit ) {
    using Cli::standsFor;
    EXPECT_TRUE( standsFor( "a/%b/c", "a/x/c" ) );
    EXPECT_TRUE( standsFor( "a/%b/c", "a/xyz/c" ) );
    EXPECT_TRUE( standsFor( "%b", "xyz" ) );
    EXPECT_TRUE( standsFor( "a-%b-%c", "a-b-b-c-c" ) );
    EXPECT_TRUE( standsFor( "%a-x", "x-x-x" ) );
    EXPECT_TRUE( standsFor( "%a%b", "xy" ) );
    EXPECT_TRUE( standsFor( "same", "same" ) );
    EXPECT_TRUE( standsFor( "%", "%" ) );
    EXPECT_FALSE( standsFor( "a/%b/c", "a//c" ) );
    EXPECT_FALSE( standsFor( "a/%b/c", "a/x/y/c" ) );
    EXPECT_FALSE( standsFor( "%a%b", "x" ) );
    EXPECT_FALSE( standsFor( "%a-x", "x-y" ) );
    EXPECT_FALSE( standsFor( "%", "x" ) );
    EXPECT_FALSE( standsFor( "a", "ab" ) );
    EXPECT_FALSE( standsFor( "ab", "a" ) );
    EXPECT_FALSE( standsFor( "%b", "" ) );
}

TEST( EditDistanceTest, countsTyposUpToItsLimit ) {
    EXPECT_EQ( editDistance( "", "", 2 ), 0U );
    EXPECT_EQ( editDistance( "state", "state", 2 ), 0U );
    EXPECT_EQ( editDistance( "state", "sate", 2 ), 1U );
    EXPECT_EQ( editDistance( "sate", "state", 2 ), 1U );
    EXPECT_EQ( editDistance( "state", "stbte", 2 ), 1U );
    EXPECT_EQ( editDistance( "state", "satte", 2 ), 1U ) << "neighbours swapped";
    EXPECT_EQ( editDistance( "kitten", "sitting", 6 ), 3U );
    EXPECT_EQ( editDistance( "kitten", "sitting", 3 ), 3U );
    EXPECT_EQ( editDistance( "kitten", "sitting", 2 ), 3U ) << "one more than the limit";
    EXPECT_EQ( editDistance( "", "abc", 5 ), 3U );
    EXPECT_EQ( editDistance( "", "abc", 2 ), 3U );
    EXPECT_EQ( editDistance( "abc", "xyz", 0 ), 1U );
    EXPECT_EQ( editDistance( "ab", "ba", 0 ), 1U );
}

} // namespace

} // namespace Corvid::Testing
