#include "support/ParsedProfile.h"

#include <gmock/gmock.h>

namespace {

using namespace CorvidTest;
using Corvid::ErrorDetails;

/// What is wrong in an agent file, as "LINE:COLUMN TEXT", counted in its text.
std::string wrongIn( const std::string& text, const ErrorDetails& details ) {
    if ( !details.hasPlace )
        return "no place";
    const std::string before = text.substr( 0, details.begin );
    const auto line = 1 + std::count( before.begin(), before.end(), '\n' );
    const auto column = before.size() - ( before.rfind( '\n' ) + 1 ) + 1;
    return std::to_string( line ) + ":" + std::to_string( column ) + " " +
           text.substr( details.begin, details.end - details.begin );
}

/// An error's place, once as the record has it and once counted in the text.
void expectSamePlace( const std::string& text, const Corvid::MountProfileHdlr& hdlr ) {
    const ErrorDetails& details = hdlr.errorDetails();
    if ( details.place == text.size() )
        return; // the record counts the appended line end in its own way
    const std::string before = text.substr( 0, details.place );
    EXPECT_EQ( hdlr.errorDesc().line(), 1 + std::count( before.begin(), before.end(), '\n' ) ) << text;
    EXPECT_EQ( hdlr.errorDesc().column(), before.size() - before.rfind( '\n' ) ) << text;
}

struct Case {
    std::string lines; ///< below the title line
    std::string code;
    std::string wrong;
};

void expectDetails( const std::vector<Case>& cases ) {
    for ( const auto& [lines, code, wrong] : cases )
        for ( const bool plainTokens : { false, true } ) {
            const std::string text = "agentName: Fan-%slot\n" + lines;
            const ParsedProfile parsed( text, { .plainTokens = plainTokens } );
            EXPECT_EQ( parsed.hdlr().errorDetails().code, code ) << text;
            EXPECT_EQ( wrongIn( text, parsed.hdlr().errorDetails() ), wrong ) << text;
            expectSamePlace( text, parsed.hdlr() );
        }
}

TEST( ErrorCodes, ATextThatTheLibraryNeverTellsHasTheUnknownOne ) {
    EXPECT_EQ( Corvid::errorCodeOf( "what nobody says" ), Corvid::unknownErrorCode );
    EXPECT_EQ( Corvid::errorCodeOf( "" ), Corvid::unknownErrorCode );
}

TEST( ErrorDetails, TellTheRangeOfTheTokenThatIsNotExpected ) {
    expectDetails( {
        { "/a, hardware::Fan, r\n", "MP041", "2:5 hardware" },
        { "/a, \"K\", r\n", "MP041", "2:5 \"K\"" },
        { "/a, K\n", "MP010", "2:6 " },
        { "/a, K # c\n/b, K, r\n", "MP010", "3:1 /" },
        { "/a, K", "MP010", "2:6 " },
        { "/a, K \t", "MP010", "2:8 " },
        { "lowMountPrio 17\n", "MP032", "2:14 17" },
        { "/a, K, r\r\nhybridMount\r\n", "MP030", "3:1 hybridMount" },
    } );
}

TEST( ErrorDetails, TellTheRangeOfWhatTheHandlerRefuses ) {
    expectDetails( {
        { "/a, K, read\n/b, K, r\n", "MP042", "2:8 read" },
        { "/read, K, read\n", "MP042", "2:11 read" },
        { "rootFlags: rx # c\n/b, K, r\n", "MP042", "2:12 rx" },
        { "/a/%port/b, K, r\n", "MP024", "2:4 %port" },
        { "/a/x% port-b, K, r\n", "MP024", "2:5 % port" },
        { "subAgent: P-%port-%slot\n", "MP024", "2:13 %port" },
        { "/a, K, r, left  side\n", "MP044", "2:11 left  side" },
        { "mountFilter: le-ft\n s\nmountFilter: le-ft\n s\n", "MP050", "4:14 le-ft" },
        { "mountGroup: all, 5\n", "MP062", "2:13 all" },
        { "mountGroup: g, 100\n", "MP063", "2:16 100" },
        { "mountGroup: g, 0100\n", "MP063", "2:16 0100" },
        { "mountGroup: g, 99999999999999999999\n", "MP063", "2:16 99999999999999999999" },
        { "mountGroup: g\ncondition: 0 < count( /a.b )\n", "MP075", "3:16 count" },
        { "mountFilter: r-x\n s\n/a, K, rx, r-x\n", "MP042", "4:8 rx" },
        { "mountFilter: rx\n s\n/a, K, rx, rx\n", "MP042", "4:8 rx" },
        { "/a, K, r\na, K::T, r\n", "MP043", "3:4 K::T" },
        { "/a, K, r\na, C, C\n", "MP043", "3:4 C" },
        { "mountFilter: C-C\n s\n/a, K, r\na, C, C, C - C\n", "MP043", "5:4 C" },
        { "/a, K, r\na, K::\\\nT, r\n", "MP043", "3:4 K::\\\nT" },
        { "include: no-such*.inc\n", "MP080", "2:10 no-such*.inc" },
        { "mountGroup: g\ncondition: 1 == /a.b\nmountGroup: g\ncondition: 1 == /a.b\n", "MP076", "5:10 :" },
    } );
}

TEST( ErrorDetails, TellTheRangeOfTheCharactersThatMakeNoToken ) {
    expectDetails( {
        { "/a{b}\n", "MP001", "2:3 {" },
        { "/\xC3\xA9t\xC3\xA9\n", "MP001", "2:2 \xC3\xA9" },
        { "include: mounts-17.inc\n", "MP003", "2:17 17.i" },
        { "\"/a, K, r\n", "MP004", "2:1 \"/a, K, r" },
        { "/a, \"K, r", "MP004", "2:5 \"K, r" },
        { "/a, \\ # c\nK, r\n", "MP005", "2:5 \\ # c" },
        { "mountGroup: g\ncondition: a ! b\n", "MP002", "3:14 ! " },
        { "{", "MP001", "2:1 {" },
    } );
}

TEST( ErrorDetails, AreEmptyWithoutAnError ) {
    const ParsedProfile parsed( "agentName: Fan\n" );
    EXPECT_EQ( parsed.hdlr().errorDetails().code, "" );
    EXPECT_FALSE( parsed.hdlr().errorDetails().hasPlace );
    EXPECT_EQ( parsed.hdlr().errorDetails().includeMatches, 0U );
}

TEST( ErrorDetails, TellHowAnIncludeFileCameToBeRead ) {
    const std::map<std::string, std::string> files{
        { "a1.inc", "/a, K, r\n" }, { "a2.inc", "/b, K, r\n/c, k, r\n" }, { "a3.inc", "{\n" } };
    const ParsedProfile parsed( "agentName: Fan\n\ninclude: \\\na*.inc\n", { .files = files } );
    const ErrorDetails& details = parsed.hdlr().errorDetails();
    EXPECT_EQ( wrongIn( files.at( "a2.inc" ), details ), "2:5 k" );
    EXPECT_EQ( details.includeLine, 3U );
    EXPECT_EQ( details.includePattern, "a*.inc" );
    EXPECT_EQ( details.includeMatch, 2U );
    EXPECT_EQ( details.includeMatches, 3U );
}

TEST( ErrorDetails, OfTheAgentFileTellNoInclude ) {
    const ParsedProfile parsed( "agentName: Fan\ninclude: inc\n/a, k, r\n",
                                { .files = { { "inc", "/b, K, r\n" } } } );
    EXPECT_EQ( parsed.hdlr().errorDetails().code, "MP041" );
    EXPECT_EQ( parsed.hdlr().errorDetails().includeMatches, 0U );
}

} // namespace
