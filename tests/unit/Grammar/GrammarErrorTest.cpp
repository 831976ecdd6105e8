// Agent files that are wrong: the one error that is described, where it is, and what the statements before
// it, and the actions before the next match, have left in the profile.

#include "support/ParsedProfile.h"

namespace CorvidTest {

namespace {

constexpr char expectingIdentifier[] =
    "Expecting identifier. It can be upper or lower alphanumeric like [ xyz, Xyz, x0, x_y]";
constexpr char unsupportedAgentId[] = "Unsupported agent id. Allowed character set: [a-z,A-Z,0-9,-,_]";
constexpr char cannotAssociate[] = "Failed to associate this line to mount filter or mount group.";
constexpr char keywordBeforeColon[] = "Invalid keyword before ':'";
constexpr char expectingEndOfLine[] = "Expecting end of line.";

struct Row {
    std::string text;
    std::string description;
    std::uint32_t line;
    std::int32_t position;
    std::uint32_t kind;
};

void expectErrors( std::initializer_list<Row> rows, const std::string& before = "",
                   const SourceLine& where = SourceLine::current() ) {
    for ( const Row& row : rows )
        expectError( before + row.text, row.description, row.line, row.position, row.kind, {}, where );
}

TEST( TitleLineErrors, AreAllSaidToBeInTheAgentTitle ) {
    const std::string in = " In agent title,  near ";
    expectErrors( {
        { "agentName: )", in + "')', " + unsupportedAgentId, 1, 10, 3 },
        { "agentName:", in + "'\\n', " + unsupportedAgentId, 1, 0, 3 },
        { "\n\nagentName:\n", in + "'\\n', " + unsupportedAgentId, 3, 10, 3 },
        { "agentName: -\n", in + "'\\n', " + unsupportedAgentId, 1, 11, 3 },
        { "agentName: hybridMount", in + "'hybridMount', " + unsupportedAgentId, 1, 10, 3 },
        { "agentName: A: x", in + "':', Expecting end of agent title line.", 1, 11, 5 },
        { "agentName: A, x", in + "',', Expecting end of agent title line.", 1, 11, 5 },
        { "agentName: A # note\n/a, T, r", in + "'/', Expecting end of agent title line.", 2, 0, 5 },
        { "agentName: A-%a x", in + "'x', Expecting end of agent title line.", 1, 15, 5 },
        { "agentName: A-)", in + "')',  Expected PERCENTAGE", 1, 12, 2 },
        { "agentName: A-\n", in + "'\\n',  Expected PERCENTAGE", 1, 12, 2 },
        { "agentName: A-)%a", in + "')',  Extraneous input - expected PERCENTAGE", 1, 12, 9 },
        { "agentName: A-%a-b", in + "'b',  Missing PERCENTAGE", 1, 15, 10 },
        { "agentName: A-%7", in + "'7', " + expectingIdentifier, 1, 13, 3 },
        { "agentName: A-%a$-%b", in + "'-', $ allowed with only last template key", 1, 15, 1 },
        { "agentName: A-%a$$\n", in + "'$', $ allowed with only last template key", 1, 15, 1 },
        { "agentName: A$", in + "'$', Expecting end of agent title line.", 1, 11, 5 },
    } );
}

TEST( TitleLineErrors, LeaveWhatTheActionsBeforeThemHaveStored ) {
    const struct {
        const char* text;
        const char* dump;
    } rows[] = {
        { "agentName: )", "no profile\n" },
        { "agentName: A )", "agent A\n" },
        { "agentName: A-)", "agent A-\n" },
        { "agentName: A-%a$ x", "agent A-\n" }, // the keys are handed on as a whole
        { "agentName: A-%a x", "agent A-\nkey 0 %a\n" },
    };
    for ( const auto& row : rows ) {
        const ParsedProfile parsed( row.text );
        EXPECT_EQ( parsed.outcome(), "invalid" );
        EXPECT_EQ( parsed.dump(), row.dump ) << row.text;
    }
}

TEST( AgentLevelErrors, HaveNoPrefix ) {
    expectErrors(
        {
            { ": x", " near ':', Syntax error.", 2, 0, 3 },
            { "= x", " near '=', Syntax error.", 2, 0, 3 },
            { "mountFilter: f1/x", " near '/', Syntax error.", 2, 15, 3 },
            { "mountFilter:\n", " near '\\n', Syntax error.", 2, 12, 3 },
            { "mountFilter:", " near '\\n', Syntax error.", 1, 0, 3 },
            { "mountFilter\n", " near '\\n', Syntax error.", 2, 11, 3 },
            { "subAgent\n", " near '\\n', Syntax error.", 2, 8, 3 },
            { "alias = x", " near '=', Syntax error.", 2, 6, 3 },
            { "rootFlags(", " near '(', Syntax error.", 2, 9, 3 },
            { "hybridMount: x", std::string( " near ':', " ) + expectingEndOfLine, 2, 11, 5 },
            { "lowMountPrio x", std::string( " near 'x', " ) + expectingEndOfLine, 2, 13, 5 },
            { "subAgent: )", std::string( " near ')', " ) + unsupportedAgentId, 2, 10, 3 },
            { "subAgent: a)", std::string( " near ')', " ) + expectingEndOfLine, 2, 11, 5 },
            { "subAgent: a-%sysname$", std::string( " near '$', " ) + expectingEndOfLine, 2, 20, 5 },
            { "subAgent: a-%bad\n", " near '\\n', Reference to undeclared template key %bad", 2, 16, 2 },
            { "subAgent: a-%bad-%sysname", " near '-', Reference to undeclared template key %bad", 2, 16, 2 },
            { "alias: %x %sysname", " near '%',  Missing EQUAL", 2, 10, 10 },
            { "alias: %x, = %sysname", " near ',',  Extraneous input - expected EQUAL", 2, 9, 9 },
            { "alias: %x )", " near ')',  Expected EQUAL", 2, 10, 2 },
            { "alias: x = %sysname", " near 'x',  Missing PERCENTAGE", 2, 7, 10 },
            { "alias: %x = %x\n", " near '\\n', Reference to undeclared template key %x", 2, 14, 2 },
            { "alias: %x = %sysname)", std::string( " near ')', " ) + expectingEndOfLine, 2, 20, 5 },
            { "alias: %x = %7", std::string( " near '7', " ) + expectingIdentifier, 2, 13, 3 },
            { "rootFlags: 7", std::string( " near '7', " ) + expectingIdentifier, 2, 11, 3 },
            { "rootFlags: rw wi", std::string( " near 'wi', " ) + expectingEndOfLine, 2, 14, 5 },
            { "rootFlags: rX\n", " near '\\n', illegal flag 'X'", 2, 13, 2 },
            // The missing line end comes on top of the failed check, whose message stays.
            { "rootFlags: rX)", " near ')', illegal flag 'X'", 2, 13, 5 },
            { "mountFilter: f\nmountFilter: f\n", " near '\\n', Mount filter 'f' is already declared", 3, 14,
              2 },
            { "mountFilter: f\na, b)", std::string( " near ')', " ) + expectingEndOfLine, 3, 4, 5 },
            { "mountFilter: f\na, \"b\" c\n", std::string( " near 'c', " ) + expectingEndOfLine, 3, 7, 5 },
        },
        "agentName: A\n" );
}

TEST( MountLineErrors, NameTheDefaultGroup ) {
    const std::string in = " In mount group 'all' ,  near ";
    expectErrors(
        {
            { "/a: x", in + "':', " + keywordBeforeColon, 2, 2, 1 },
            { "\"/a\": x", in + "':', " + keywordBeforeColon, 2, 4, 1 },
            { "agentName: B", in + "':', " + keywordBeforeColon, 2, 9, 1 },
            { "/a, T, r\nalias: %x = %sysname", in + "':', " + keywordBeforeColon, 3, 5, 1 },
            { "/a, T, r\nsubAgent: x", in + "':', " + keywordBeforeColon, 3, 8, 1 },
            { "/a, T, r\nrootFlags: r", in + "':', " + keywordBeforeColon, 3, 9, 1 },
            { "/a, T, r\ncondition: 1 == /a.b", in + "':', " + keywordBeforeColon, 3, 9, 1 },
            { "/a, T, r\nlowMountPrio", in + "'lowMountPrio', " + cannotAssociate, 3, 0, 1 },
            { "/a, T, r\n)", in + "')', " + cannotAssociate, 3, 0, 1 },
            { "include x", in + "'\\n',  Expected COMMA", 1, 0, 2 },
            { "include\n", in + "'include', " + cannotAssociate, 2, 0, 1 },
            { "mountGroup\n", in + "'\\n',  Expected COLON", 2, 10, 2 },
            { "/a, T\n", in + "'\\n',  Expected COMMA", 2, 5, 2 },
            { "/a\n", in + "'\\n',  Expected COMMA", 2, 2, 2 },
            { "/a ), T, r", in + "')',  Extraneous input - expected COMMA", 2, 3, 9 },
            { "/a? T", in + "'T',  Missing COMMA", 2, 4, 10 },
            { "/a = r", in + "'=',  Expected COMMA", 2, 3, 2 },
            { "/a.b, T, r", in + "'.',  Expected COMMA", 2, 2, 2 },
            { "/, T, r", in + "',', Expecting combination of: [number, identifier, '-', template key, '::'] ",
              2, 1, 5 },
            { "//a, T, r",
              in + "'/', Expecting combination of: [number, identifier, '-', template key, '::'] ", 2, 1, 5 },
            { "/a//b, T, r", in + "'/',  Expected COMMA", 2, 3, 2 },
        },
        "agentName: A\n" );
}

TEST( MountLineErrors, OfWhatAPartOfTheLineSaysNameItsPlace ) {
    const std::string in = " In mount group 'all' ,  near ";
    expectErrors(
        {
            { "/%bad, T, r", in + "',', Reference to undeclared template key %bad", 2, 5, 2 },
            { "/%bad/%worse, T, r", in + "'/', Reference to undeclared template key %bad", 2, 5, 2 },
            { "/%bad%worse, T, r", in + "'%', Reference to undeclared template key %bad", 2, 5, 2 },
            { "/%bad x, T, r", in + "'x', Reference to undeclared template key %bad", 2, 6, 2 },
            { "/a, kiv::Entity, r", in + "'kiv', Invalid kiv type.", 2, 4, 3 },
            { "/a, Kiv::entity, r", in + "'entity', Invalid kiv type.", 2, 9, 3 },
            { "/a, , r", in + "',', Invalid kiv type.", 2, 4, 3 },
            { "/a, T, 7", in + "'7', " + expectingIdentifier, 2, 7, 3 },
            { "/a, T, hybridMount", in + "'hybridMount', " + expectingIdentifier, 2, 7, 3 },
            { "/a, T,\n", in + "'\\n', " + expectingIdentifier, 2, 6, 3 },
            { "/a, T, rX\n", in + "'\\n', illegal flag 'X'", 2, 9, 2 },
            { "/a, T, r w", in + "'w', " + expectingEndOfLine, 2, 9, 5 },
            { "/a, T, r, )",
              in + "')', Invalid mount filter id. Expecting combination of: [number, identifier, '-'] ", 2,
              10, 5 },
            { "/a, T, r, f\n", in + "'\\n', No mount filter with name 'f' defined before this line.", 2, 11,
              2 },
            { "/a, T, r\nmountFilter: f)", in + "')', " + expectingEndOfLine, 3, 14, 5 },
            { "/a, T, r\nmountFilter: )",
              in + "')', Invalid mount filter id. Expecting combination of: [number, identifier, '-'] ", 3,
              13, 5 },
            { "/a, T, r\nmountFilter\n", in + "'\\n',  Expected COLON", 3, 11, 2 },
            { "include: /x", in + "'/', Expecting combination of: [number, identifier, '-', '.', '*'] ", 2, 9,
              5 },
        },
        "agentName: A\n" );
}

TEST( MountGroupErrors, NameTheGroupThatIsOpen ) {
    const std::string inAll = " In mount group 'all' ,  near ";
    const std::string inG = " In mount group 'g' ,  near ";
    expectErrors(
        {
            { "mountGroup: )",
              inAll + "')', Invalid mount group id. Expecting combination of: [number, identifier, '-'] ", 2,
              12, 5 },
            { "mountGroup: g, x", inAll + "'x',  Expected INT", 2, 15, 2 },
            { "mountGroup: g, x 7", inAll + "'x',  Extraneous input - expected INT", 2, 15, 9 },
            { "mountGroup: g,\n", inAll + "'\\n',  Missing INT", 2, 14, 10 },
            { "mountGroup: g)", inG + "')', Expecting end of line", 2, 13, 5 },
            { "mountGroup: g, 5 6", inG + "'6', Expecting end of line", 2, 17, 5 },
            { "mountGroup: g, 1.5", inAll + "'1.5',  Expected INT", 2, 15, 2 },
            { "mountGroup: g, 0\n", inAll + "'\\n', mount group priority should be in the range [1,99]", 2,
              16, 2 },
            { "mountGroup: g, 100\n", inAll + "'\\n', mount group priority should be in the range [1,99]", 2,
              18, 2 },
            { "mountGroup: g, 99999999999999999999\n",
              inAll + "'\\n', mount group priority should be in the range [1,99]", 2, 35, 2 },
            { "mountGroup: g\nhybridMount", inG + "'hybridMount', " + cannotAssociate, 3, 0, 1 },
            { "mountGroup: g\n/a, T, r\n)", inG + "')', " + cannotAssociate, 4, 0, 1 },
            { "mountGroup: g\n/a, T\n", inG + "'\\n',  Expected COMMA", 3, 5, 2 },
            // Behind a filter among the groups only a filter or a group may follow.
            { "mountGroup: g\nmountFilter: f\na)", inG + "'a', " + cannotAssociate, 4, 0, 1 },
            { "mountGroup: g\nmountFilter: f\na\n/x, T, r", inG + "'/', " + cannotAssociate, 5, 0, 1 },
            { "mountGroup: g\nmountFilter: f\na, b)", inG + "')', " + expectingEndOfLine, 4, 4, 5 },
            { "mountGroup: g\nmountGroup\n", inG + "'\\n',  Expected COLON", 3, 10, 2 },
        },
        "agentName: A\n" );
}

TEST( ConditionErrors, NameTheGroupAndTheToken ) {
    const std::string in = " In mount group 'g' ,  near ";
    const std::string rvalue =
        "Condition path should start with one of these:['/', 'len', template key (%xx)]";
    expectErrors(
        {
            { "condition: )", in + "')', Invalid lvalue of a condition.", 3, 11, 3 },
            { "condition: \"1\" == /a.b", in + "'\"1\"', Invalid lvalue of a condition.", 3, 11, 3 },
            { "condition: /a.b == 1", in + "'/', Invalid lvalue of a condition.", 3, 11, 3 },
            { "condition: -x == /a.b", in + "'x', Expecting a number. It can be integer, float or hex", 3, 12,
              4 },
            { "condition: 1 == )", in + "')', " + rvalue, 3, 16, 3 },
            { "condition: 1 == 2", in + "'2', " + rvalue, 3, 16, 3 },
            { "condition: 1 ==\n", in + "'\\n', " + rvalue, 3, 15, 3 },
            { "condition: 1 == name\n", in + "'\\n', condition path should be full path from root '/'", 3, 20,
              1 },
            { "condition: 1 == a/b.c", in + "'/', condition path should be full path from root '/'", 3, 17,
              1 },
            { "condition: 1 == foo(/a.b)", in + "'(', Only supported function is 'len'", 3, 19, 2 },
            { "condition: 1 == LEN(/a.b)", in + "'(', Only supported function is 'len'", 3, 19, 2 },
            { "condition: 1 == len(a.b)", in + "'a',  Missing SLASH", 3, 20, 10 },
            { "condition: 1 == len(/a.b\n", in + "'\\n',  Missing CLOSEPAREN", 3, 24, 10 },
            { "condition: 1 == len(/a)", in + "')',  Expected DOT", 3, 22, 2 },
            { "condition: 1 == /a\n", in + "'\\n',  Expected DOT", 3, 18, 2 },
        },
        "agentName: A\nmountGroup: g\n" );
}

TEST( ConditionErrors, BehindAComparisonAndOfTheHandlerNameTheTokenToo ) {
    const std::string in = " In mount group 'g' ,  near ";
    expectErrors(
        {
            { "condition: 1 == /a/.b",
              in + "'.', Expecting combination of: [number, identifier, '-', template "
                   "key, '::'] ",
              3, 19, 5 },
            { "condition: 1 == /a?.b", in + "'?',  Extraneous input - expected DOT", 3, 18, 9 },
            { "condition: 1 == /a.B", in + "'B', Invalid attribute name", 3, 19, 3 },
            { "condition: 1 == /a.b c", in + "'c', " + expectingEndOfLine, 3, 21, 5 },
            { "condition: 1 == /a.b AND 2 == /c.d", in + "'AND', " + expectingEndOfLine, 3, 21, 5 },
            { "condition: 1 == /a.b and )", in + "')', Invalid lvalue of a condition.", 3, 25, 3 },
            { "condition: 1 /a.b", in + "'/',  Missing OP", 3, 13, 10 },
            { "condition: 1 ) == /a.b", in + "')',  Extraneous input - expected OP", 3, 13, 9 },
            { "condition: 1 = /a.b", in + "'=',  Expected OP", 3, 13, 2 },
            { "condition: 1 2 == /a.b", in + "'2',  Extraneous input - expected OP", 3, 13, 9 },
            { "condition: %bad == /a.b", in + "'==', Reference to undeclared template key %bad", 3, 16, 2 },
            { "condition: a%bad-b == /a.b", in + "'-', Reference to undeclared template key %bad", 3, 16, 2 },
            { "condition: 1 == %bad\n", in + "'\\n', Reference to undeclared template key %bad", 3, 20, 2 },
            { "condition: 1 == /%bad.b", in + "'.', Reference to undeclared template key %bad", 3, 21, 2 },
            { "condition: 1 == /a.b\ncondition: 2 == /a.b", in + "':', " + keywordBeforeColon, 4, 9, 1 },
            { "/a, T, r\ncondition: 1 == /a.b", in + "':', " + keywordBeforeColon, 4, 9, 1 },
            { "condition\n", in + "'\\n',  Expected COMMA", 3, 9, 2 },
            { "condition: 1 == /a.b\nmountGroup: g\ncondition: 2 == /a.b",
              in +
                  "':', Condition for this mount group is already set to: 1 == /a.b. Multiple conditions not "
                  "allowed.",
              5, 9, 2 },
        },
        "agentName: A\nmountGroup: g\n" );
}

/// The dump behind the agent's line, of a text that is invalid.
std::string leftBy( const std::string& text, bool plainTokens = false ) {
    const ParsedProfile parsed( "agentName: A\n" + text, { .plainTokens = plainTokens } );
    EXPECT_EQ( parsed.outcome(), "invalid" ) << text;
    return parsed.dump().substr( std::string( "agent A\n" ).size() );
}

// Actions run where they stand, so an error behind them finds their work done, and one before them does not.
TEST( Errors, LeaveWhatWasStoredBeforeThem ) {
    const struct {
        const char* text;
        const char* dump;
    } rows[] = {
        { "hybridMount x", "hybridMount\n" },
        { "lowMountPrio )", "lowMountPrio\n" },
        { "noDefaultMountGroup :", "noDefaultMountGroup\n" },
        { "rootFlags: rw )", "rootFlags rw\n" },
        { "subAgent: a-%sysname )", "subAgent a-%sysname\n" },
        { "alias: %x = %sysname )", "alias %x = %sysname\n" },
        { "/a, T, r )", "group all 99\na T r\n" },
        { "/a, T, r\n/b, T\n/c, T, r", "group all 99\na T r\n" },
        { "/a ), T, r\n/b, T, r", "group all 99\n" }, // no repair by deletion
        { "/a? T, r\n/b, T, r", "group all 99\n" },   // nor by insertion
        { "mountGroup: g )", "group all 99\ngroup g 99\n" },
        { "mountGroup: g, 7 )", "group all 99\ngroup g 7\n" },
        { "mountGroup: g, 100\n/a, T, r", "group all 99\n" },
        { "mountGroup: g\ncondition: 1 == /a.b )", "group all 99\ngroup g 99\nentire 1 == /a.b\n"
                                                   "condition 1 == /a.b\n" },
        { "mountGroup: g\ncondition: 1 == /a.b and )", "group all 99\ngroup g 99\ncondition 1 == /a.b\n" },
        { "mountGroup: g\ncondition: 1 == %sysname and )",
          "group all 99\ngroup g 99\ntemplate 1 == %sysname\n" },
        { "mountGroup: g\ncondition: 1 == %bad and 2 == /a.b", "group all 99\ngroup g 99\n" },
        { "mountGroup: g\ncondition: -x == /a.b\n/a, T, r", "group all 99\ngroup g 99\n" },
        { "mountGroup: g\nconditionBlocker: )", "group all 99\ngroup g 99\nblocking\n" },
        { "mountGroup: g\ncondition: 1 == /a.b\nmountGroup: g\nconditionBlocker: 2 == /a.b",
          "group all 99\ngroup g 99\nentire 1 == /a.b\ncondition 1 == /a.b\nblocking\n" },
    };
    for ( const auto& row : rows )
        for ( const bool plainTokens : { false, true } )
            EXPECT_EQ( leftBy( row.text, plainTokens ), row.dump ) << row.text;
}

// A failed check is noticed at the next match only, and the actions up to there still run.
TEST( FailedChecks, DoNotStopTheActionsBeforeTheNextMatch ) {
    for ( const char* name : { "default", "all" } ) {
        const std::string in = std::string( " In mount group '" ) + name + "' ,  near ";
        const std::string length = std::string( "mountGroup: " ) + name;
        expectError( "agentName: A\n" + length + "\n", in + "'\\n', Cannot use reserved mount group name", 2,
                     static_cast<std::int32_t>( length.size() ), 2 );
        // The priority's comma is the next match: the group stays the one that was open.
        expectError( "agentName: A\n" + length + ", 5\n",
                     " In mount group 'all' ,  near ',', Cannot use reserved mount group name", 2,
                     static_cast<std::int32_t>( length.size() ), 2 );
    }
    EXPECT_EQ( leftBy( "mountGroup: default\n" ), "group all 99\ngroup default 99\n" );
    EXPECT_EQ( leftBy( "mountGroup: default, 5\n" ), "group all 99\n" );

    expectError( "agentName: A\nalias: %a = %bad\n", " near '\\n', Reference to undeclared template key %bad",
                 2, 16, 2 );
    EXPECT_EQ( leftBy( "alias: %a = %bad\n" ), "alias %a = %bad\n" );
    expectError( "agentName: A\nalias: %a = %bad, %sysname\n",
                 " near ',', Reference to undeclared template key %bad", 2, 16, 2 );
    EXPECT_EQ( leftBy( "alias: %a = %bad, %sysname\n" ), "" );
    EXPECT_EQ( leftBy( "alias: %a = %sysname, %bad\n" ), "alias %a = %sysname, %bad\n" );
    EXPECT_EQ( leftBy( "subAgent: x-%bad\n" ), "subAgent x-%bad\n" );
    EXPECT_EQ( leftBy( "subAgent: x-%bad-%sysname\n" ), "" );
}

TEST( LexerErrors, ComeBeforeAllOthersAndLetTheParseGoOn ) {
    for ( const bool plainTokens : { false, true } ) {
        const ParseOptions options{ .plainTokens = plainTokens };
        const std::string unrecognized = "Unrecongnized character , near '{'\n";
        {
            const ParsedProfile parsed( "agentName: A\n/a, T, r\n{\n/b, T, r\nmountGroup: g", options );
            expectErrorOf( parsed, unrecognized, 3, 0, 3 );
            EXPECT_EQ( parsed.error().recognizer().str(), "lexer" );
            EXPECT_EQ( parsed.dump(), "agent A\ngroup all 99\na T r\nb T r\ngroup g 99\n" );
        }
        {
            const ParsedProfile parsed( "agentName: A\n/a, kiv, r\n/b, T, r\n\n{", options );
            expectErrorOf( parsed, unrecognized, 5, 0, 3 );
            EXPECT_EQ( parsed.dump(), "agent A\ngroup all 99\n" );
        }
        {
            const ParsedProfile parsed( "agentName: A\n/%bad, T, r\n{", options );
            expectErrorOf( parsed, unrecognized, 3, 0, 3 );
        }
        {
            const ParsedProfile parsed( "no title\n{", options );
            expectErrorOf( parsed, unrecognized, 2, 0, 3 );
            EXPECT_EQ( parsed.dump(), "no profile\n" );
            EXPECT_TRUE( parsed.hdlr().maybeIncludeFile() );
            EXPECT_TRUE( parsed.trace().ends_with( "0 Invalidating agent profile: NA\n" ) ) << parsed.trace();
        }
    }
}

} // namespace

} // namespace CorvidTest
