#include "cli/CommandTest.h"

#include <cctype>

namespace Corvid::Testing {

namespace {

using testing::_;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Lt;
using testing::SizeIs;
using testing::StartsWith;

class DiagnosticsTest : public CommandTest {
  protected:
    [[nodiscard]] Diagnostics shown( const std::string& file ) const {
        return diagnosticsIn( run( { "show", file } ).err );
    }
};

TEST_F( DiagnosticsTest, theCaretStandsUnderThePlace ) {
    using namespace std::string_literals;
    const struct {
        std::string what;
        std::string agent;
        std::string excerpt;
    } rows[] = {
        { "first line", "agentName: F{n\n", "    1 | agentName: F{n\n      |             ^\n" },
        { "first byte of the first line", "{agentName: Fan\n", "    1 | {agentName: Fan\n      | ^\n" },
        { "first byte of a later line", "agentName: Fan\n{\n", "    2 | {\n      | ^\n" },
        { "tabs", "agentName: Fan\n\t/a\t{\n", "    2 |         /a      {\n      |                 ^\n" },
        { "two-byte characters", "agentName: Fan\n\"\xC3\xA9\xC3\xA9\" {\n",
          "    2 | \"\xC3\xA9\xC3\xA9\" {\n      |      ^\n" },
        { "double-width characters", "agentName: Fan\n\"\xE4\xBA\x8C\" {\n",
          "    2 | \"\xE4\xBA\x8C\" {\n      |      ^\n" },
        { "the place is a multi-byte character", "agentName: Fan\n/\xC3\xA9\n",
          "    2 | /\xC3\xA9\n      |  ^\n" },
        { "control bytes", "agentName: Fan\n\"\x01\x1B\x7F\" {\n",
          "    2 | \"\\x01\\x1B\\x7F\" {\n      |                ^\n" },
        { "a NUL", "agentName: Fan\n\"\0\" {\n"s, "    2 | \"\\x00\" {\n      |        ^\n" },
        { "malformed UTF-8", "agentName: Fan\n\"\xC3(\xFF\" {\n",
          "    2 | \"\\xC3(\\xFF\" {\n      |             ^\n" },
        { "C1 controls and marks that reorder text", "agentName: Fan\n\"\xC2\x9B\xE2\x80\xAE\" {\n",
          "    2 | \"\\xC2\\x9B\\xE2\\x80\\xAE\" {\n      |                        ^\n" },
        { "a carriage return before the line end", "agentName: Fan\r\n/a {\r\n",
          "    2 | /a {\n      |    ^\n" },
        { "a carriage return within the line", "agentName: Fan\n/a\r{\n",
          "    2 | /a\\x0D{\n      |       ^\n" },
        { "the file's own line end", "agentName: Fan\n/a, K\n/b, K, r\n", "    2 | /a, K\n      |      ^\n" },
        { "the line end that is appended", "agentName: Fan\n/a, K, r\n/b, K",
          "    3 | /b, K\n      |      ^\n" },
        { "the appended line end, with blanks before it", "agentName: Fan\n/b, K \t",
          "    2 | /b, K\n      |      ^\n" },
        { "an open string at the end of the file", "agentName: Fan\n/a, \"b",
          "    2 | /a, \"b\n      |     ~~^\n" },
    };
    for ( const auto& [what, agent, excerpt] : rows ) {
        write( "agent", agent );
        for ( const std::string command : { "show", "check" } ) {
            const auto result = run( { command, "agent" } );
            EXPECT_EQ( result.exitStatus, 1 ) << what;
            EXPECT_EQ( diagnosticsIn( result.err ).excerpt, excerpt ) << what;
        }
    }
}

TEST_F( DiagnosticsTest, theEndOfInputIsShownBehindTheLastText ) {
    write( "agent", "agentName: Fan\ninclude: inc\n\n\n" );
    EXPECT_EQ( shown( "agent" ).excerpt, "    2 | include: inc\n      |          ~~~^\n" );
    write( "inc", " \n\t\n" );
    EXPECT_EQ( shown( "agent" ).firstLine,
               "inc:2:1: error: at <EOF>, Include file should contain only mounts. (included from agent)" );
    EXPECT_EQ( shown( "agent" ).excerpt, "    1 | \n      | ^\n" );
}

TEST_F( DiagnosticsTest, theSecondByteOfAFileIsNotTakenForItsEnd ) {
    write( "agent", "agentName: Fan\ninclude: inc\n" );
    write( "inc", "a\n\n/b, K, r\n" );
    EXPECT_EQ( shown( "agent" ).excerpt, "    1 | a\n      |  ^\n" );
    write( "inc", "\t\n\n/b, K" );
    EXPECT_EQ( shown( "agent" ).excerpt, "    3 | /b, K\n      |      ^\n" );
}

TEST_F( DiagnosticsTest, anErrorInAnIncludeFileShowsThatFile ) {
    write( "dir/agent", "agentName: Fan\ninclude: inc\n" );
    write( "dir/inc", "/a, K, r\n/b, k, r\n" );
    EXPECT_EQ(
        shown( "dir/agent" ).firstLine,
        "dir/inc:2:5: error: In include file,  near 'k', Invalid kiv type. (included from dir/agent)" );
    EXPECT_EQ( shown( "dir/agent" ).excerpt, "    2 | /b, k, r\n      |     ^\n" );
}

TEST_F( DiagnosticsTest, aLongLineIsCutAroundThePlace ) {
    const std::string far( 5'000'000, 'x' );
    write( "agent", "agentName: Fan\n\"\xC3\xA9" + far + "\" { " + far + "\n" );
    EXPECT_EQ( shown( "agent" ).excerpt, "    2 | ..." + std::string( 78, 'x' ) + "\" { " +
                                             std::string( 58, 'x' ) + "...\n      |    " +
                                             std::string( 80, ' ' ) + "^\n" );
    write( "agent", "agentName: Fan\n\"\xC3\xA9" + std::string( 77, 'x' ) + "\" {\n" );
    EXPECT_THAT( run( { "show", "agent" } ),
                 Answers( 1, _, HasSubstr( "\n    2 | ..." + std::string( 77, 'x' ) ) ) )
        << "cut within a character";
}

TEST_F( DiagnosticsTest, aLongMessageLosesItsMiddleButTheRecordKeepsIt ) {
    const std::string word( 20000, 'x' );
    const std::string begin = "agent:2:10: error: In mount group 'all' ,  near 'x";
    const std::string end = "x', Expecting end of line.";
    write( "agent", "agentName: Fan\n/a, T, r " + word + "\n" );
    const std::string line = shown( "agent" ).firstLine;
    const std::size_t whole = begin.size() + word.size() - 2 + end.size();
    EXPECT_THAT( line, StartsWith( begin ) );
    EXPECT_THAT( line, EndsWith( end ) );
    EXPECT_THAT( line,
                 HasSubstr( "x[... " + std::to_string( whole + 1 - 6144 ) + " characters left out ...]x" ) );
    EXPECT_LT( line.size(), 6200U );
    EXPECT_THAT( run( { "show", "agent" } ).out, HasSubstr( line.substr( 0, 4096 ) + "[... " ) );
    EXPECT_THAT( run( { "show", "--json", "agent" } ).out, HasSubstr( "near '" + word + "', " ) );

    write( "agent", "agentName: Fan\n/a, T, r " + word.substr( 0, 8000 ) + "\n" );
    EXPECT_THAT( shown( "agent" ).firstLine, HasSubstr( "near '" + word.substr( 0, 8000 ) + "', " ) );
}

TEST_F( DiagnosticsTest, aLongPatternLosesItsMiddleWhereverItIsTold ) {
    write( "inc", "/a, T, r\n/b, T\n" );
    write( "agent", "agentName: Fan\ninclude: inc" + std::string( 20000, '*' ) + "\n" );
    for ( const char* const format : { "text", "json", "sarif", "gcc", "github" } ) {
        const auto result = run( { "check", "--format", format, "agent" } );
        const std::string told = result.out + result.err;
        EXPECT_THAT( told, AllOf( HasSubstr( "MP010" ), SizeIs( Lt( 9000U ) ) ) ) << format;
    }
    const std::string cut = "*[... 13859 characters left out ...]*";
    EXPECT_THAT( run( { "check", "agent" } ).err, HasSubstr( cut ) );
    EXPECT_THAT( run( { "check", "--format", "json", "agent" } ).out, HasSubstr( cut ) );
    const auto why = run( { "why", "agent", "/a" } );
    EXPECT_THAT( why.out, AllOf( HasSubstr( cut ), SizeIs( Lt( 7000U ) ) ) );
    EXPECT_THAT( why.err, AllOf( HasSubstr( cut ), SizeIs( Lt( 7000U ) ) ) );
    EXPECT_THAT( run( { "show", "--json", "--origin", "--no-defaults", "agent" } ).out,
                 AllOf( HasSubstr( cut ), SizeIs( Lt( 10000U ) ) ) );
}

TEST_F( DiagnosticsTest, aLongComplaintLosesItsMiddle ) {
    const std::string word( 100000, 'x' );
    const auto isShort = Answers( 2, "", AllOf( HasSubstr( "xxx[... 9" ), SizeIs( Lt( 6300U ) ) ) );
    EXPECT_THAT( run( { "show", "agent", "--cell", word } ), isShort );
    EXPECT_THAT( run( { "check", "--format", "gcc", "--" + word } ).out, SizeIs( Lt( 6300U ) ) );
}

TEST_F( DiagnosticsTest, aLongComplaintIsCutBetweenCharacters ) {
    for ( const std::string before : { "", "x" } ) {
        std::string word = before;
        while ( word.size() < 20000 )
            word += "\xC3\xA9";
        const auto result = run( { "show", "agent", "--cell", word } );
        EXPECT_THAT( result.err, HasSubstr( "\xC3\xA9[... 1" ) );
        EXPECT_THAT( result.err, HasSubstr( " characters left out ...]\xC3\xA9" ) );
    }
}

TEST_F( DiagnosticsTest, noControlByteOfAFileOrItsNameReachesTheTerminal ) {
    std::string controls;
    for ( char c = 1; c < 32; ++c )
        controls += c;
    controls += "\x7F\xC2\x9B\n";
    const std::string name = "agent\033[2J\n";
    write( name, "agentName: Fan\n\"/" + controls.substr( 0, 9 ) + "\", K, r\n" + controls );
    for ( const std::string command : { "show", "check", "tokens" } ) {
        const auto result = run( { command, name } );
        EXPECT_EQ( result.exitStatus, 1 );
        for ( const std::string& text : { result.out, result.err } )
            for ( const char c : text )
                EXPECT_TRUE( c == '\n' || !std::iscntrl( static_cast<unsigned char>( c ) ) )
                    << command << ": byte " << static_cast<int>( c );
    }
    EXPECT_THAT( run( { "check", name } ).err, HasSubstr( "agent\\x1B[2J\\n:" ) );
}

} // namespace

} // namespace Corvid::Testing
