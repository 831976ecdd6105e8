// Include statements and include files, as far as the grammar goes.

#include "support/ParsedProfile.h"

namespace CorvidTest {

namespace {

ParseOptions withFile( const std::string& text, bool plainTokens = false ) {
    return { .files = { { "x-a.inc", text } }, .plainTokens = plainTokens };
}

constexpr char agentFile[] = "agentName: A-%slot\ninclude: x-*.inc\n/z, T, r\n";

TEST( IncludeFiles, HoldMountLinesOnly ) {
    const std::string before = "agent A-\nkey 0 %slot\ngroup all 99\n";
    expectProfile( agentFile, before + "a T r\nz T r\n", withFile( "/a, T, r" ) );
    expectProfile( agentFile, before + "a T r\nb/%slot T r\nz T r\n",
                   withFile( "\n\r\n# note\n/a, T, r\n\n\"b/\" \"%slot\", T, r\n\n" ) );
    // A keyword begins a mount line, too, where no colon follows.
    expectProfile( agentFile, before + "agentName/a T r\nmountGroup T r\nz T r\n",
                   withFile( "agentName/a, T, r\nmountGroup, T, r" ) );
    expectProfile( "agentName: A\nmountFilter: f\na\nmountGroup: g\ninclude: x-a.inc\n/z, T, r",
                   "agent A\ngroup all 99\ngroup g 99\na T r {a=}\nz T r\n", withFile( "/a, T, r, f" ) );
}

TEST( IncludeFiles, AreRefusedForAnythingElse ) {
    const std::string onlyMounts = "Include file should contain only mounts.";
    const std::string noKeywords = "':', Found ':', include file should only contain mounts";
    const std::string in = " In include file,  near ";
    const struct {
        std::string text;
        std::string description;
        std::uint32_t line;
        std::int32_t position;
        std::uint32_t kind;
    } rows[] = {
        { "", " at <EOF>, " + onlyMounts, 2, 0, 3 },
        { "\n# note\n", " at <EOF>, " + onlyMounts, 2, 0, 3 },
        { "agentName: B", " near 'agentName', " + onlyMounts, 1, -1, 3 },
        { "\nagentName\n", " near 'agentName', " + onlyMounts, 2, 0, 3 },
        { "hybridMount", " near 'hybridMount', " + onlyMounts, 1, -1, 3 },
        { ")", " near ')', " + onlyMounts, 1, -1, 3 },
        { "/a, T, r\nhybridMount", in + "'hybridMount', " + onlyMounts, 2, 0, 1 },
        { "/a, T, r\nlowMountPrio: x", in + "'lowMountPrio', " + onlyMounts, 2, 0, 1 },
        { "/a, T, r\nnoDefaultMountGroup", in + "'noDefaultMountGroup', " + onlyMounts, 2, 0, 1 },
        { "mountGroup: x", in + noKeywords, 1, 9, 1 },
        { "/a, T, r\nagentName: B", in + noKeywords, 2, 9, 1 },
        { "/a, T, r\ninclude: y", in + noKeywords, 2, 7, 1 },
        { "/a, T, r\nmountFilter: f", in + noKeywords, 2, 11, 1 },
        { "\"a\": x", in + noKeywords, 1, 2, 1 },
        { "/a, T, r\n)", in + "')',  Missing <EOF>", 2, 0, 10 },
        { "/a, T\n", in + "'\\n',  Expected COMMA", 1, 4, 2 },
        { "/%bad, T, r", in + "',', Reference to undeclared template key %bad", 1, 4, 2 },
        { "/a, T, r )", in + "')', Expecting end of line.", 1, 8, 5 },
    };
    for ( const auto& row : rows )
        for ( const bool plainTokens : { false, true } ) {
            SCOPED_TRACE( "include file:\n" + row.text );
            const ParsedProfile parsed( agentFile, withFile( row.text, plainTokens ) );
            expectErrorOf( parsed, row.description, row.line, row.position, row.kind );
            EXPECT_EQ( parsed.error().includeFileName().str(), parsed.fileBeside( "x-a.inc" ) );
            EXPECT_EQ( parsed.mountsOf( "all" ).find( "z T r" ), std::string::npos );
        }
}

TEST( Includes, AreParsedBeforeTheirLineEndIsMatched ) {
    for ( const bool plainTokens : { false, true } ) {
        const ParsedProfile parsed( "agentName: A\ninclude: x-a.inc )\n",
                                    withFile( "/a, T, r", plainTokens ) );
        expectErrorOf( parsed,
                       " In mount group 'all' ,  near ')', Expecting end of include here.Failed to associate "
                       "subsequent characters with include pattern.",
                       2, 17, 5 );
        EXPECT_EQ( parsed.mountsOf( "all" ), "a T r\n" );
        EXPECT_TRUE( parsed.error().includeFileName().empty() );
    }
}

TEST( Includes, WithoutAMatchAreAnErrorOfTheIncludeLine ) {
    for ( const bool plainTokens : { false, true } ) {
        const ParseOptions options{ .plainTokens = plainTokens };
        const ParsedProfile atLineEnd( "agentName: A\ninclude: no-7 *.Inc\n", options );
        expectErrorOf( atLineEnd,
                       " In mount group 'all' ,  near '\\n', No include file found matching " +
                           atLineEnd.fileBeside( "no-7*.Inc" ),
                       2, 19, 2 );
        const ParsedProfile beforeASlash( "agentName: A\ninclude: a/b\n", options );
        expectErrorOf( beforeASlash,
                       " In mount group 'all' ,  near '/', No include file found matching " +
                           beforeASlash.fileBeside( "a" ),
                       2, 10, 5 );
    }
}

TEST( Includes, TellTheirErrorAndNotTheOneOfTheIncludingFile ) {
    for ( const bool plainTokens : { false, true } ) {
        const ParsedProfile inBoth( "agentName: A\ninclude: x-a.inc\n/b, T\n",
                                    withFile( "/a, T\n", plainTokens ) );
        expectErrorOf( inBoth, " In include file,  near '\\n',  Expected COMMA", 1, 4, 2 );
        // But a lexer error of the including file has come before.
        const ParsedProfile lexerFirst( "agentName: A\ninclude: x-a.inc\n{\n",
                                        withFile( "/a, T\n", plainTokens ) );
        expectErrorOf( lexerFirst, "Unrecongnized character , near '{'\n", 3, 0, 3 );
        EXPECT_TRUE( lexerFirst.error().includeFileName().empty() );
    }
}

} // namespace

} // namespace CorvidTest
