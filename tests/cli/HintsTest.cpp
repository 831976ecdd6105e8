#include "cli/HintsFixture.h"

#include "Cli/Spelling.h"

namespace Corvid::Testing {

namespace {

using testing::HasSubstr;

TEST_F( HintsTest, tellWhatToDoAboutTheTrapsOfTheLanguage ) {
    const HintRow rows[] = {
        { "/a, K, r # c\n/b, K, r\n", "the comment on line 2 takes the end of its line along, so that line 3 "
                                      "goes on with it: put the comment "
                                      "on a line of its own" },
        { "\"/a#b\", K, r\n/b, k, r\n",
          "each part of a type begins with a capital letter: did you mean 'K'?" },
        { "\"/a#b\", K, r\n/{, K, r\n", "a path with such characters stands in double quotes" },
        { "# c\n/{, K, r\n", "a path with such characters stands in double quotes" },
        { "/air/in, K, r\n", "'in' is an operator everywhere: put the whole path in double quotes" },
        { "mountGroup: and\n", "'and' is an operator everywhere and cannot be part of a name" },
        { "mountGroup: g\ncondition: 1 == /a.b AND 2 == /c.d\n",
          "operators are written in lower case: 'and'" },
        { "include: 2.inc\n",
          "digits with a dot behind them are taken for a decimal number: let a letter or '*' stand between" },
        { "mountGroup: 2.1\n", "'2.1' is a number with a decimal point and cannot be part of a name" },
        { "/a/0x1F, K, r\n", "'0x1F' is a hexadecimal number: put the whole path in double quotes" },
        { "/a/0X1F, K, r\n", "'0X1F' is a hexadecimal number: put the whole path in double quotes" },
        { "/a, K, \\ # c\nr\n", "nothing may stand behind the backslash, not even a blank or a comment" },
        { "/a, K, \\\r\nr\r\n",
          "the line ends in CR LF: a backslash joins lines only with a plain LF behind it" },
        { "/a, K, r\nalias: %a = %sysname\n",
          "'alias' belongs above the first mount line and the first mountGroup" },
        { "/a, K, r\nalias \\\n: %a = %sysname\n",
          "'alias' belongs above the first mount line and the first mountGroup" },
        { "/a, K, r\nHYBRIDMOUNT\n",
          "'hybridMount' belongs above the first mount line and the first mountGroup" },
        { "/a, K, r\nnoDefaultMountGroup\n",
          "'noDefaultMountGroup' belongs above the first mount line and the first mountGroup" },
        { "mountGroup: g\n/a, K, r\ncondition: 1 == /a.b\n",
          "'condition' must be the first line of its mount group" },
        { "/a, K, r\nagentName: Other\n", "a file has one title line, its first" },
        { "mountGroup: g\nmountFilter: f\n a\ninclude: x\n",
          "a mount filter closes the group before it: put 'include' above it, or below a mountGroup" },
        { "/a, K, r\nhybridMount, K, r\n",
          "'hybridMount' is a statement everywhere: put the whole path in double quotes" },
        { "subAgent, k, r\n", "each part of a type begins with a capital letter: did you mean 'K'?" },
        { "mountGroup late\n", "a colon is missing: mountGroup: ..." },
        { "/a, K\n", "a mount line has three parts: PATH, TYPE, FLAGS" },
        { "\"/a, K, r\n", "a quoted text ends on its line: a double quote is missing" },
        { "mountGroup: g\ncondition: /a.b == 1\n",
          "what is compared stands on the left, the path on the right: true == /path.attribute" },
        { "mountGroup: g\ncondition: %sysname == 5\n",
          "on the right stands a path with its attribute: 5 == /path.attribute" },
        { "mountGroup: g\ncondition: -up == /a.b\n",
          "a hyphen in front of a literal is a minus sign, so a number has to follow" },
        { "mountGroup: g\ncondition: 1 9 == /a.b\n", "write it as: condition: true == /path.attribute" },
        { "mountGroup: g\ncondition: 1 == a/b.c\n", "a path in a condition begins with a slash" },
        { "mountGroup: g\ncondition: 1 == /a.B\n", "an attribute begins with a lower-case letter" },
        { "mountGroup: g\ncondition: 1 == /a.b\nmountGroup: g\ncondition: 1 == /c.d\n",
          "join both conditions with 'and' on one line" },
        { "include: no\n", "a pattern is taken beside the agent file, whatever the working directory is" },
        { "include: a/b\n", "a pattern has no slashes: include files lie beside the agent file" },
        { "\xEF\xBB\xBF/a, K, r\n", "the file has a byte order mark here: save it without one" },
        { "\xE2\x80\x9C/a\xE2\x80\x9D, K, r\n", "texts are quoted with the plain double quote, \"" },
        { "/a,\xC2\xA0K, r\n", "this is a no-break space: put a plain blank in its place" },
    };
    for ( const auto& [lines, hint] : rows )
        EXPECT_EQ( hintFor( "agentName: Fan\n" + lines ), hint ) << lines;
}

TEST_F( HintsTest, tellWhatAMisspeltWordMayHaveMeant ) {
    const HintRow rows[] = {
        { "mountGruop: g\n", "did you mean 'mountGroup'?" },
        { "/a, K, r\nMountgrup: g\n", "did you mean 'mountGroup'?" },
        { "hybridMont\n", "did you mean 'hybridMount'?" },
        { "roodFlag: r\n", "did you mean 'rootFlags'?" },
        { "paint: r\n", "" },
        { "paint_it: r\n", "" },
        { "/a/%Slot, K, r\n", "did you mean '%slot'?" },
        { "/a/%sysnam, K, r\n", "did you mean '%sysname'?" },
        { "alias: %peerSlot = %slot\n/a/%perSlot, K, r\n", "did you mean '%peerSlot'?" },
        { "/a/%chassis, K, r\n", "declare '%chassis' in the title line, or by an alias above" },
        { "mountFilter: critical\n a\n/a, K, r, critcal\n", "did you mean 'critical'?" },
        { "mountFilter: critical\n a\n/a, K, r, other\n", "" },
        { "/a, K, rR\n", "case matters: did you mean 'r'?" },
        { "/a, K, AND\n", "flags are single letters, in any order, and case matters: r w i c f C D S B N O" },
        { "/a, K, read\n",
          "flags are single letters, in any order, and case matters: r w i c f C D S B N O" },
        { "/a, hardware::Fan, r\n",
          "each part of a type begins with a capital letter: did you mean 'Hardware'?" },
        { "/a, Hardware::alarm, r\n",
          "each part of a type begins with a capital letter: did you mean 'Alarm'?" },
        { "/a, zone, r\n", "each part of a type begins with a capital letter: did you mean 'Zone'?" },
    };
    for ( const auto& [lines, hint] : rows )
        EXPECT_EQ( hintFor( "agentName: Fan-%slot\n" + lines ), hint ) << lines;
    EXPECT_EQ( hintFor( "\n# c\nagentnam: Fan\n" ), "did you mean 'agentName'?" );
    EXPECT_EQ( hintFor( "/a, K, r\nagentnam: Fan\n" ), "" );
    EXPECT_EQ( hintFor( "" ), "" );
}

TEST_F( HintsTest, offerEveryKeyword ) {
    const std::string page = readFile( MOUNTPROFILE_SOURCE_DIR "/docs/language.md" );
    constexpr std::string_view heading = "\n### `";
    int count = 0;
    for ( auto at = page.find( heading ); at != std::string::npos;
          at = page.find( heading, at + 1 ), ++count ) {
        const auto begin = at + heading.size();
        const std::string keyword = page.substr( begin, page.find( '`', begin ) - begin );
        const std::string title = keyword == "agentName" ? "" : "agentName: Fan\n";
        EXPECT_EQ( hintFor( title + keyword + "x: y\n" ), "did you mean '" + keyword + "'?" );
    }
    EXPECT_GE( count, 12 );
}

TEST_F( HintsTest, tellWhatAnIncludeFileMayHold ) {
    const HintRow rows[] = {
        { "mountGroup: g\n",
          "an include file holds nothing but mount lines: 'mountGroup' belongs in the agent file" },
        { "/a, K, r\nALIAS: %a = %b\n",
          "an include file holds nothing but mount lines: 'alias' belongs in the agent file" },
        { "/a, K, r\nhybridMount\n",
          "an include file holds nothing but mount lines: 'hybridMount' belongs in the agent file" },
        { "/~, K, r\n", "a path with such characters stands in double quotes" },
        { "/a, K, r, late\nmountFilter: late\n", "" },
        { "# nothing\n", "an include file holds mount lines, at least one, and nothing else" },
        { "/a, K, r # c\n/b, K, r\n", "the comment on line 1 takes the end of its line along, so that line 2 "
                                      "goes on with it: put the comment "
                                      "on a line of its own" },
    };
    for ( const auto& [lines, hint] : rows ) {
        write( "inc", lines );
        EXPECT_EQ( hintFor( "agentName: Fan\ninclude: inc\n" ), hint ) << lines;
    }
}

TEST_F( HintsTest, tellOfADirectoryWhoseNameIsAPattern ) {
    const std::string isPattern = "      = hint: the directory's name is part of the pattern, and so is the ";
    const std::string isNone = "      = hint: a pattern is taken beside the agent file";
    for ( const auto& [agent, hint] : { std::pair( "a\\b/agent", isPattern + "'\\' in it\n" ),
                                        std::pair( "w[x]/agent", isPattern + "'[' in it\n" ),
                                        std::pair( "w/*", isNone ), std::pair( "*", isNone ) } ) {
        write( agent, "agentName: Fan\ninclude: no.inc\n" );
        EXPECT_THAT( run( { "check", agent } ).err, HasSubstr( hint ) ) << agent;
    }
}

TEST_F( HintsTest, areThereForEveryErrorInTheListOfTraps ) {
    const std::string page = readFile( MOUNTPROFILE_SOURCE_DIR "/docs/language.md" );
    const std::string traps = page.substr( page.find( "\n## Traps\n" ) );
    constexpr std::string_view fence = "```mountprofile ";
    int count = 0;
    for ( auto at = traps.find( fence ); at != std::string::npos; at = traps.find( fence, at + 1 ) ) {
        const auto lineEnd = traps.find( '\n', at );
        if ( traps.substr( at, lineEnd - at ).find( "error=" ) == std::string::npos )
            continue;
        const std::string text = traps.substr( lineEnd + 1, traps.find( "```", lineEnd ) - lineEnd - 1 );
        EXPECT_NE( hintFor( text ), "" ) << text;
        ++count;
    }
    EXPECT_GE( count, 7 );
}

TEST_F( HintsTest, ofTheCommandLineTellWhatWasMeant ) {
    const struct {
        std::vector<std::string> arguments;
        std::string end;
    } rows[] = {
        { { "check", "--fromat", "json", "x" }, "--fromat; did you mean '--format'? [MP092]\n" },
        { { "show", "--jsno", "x" }, "--jsno; did you mean '--json'? [MP092]\n" },
        { { "show", "--sytem=ar", "x" }, "; did you mean '--system'? [MP092]\n" },
        { { "chekc", "x" }, "; did you mean 'check'? [MP092]\n" },
        { { "--verson" }, "--verson; did you mean '--version'? [MP092]\n" },
        { { "show", "--colour", "x" }, "--colour [MP092]\n" },
        { { "paint" }, "paint [MP092]\n" },
    };
    for ( const auto& [arguments, end] : rows )
        EXPECT_THAT( run( arguments ), Answers( 2, "", testing::EndsWith( end ) ) )
            << testing::PrintToString( arguments );
    EXPECT_THAT( run( { "check", "--format=json", "--job", "2" } ).out,
                 HasSubstr( "\"hint\":\"did you mean '--jobs'?\"" ) );
}

TEST( Spelling, takesTheCandidateThatTakesFewestChanges ) {
    using Cli::nearest;
    const std::vector<std::string> words{ "condition", "conditionBlocker", "alias", "include" };
    for ( const std::string word : { "conditon", "codnition", "Condition", "condittion", "kondition" } )
        EXPECT_EQ( nearest( word, words ), "condition" ) << word;
    EXPECT_EQ( nearest( "conditionBloker", words ), "conditionBlocker" );
    EXPECT_EQ( nearest( "alais", words ), "alias" );
    EXPECT_EQ( nearest( "alias", words ), "" ) << "nothing is wrong with it";
    for ( const std::string word : { "", "al", "mount", "conclusion" } )
        EXPECT_EQ( nearest( word, words ), "" ) << word;
    EXPECT_EQ( nearest( std::string( 5000, 'a' ), { std::string( 5000, 'b' ) } ), "" );
    EXPECT_EQ( nearest( "abc", { "abd", "abe" } ), "abd" );
}

} // namespace

} // namespace Corvid::Testing
