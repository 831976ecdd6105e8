#include "cli/HintsFixture.h"

#include <span>

namespace Corvid::Testing {

namespace {

constexpr char inQuotes[] = ": put the whole path in double quotes";
constexpr char keyInQuotes[] = ": put the whole key in double quotes";
constexpr char suchPath[] = "a path with such characters stands in double quotes";
constexpr char noQuotes[] =
    "nothing can be quoted but the path of a mount and the key of a filter's attribute";
constexpr char meaningless[] = "this character means nothing outside of comments and quoted texts";
constexpr char pattern[] =
    "a pattern is made of words, whole numbers, '-', '.' and '*', which can stand for all else";
constexpr char beside[] = "a pattern is taken beside the agent file, whatever the working directory is";
constexpr char flagLetters[] =
    "flags are single letters, in any order, and case matters: r w i c f C D S B N O";
constexpr char filterOrFlags[] =
    "the fourth part of a line names a mount filter: several flags are one word, such as rw";
constexpr char threeParts[] = "a mount line has three parts: PATH, TYPE, FLAGS";
constexpr char mountForm[] = "write it as: PATH, TYPE, FLAGS, or: PATH, TYPE, FLAGS, FILTER";
constexpr char groupForm[] =
    "write it as: mountGroup: NAME, or: mountGroup: NAME, PRIORITY, which is from 1 to 99";
constexpr char filterForm[] = "a line of a mount filter is: ATTRIBUTE, or: ATTRIBUTE, KEY";
constexpr char oneWord[] = "flags are one word, such as rw";
constexpr char joined[] = "a line goes on in the next one only behind a backslash, as its last character";
constexpr char operators[] = "the operators are: == != <= >= < > in notin";
constexpr char right[] = "on the right stands a path with its attribute: 5 == /path.attribute";
constexpr char noParentheses[] = "there are no parentheses but those of len( /path.attribute )";
constexpr char oneTitle[] = "a file has one title line, its first";
constexpr char decimal[] = "digits with a dot behind them are taken for a decimal number";
constexpr char hexadecimal[] = "0x begins a hexadecimal number, and its digits are missing";

std::string takesLineEnd( int comment, int next ) {
    return "the comment on line " + std::to_string( comment ) +
           " takes the end of its line along, so that line " + std::to_string( next ) +
           " goes on with it: put the comment on a line of its own";
}

std::string notInName( const std::string& token, const std::string& whole = "name" ) {
    return "'" + token + "' is an operator everywhere and cannot be part of a " + whole;
}

const HintRow aboutComments[] = {
    { "/fan, A::B, rx # left\n\n", flagLetters },
    { "/fan, A::B, r, f # left\n\n", filterOrFlags },
    { "/fan, A::B # left\n\n", threeParts },
    { "/fan, A::B # left", threeParts },
    { "include: no # left\n\n", beside },
    { "include: no # left\n/b, A::B, r\n", beside },
    { "mountGroup: g, 0 # c\n\n", "" },
    { "/a, A::B, r # x\n{\n", meaningless },
    { "/a, A::B # x\n/b, A::B, r\n", mountForm },
    { "/a, A::B, r # x\n# another\n/b, A::B, r\n", takesLineEnd( 2, 4 ) },
    { "/a, A::B, r # x\n\n# another\n/b, A::B, 5\n", mountForm },
    { "/a, A::B, \\\n r # x\n/b, A::B, r\n", takesLineEnd( 3, 4 ) },
    { "subAgent: a # x\nb: /c\n", takesLineEnd( 2, 3 ) },
    { "mountGroup: g # x\nb c: 5\n", groupForm },
    { "mountFilter: f\n a\n/a, A::B, r # x\n, f /\n", mountForm },
};

const HintRow aboutParts[] = {
    { "/hardware/fan Hardware::Fan, rw\n", threeParts },
    { "/hardware/fan, Hardware::Fan rw\n", threeParts },
    { "include/config, Agent::Config\n", threeParts },
    { "condition, A::B\n", threeParts },
    { "/a, 12, r\n", mountForm },
    { "/a, A, r,\n", mountForm },
    { "/a, A, r\nand b\n", "" },
    { "/a: A, r\n", mountForm },
    { "alias::a, A\n", threeParts },
    { "/, A, r\n", mountForm },
    { "/a, A::B, r w\n", oneWord },
    { "/a, A::B, r, w\n", filterOrFlags },
    { "/a, A, r, f\nmountFilter: other\n", filterOrFlags },
    { "/a, A, r, f\n\n MountFilter : f # late\n a\n", "declare the filter above the lines that name it" },
    { "/a, A, r, late\nmountFilter: lat\nmountFilter: late",
      "declare the filter above the lines that name it" },
    { "/a, A, r, late\n#mountFilter: late\n", "" },
    { "/a, A, r, late\nmountFilter late\n", "" },
    { "/a, A:B, r\n", "the parts of a type are joined with '::'" },
    { "/a, A1.5, r\n", mountForm },
    { "/a, A-B, r\n", mountForm },
    { "/a, A.\n", threeParts },
    { "/a, A, B.C\n", oneWord },
    { "/a, A, ro\n", flagLetters },
    { "/a, A, RO\n", flagLetters },
    { "/a, A, RC\n", flagLetters },
    { "/a, A, r2\n", flagLetters },
    { "/a, A, RRW\n", "case matters: did you mean 'rw'?" },
    { "/a, A::B,\nr\n", joined },
    { "/a,\nA::B, r\n", joined },
    { "/a,\n/b, B, r\n", threeParts },
    { "/a,\nb, B, r, f, g\n", threeParts },
    { "/a,\nB\n", threeParts },
    { "/a, A,", mountForm },
    { "mountFilter: f\nSeverity, high\n", "an attribute begins with a lower-case letter" },
    { "mountFilter: f\n5, high\n", "an attribute begins with a lower-case letter" },
    { "mountFilter: f\n a: 5\n", filterForm },
    { "mountFilter: f\n a, b, c\n", filterForm },
    { "mountFilter: f\n a\n/a, A, r x\n", oneWord },
    { "mountFilter: f\n a\n/a, A\n", threeParts },
    { "mountFilter: f\n a\na/b, A\n", threeParts },
    { "/a, A, r\nmountFilter: f\n a\n/b\n",
      "a mount filter closes the group before it: put the mounts above it, or below a mountGroup" },
    { "/a, A, r\nmountFilter: f\n a\n/b, A, r, f\n",
      "a mount filter closes the group before it: put the mounts above it, or below a mountGroup" },
    { "subAgent: %slot\n", "write it as: subAgent: NAME, or: subAgent: NAME-%KEY" },
    { "alias: peer = %slot\n", "write it as: alias: %NEW = %KEY" },
    { "alias: %a in %slot\n", "write it as: alias: %NEW = %KEY" },
    { "rootFlags: r, w\n", "write it as: rootFlags: FLAGS, which are one word, such as rw" },
    { "hybridMount: on\n", "'hybridMount' stands alone on its line" },
    { "mountFilter: f, x\n", "write it as: mountFilter: NAME, and its attributes on the lines below" },
    { "include:\n", "write it as: include: PATTERN" },
    { "mountGroup: g, in\n", groupForm },
    { "mountGroup: g, 1.5\n", groupForm },
    { "mountGroup: g, ax\n", groupForm },
};

const HintRow aboutCharacters[] = {
    { "hybridMount;\n", "a statement ends with its line, without a semicolon" },
    { "; comment\n", "a comment begins with #" },
    { "// comment\n", "a comment begins with #" },
    { "mountGroup: g {\n", meaningless },
    { "/a, A::B; r\n", meaningless },
    { "/a, A::B, r|w\n", oneWord },
    { "/a, A|B, r\n", meaningless },
    { "rootFlags: r|w\n", meaningless },
    { "mountGroup: g\ncondition: 1 == /a.b && 2 == /c.d\n", "comparisons can only be joined with 'and'" },
    { "mountGroup: g\ncondition: 1 == /a[1].b\n", meaningless },
    { "mountFilter: f\n sev, ~x\n", "a key with such characters stands in double quotes" },
    { "mountFilter: f\n 'sev', x\n", noQuotes },
    { "mountFilter: f\n sev, 'x'\n", "texts are quoted with the plain double quote, \"" },
    { "mountGroup: \"g\"\n", noQuotes },
    { "mountGroup: 'g'\n", noQuotes },
    { "/a, A \"B\"\n", noQuotes },
    { "/a, A, \"r\"\n", noQuotes },
    { "/a, A, r, \"f\n", "a quoted text ends on its line: a double quote is missing" },
    { "/a, A, r \"f\"\n", oneWord },
    { "paint: \"f\n", "a quoted text ends on its line: a double quote is missing" },
    { "mountGroup: g\ncondition: 1 ! /a.b\n", "'!' is a sign only with '=' behind it: !=" },
    { "/a # x\r/b\n", "" },
    { "/a//b, A, r\n", "between the units of a path stands one slash" },
    { "//a, A, r\n", "between the units of a path stands one slash" },
    { "/a?/b, A, r\n", "'?' can only be the end of a path" },
    { "/a?b, A, r\n", "'?' can only be the end of a path" },
    { "/a/*, A, r\n", suchPath },
    { "/a \"b\", A, r\n", "a path is quoted as a whole, or not at all" },
    { "\"/a\" /b, A, r\n", "a path is quoted as a whole, or not at all" },
    { "/a/0xg, A, r\n", std::string( hexadecimal ) + inQuotes },
    { "/a/2.x, A, r\n", std::string( decimal ) + inQuotes },
    { "mountFilter: f\n sev, 1.x\n", std::string( decimal ) + keyInQuotes },
    { "mountGroup: 2.x\n", decimal },
    { "mountGroup: g\ncondition: 0xg == /a.b\n", hexadecimal },
    { "mountFilter: f\n sev, 1.5\n", std::string( "'1.5' is a number with a decimal point" ) + keyInQuotes },
    { "mountFilter: f\n sev, log-in\n", std::string( "'in' is an operator everywhere" ) + keyInQuotes },
    { "mountGroup: g\ncondition: x-1.5 == /a.b\n",
      "'1.5' is a number with a decimal point and cannot be part of a name" },
    { "subAgent: log-in\n", notInName( "in" ) },
    { "mountFilter: in\n", notInName( "in" ) },
    { "/a, A, r, in\n", notInName( "in" ) },
    { "/a, in::B, r\n", notInName( "in" ) },
    { "alias: %in = %slot\n", notInName( "in" ) },
    { "include: in\n", notInName( "in" ) },
    { "/a, A::B in, r\n", mountForm },
    { "hybridMount, K, r\n", std::string( "'hybridMount' is a statement everywhere" ) + inQuotes },
    { "/a/HybridMount, K, r\n", std::string( "'HybridMount' is a statement everywhere" ) + inQuotes },
    { "include: lowMountPrio\n", "'lowMountPrio' is a statement everywhere and cannot be part of a name" },
};

const HintRow aboutStatements[] = {
    { "alias %peer = %sysname\n", "a colon is missing: alias: ..." },
    { "alias %peer = %sysname, %cellId, %cellPath\n", "a colon is missing: alias: ..." },
    { "alias %peer, K\n", "declare '%peer' in the title line, or by an alias above" },
    { "alias: %a = % \tb\n", "declare '%b' in the title line, or by an alias above" },
    { "alias =\n", "a colon is missing: alias: ..." },
    { "include *\n", "a colon is missing: include: ..." },
    { "include\n", "a colon is missing: include: ..." },
    { "mountGroup late, 5\n", "a colon is missing: mountGroup: ..." },
    { "alias/a//b, A, r\n", "between the units of a path stands one slash" },
    { "alias a, k, r\n", "each part of a type begins with a capital letter: did you mean 'K'?" },
    { "agentName Fan\n", oneTitle },
    { "agentName: Fan\n", oneTitle },
    { "condition: 1 == /a.b\n", "'condition' belongs below a mountGroup: the group 'all' has none" },
    { "mountGroup: g\ncondition: 1 == /a.b\ncondition: 1 == /c.d\n",
      "join both conditions with 'and' on one line" },
    { "mountGroup: g\nmountFilter: f\n a\ncondition: 1 == /c.d\n",
      "'condition' must be the first line of its mount group" },
    { "include: a*\n", "the pattern matches an agent file, and those cannot be included" },
    { "include: a, b\n", "each pattern has an 'include' of its own" },
    { "include: a_b?.inc\n", pattern },
    { "include: a-1.1.inc\n", pattern },
    { "include: /a\n", "a pattern has no slashes: include files lie beside the agent file" },
};

const HintRow aboutConditions[] = {
    { "1 == len /a.b", "the path of 'len' stands in parentheses: len( /path.attribute )" },
    { "1 == len( /a.b", "the path of 'len' stands in parentheses: len( /path.attribute )" },
    { "1 == len", "a path in a condition begins with a slash" },
    { "1 == len( a.b )", "a path in a condition begins with a slash" },
    { "1 == LEN( /a.b )", "operators are written in lower case: 'len'" },
    { "1 == count( /a.b )", "" },
    { "\"up\" == /x.y", noQuotes },
    { "(up == /x.y)", noParentheses },
    { "x == (/a.b)", noParentheses },
    { "", "write it as: condition: true == /path.attribute" },
    { "* == /a.b", "write it as: condition: true == /path.attribute" },
    { "x == /a.b and", "behind 'and' stands another comparison: a backslash as the last character of a line "
                       "joins it with the next one" },
    { "x == /a.b\nand y == /c.d",
      "a condition goes on in the next line only behind a backslash, as the last character of its line" },
    { "x == /a.b\n/a and, K, r", "'and' is an operator everywhere: put the whole path in double quotes" },
    { "x === /a.b", operators },
    { "x <> /a.b", operators },
    { "x = /a.b", operators },
    { "x", operators },
    { "x IN /a.b", "operators are written in lower case: 'in'" },
    { "len( /a.b ) == 1",
      "what is compared stands on the left, the path on the right: 1 == len( /path.attribute )" },
    { "x == \"up\"", right },
    { "x ==", right },
    { "x == != /a.b", operators },
    { "x == /a.b.c", "a path in a condition has one dot, in front of its attribute" },
    { "x == /a.b notin /c.d", "comparisons are joined with 'and'" },
    { "x == /a", "behind the path stand a dot and an attribute: /path.attribute" },
    { "x == /in/a.b", notInName( "in", "path" ) },
    { "x == /a.in", notInName( "in" ) },
    { "x == /a/2.state", decimal },
};

using Rows = std::span<const HintRow>;

TEST_F( HintsTest, areTrueForTheLineThatTheyAreGivenFor ) {
    for ( const Rows rows :
          { Rows( aboutComments ), Rows( aboutParts ), Rows( aboutCharacters ), Rows( aboutStatements ) } )
        for ( const auto& [lines, hint] : rows )
            EXPECT_EQ( hintFor( "agentName: Fan\n" + lines ), hint ) << lines;
    for ( const auto& [condition, hint] : aboutConditions )
        EXPECT_EQ( hintFor( "agentName: Fan\nmountGroup: g\ncondition: " + condition + "\n" ), hint )
            << condition;
}

TEST_F( HintsTest, ofTheTitleLineAreTrueForIt ) {
    const HintRow rows[] = {
        { "agentName: Fan # x\nalias: %a = %sysname\n", takesLineEnd( 1, 2 ) },
        { "agentName: log-in\n", notInName( "in" ) },
        { "agentName: Fan = 1\n", "write it as: agentName: NAME, or: agentName: NAME-%KEY" },
        { "agentname Fan\n", "a colon is missing: agentName: ..." },
        { "agentName\n", "" },
        { "agentName/Fan, A, r\n", "" },
        { "agentName, Agent::Name, r\n", "" },
        { "agentName::x, A, r\n", "" },
        { "agentName-x, A, r\n", "" },
        { "agentName, A\n", "" },
        { "agentName = Fan\n", "a colon is missing: agentName: ..." },
        { "\xFF\xFE"
          "a",
          "this looks like UTF-16: save the file as plain ASCII or as UTF-8" },
        { std::string( "a\0g\0", 4 ), "this looks like UTF-16: save the file as plain ASCII or as UTF-8" },
        { std::string( "\0a\0g", 4 ), "this looks like UTF-16: save the file as plain ASCII or as UTF-8" },
        { std::string( "\0\0\0\0", 4 ), meaningless },
        { std::string( "a\0g ", 4 ), meaningless },
        { std::string( "a\0g", 3 ), meaningless },
    };
    for ( const auto& [lines, hint] : rows )
        EXPECT_EQ( hintFor( lines ), hint ) << lines;
}

TEST_F( HintsTest, ofIncludeFilesDoNotAskForStatements ) {
    const HintRow rows[] = {
        { "mountFilter f\n",
          "an include file holds nothing but mount lines: 'mountFilter' belongs in the agent file" },
        { "alias %a = %b\n",
          "an include file holds nothing but mount lines: 'alias' belongs in the agent file" },
        { "/a, A, r\nagentName: Fan\n",
          "an include file holds nothing but mount lines: 'agentName' belongs in the agent file" },
        { "mountGrop: x\n", "an include file holds nothing but mount lines" },
        { "hybridMnt\n", threeParts },
        { "/a A, r\n", threeParts },
        { "in\n", "an include file holds mount lines, at least one, and nothing else" },
        { "agentName: Other\n", "the pattern matches an agent file, and those cannot be included" },
        { "/a/in, A, r\n", std::string( "'in' is an operator everywhere" ) + inQuotes },
    };
    for ( const auto& [lines, hint] : rows ) {
        write( "inc", lines );
        EXPECT_EQ( hintFor( "agentName: Fan\ninclude: inc\n" ), hint ) << lines;
    }
}

/// Follows hints.
class FollowedHintsTest : public HintsTest {
  protected:
    /// The first line of what is said about an agent file; empty when it is valid.
    [[nodiscard]] std::string errorOf( const std::string& agent ) const {
        write( "agent", agent );
        const std::string error = run( { "check", "agent" } ).err;
        return error.substr( 0, error.find( '\n' ) );
    }
    /// The text between the first two marks.
    static std::string between( const std::string& text, const std::string& begin, const std::string& end ) {
        const auto at = text.find( begin ) + begin.size();
        return text.substr( at, text.find( end, at ) - at );
    }
};

TEST_F( FollowedHintsTest, whatMayHaveBeenMeantMendsTheError ) {
    const std::string title = "agentName: Fan-%slot\n";
    const HintRow rows[] = {
        { "mountGruop: g\n", "mountGruop" },
        { "hybridMont\n", "hybridMont" },
        { "/a/%Slot, K, r\n", "%Slot" },
        { "mountFilter: critical\n a\n/a, K, r, critcal\n", "critcal" },
        { "/a, K, rR\n", "rR" },
        { "rootFlags: WR\n", "WR" },
        { "/a, hardware::Fan, r\n", "hardware" },
        { "/a, Hardware::alarm, r\n", "alarm" },
    };
    for ( const auto& [lines, wrong] : rows ) {
        const std::string meant = between( hintFor( title + lines ), "did you mean '", "'?" );
        std::string mended = title + lines;
        mended.replace( mended.find( wrong ), wrong.size(), meant );
        EXPECT_EQ( errorOf( mended ), "" ) << mended;
    }
}

TEST_F( FollowedHintsTest, quotesMendTheErrorsThatAskForThem ) {
    const std::string title = "agentName: Fan\n";
    int count = 0;
    for ( const Rows rows : { Rows( aboutCharacters ), Rows( aboutParts ) } )
        for ( const auto& [lines, hint] : rows ) {
            const bool isKey = hint.ends_with( keyInQuotes ) || hint.starts_with( "a key with such" );
            if ( !isKey && !hint.ends_with( inQuotes ) && hint != suchPath )
                continue;
            ++count;
            std::string mended = lines.substr( 0, lines.size() - 1 );
            const auto comma = mended.find( ',' );
            if ( isKey )
                mended.insert( comma + 2, "\"" ).append( "\"" );
            else
                mended.insert( comma, "\"" ).insert( 0, "\"" );
            EXPECT_EQ( errorOf( title + mended + "\n" ), "" ) << mended;
        }
    EXPECT_GE( count, 7 );
}

TEST_F( FollowedHintsTest, aColonMendsTheStatementsThatLackOne ) {
    write( "inc", "/a, K, r\n" );
    for ( const std::string line : { "alias %peer = %sysname", "include inc", "mountGroup late, 5",
                                     "mountFilter f", "rootFlags rw", "subAgent x" } ) {
        EXPECT_THAT( hintFor( "agentName: Fan\n" + line + "\n" ),
                     testing::StartsWith( "a colon is missing" ) );
        std::string mended = line;
        mended.insert( line.find( ' ' ), ":" );
        EXPECT_EQ( errorOf( "agentName: Fan\n" + mended + "\n" ), "" ) << mended;
    }
}

} // namespace

} // namespace Corvid::Testing
