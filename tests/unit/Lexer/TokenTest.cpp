// Which tokens a text falls into.

#include "LexedText.h"
#include "Spellings.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>

#include "ProfileParser/GeneratedParser.h"

namespace CorvidTest {

namespace {

using namespace std::string_literals;

struct Row {
    std::string text;
    std::string dump; ///< without the appended line end and the end of input
};

void expectDumps( std::initializer_list<Row> rows ) {
    for ( const Row& row : rows ) {
        const std::string end = "NEWLN[\\n] EOF";
        const LexedText lexed( row.text );
        EXPECT_EQ( lexed.dump, row.dump.empty() ? end : row.dump + " " + end )
            << "text: " << escaped( row.text );
        expectSameInTheWindow( row.text, lexed );
    }
}

constexpr std::array<const char*, 67> allNames{
    "<invalid>",
    "<EOR>",
    "<DOWN>",
    "<UP>",
    "A",
    "AGENTNAME",
    "ALIAS",
    "AND",
    "ASTERISK",
    "B",
    "C",
    "CLOSEPAREN",
    "COLON",
    "COMMA",
    "CONDITION",
    "CONDITIONBLOCKER",
    "D",
    "DOLLAR",
    "DOT",
    "DOUBLECOLON",
    "E",
    "EQUAL",
    "F",
    "FLOAT",
    "G",
    "H",
    "HEX",
    "HYBRIDMOUNT",
    "HYPHEN",
    "I",
    "INCLUDE",
    "INT",
    "J",
    "K",
    "L",
    "LIDENT",
    "LINECONT",
    "LINE_COMMENT",
    "LOWMOUNTPRIO",
    "M",
    "MOUNTFILTER",
    "MOUNTGROUP",
    "N",
    "NEWLN",
    "NODEFAULTMOUNTGROUP",
    "O",
    "OP",
    "OPENPAREN",
    "P",
    "PERCENTAGE",
    "Q",
    "QSNMARK",
    "R",
    "ROOTFLAGS",
    "S",
    "SLASH",
    "STRING",
    "SUBAGENT",
    "T",
    "U",
    "UIDENT",
    "V",
    "W",
    "WS",
    "X",
    "Y",
    "Z",
};

TEST( TokenNames, AreInTheTableByNumberInAsciiOrder ) {
    for ( std::size_t type = 0; type < allNames.size(); ++type )
        EXPECT_STREQ( reinterpret_cast<const char*>( mountProfileParserTokenNames[type] ), allNames[type] )
            << "type " << type;
}

TEST( TokenNames, HaveTheNumbersOfTheGeneratedConstants ) {
    const std::array<std::pair<std::uint32_t, std::uint32_t>, 37> numbers{ {
        { AGENTNAME, 5 },     { ALIAS, 6 },         { AND, 7 },
        { ASTERISK, 8 },      { CLOSEPAREN, 11 },   { COLON, 12 },
        { COMMA, 13 },        { CONDITION, 14 },    { CONDITIONBLOCKER, 15 },
        { DOLLAR, 17 },       { DOT, 18 },          { DOUBLECOLON, 19 },
        { EQUAL, 21 },        { FLOAT, 23 },        { HEX, 26 },
        { HYBRIDMOUNT, 27 },  { HYPHEN, 28 },       { INCLUDE, 30 },
        { INT, 31 },          { LIDENT, 35 },       { LINECONT, 36 },
        { LINE_COMMENT, 37 }, { LOWMOUNTPRIO, 38 }, { MOUNTFILTER, 40 },
        { MOUNTGROUP, 41 },   { NEWLN, 43 },        { NODEFAULTMOUNTGROUP, 44 },
        { OP, 46 },           { OPENPAREN, 47 },    { PERCENTAGE, 49 },
        { QSNMARK, 51 },      { ROOTFLAGS, 53 },    { SLASH, 55 },
        { STRING, 56 },       { SUBAGENT, 57 },     { UIDENT, 60 },
        { WS, 63 },
    } };
    for ( const auto& [constant, number] : numbers )
        EXPECT_EQ( constant, number );
}

constexpr std::array<std::pair<const char*, std::uint32_t>, 34> samples{ {
    { "agentname", 5 },
    { "alias", 6 },
    { "and", 7 },
    { "*", 8 },
    { ")", 11 },
    { ":", 12 },
    { ",", 13 },
    { "condition", 14 },
    { "conditionblocker", 15 },
    { "$", 17 },
    { ".", 18 },
    { "::", 19 },
    { "=", 21 },
    { "1.5", 23 },
    { "0x1F", 26 },
    { "hybridmount", 27 },
    { "-", 28 },
    { "include", 30 },
    { "12", 31 },
    { "abc", 35 },
    { "lowmountprio", 38 },
    { "mountfilter", 40 },
    { "mountgroup", 41 },
    { "\r", 43 },
    { "nodefaultmountgroup", 44 },
    { "==", 46 },
    { "(", 47 },
    { "%", 49 },
    { "?", 51 },
    { "rootflags", 53 },
    { "/", 55 },
    { "\"s\"", 56 },
    { "subagent", 57 },
    { "Abc", 60 },
} };

TEST( Tokens, OfEveryEmittedTypeCarryTheirNumberAndTheirText ) {
    for ( const auto& [text, type] : samples ) {
        const LexedText lexed( text );
        ASSERT_EQ( lexed.tokens.size(), 2U ) << text;
        EXPECT_EQ( lexed.tokens[0].type, type ) << text;
        EXPECT_EQ( lexed.tokens[0].name, allNames[type] );
        EXPECT_EQ( lexed.tokens[0].text, text );
        EXPECT_TRUE( lexed.errors.empty() );
    }
}

TEST( Keywords, MatchInLowerUpperAndMixedCaseAndBeatIdentifiers ) {
    const std::array<std::pair<const char*, const char*>, 12> keywords{ {
        { "agentname", "AGENTNAME" },
        { "mountgroup", "MOUNTGROUP" },
        { "condition", "CONDITION" },
        { "conditionblocker", "CONDITIONBLOCKER" },
        { "include", "INCLUDE" },
        { "alias", "ALIAS" },
        { "subagent", "SUBAGENT" },
        { "rootflags", "ROOTFLAGS" },
        { "nodefaultmountgroup", "NODEFAULTMOUNTGROUP" },
        { "hybridmount", "HYBRIDMOUNT" },
        { "mountfilter", "MOUNTFILTER" },
        { "lowmountprio", "LOWMOUNTPRIO" },
    } };
    for ( const auto& [spelling, name] : keywords )
        for ( const std::string& text : inAllCases( spelling ) )
            expectDumps( { { text, name + ( "[" + text + "]" ) } } );
}

TEST( Keywords, EndBeforeAColonAndAreIdentifiersWithAnyLetterMoreOrLess ) {
    expectDumps( {
        { "AgentName: x", "AGENTNAME[AgentName] COLON[:] LIDENT[x]" },
        { "agentName:x", "AGENTNAME[agentName] COLON[:] LIDENT[x]" },
        { "AGENTNAMEx", "UIDENT[AGENTNAMEx]" },
        { "agentnamex", "LIDENT[agentnamex]" },
        { "agentname1", "LIDENT[agentname1]" },
        { "agentname_", "LIDENT[agentname_]" },
        { "agentnam", "LIDENT[agentnam]" },
        { "Agentnam", "UIDENT[Agentnam]" },
        { "agent_name", "LIDENT[agent_name]" },
        { "agent name", "LIDENT[agent] LIDENT[name]" },
        { "includex", "LIDENT[includex]" },
        { "conditionblocker", "CONDITIONBLOCKER[conditionblocker]" },
        { "conditionblock", "LIDENT[conditionblock]" },
        { "ConditionBlockers", "UIDENT[ConditionBlockers]" },
        { "condition blocker", "CONDITION[condition] LIDENT[blocker]" },
        { "mountfilters", "LIDENT[mountfilters]" },
        { "mount", "LIDENT[mount]" },
        { "Alias", "ALIAS[Alias]" },
        { "aliaS1", "LIDENT[aliaS1]" },
        { "xalias", "LIDENT[xalias]" },
    } );
}

TEST( Words, AndOperatorsMatchOnlyInLowerCase ) {
    expectDumps( {
        { "a == b and c notin d", "LIDENT[a] OP[==] LIDENT[b] AND[and] LIDENT[c] OP[notin] LIDENT[d]" },
        { "and And AND anD", "AND[and] UIDENT[And] UIDENT[AND] LIDENT[anD]" },
        { "in In IN iN", "OP[in] UIDENT[In] UIDENT[IN] LIDENT[iN]" },
        { "notin NotIn NOTIN notIn not", "OP[notin] UIDENT[NotIn] UIDENT[NOTIN] LIDENT[notIn] LIDENT[not]" },
        { "inx in1 in_ i n notinx noti andx an",
          "LIDENT[inx] LIDENT[in1] LIDENT[in_] LIDENT[i] LIDENT[n] LIDENT[notinx] LIDENT[noti] LIDENT[andx] "
          "LIDENT[an]" },
        { "== != <= >= < >", "OP[==] OP[!=] OP[<=] OP[>=] OP[<] OP[>]" },
        { "=", "EQUAL[=]" },
        { "===", "OP[==] EQUAL[=]" },
        { "====", "OP[==] OP[==]" },
        { "<== <> >>= < =", "OP[<=] EQUAL[=] OP[<] OP[>] OP[>] OP[>=] OP[<] EQUAL[=]" },
        { "!==", "OP[!=] EQUAL[=]" },
    } );
}

TEST( Punctuation, IsOneTokenACharacterButForTheDoubleColon ) {
    expectDumps( {
        { "*):,$.::=-(%?/",
          "ASTERISK[*] CLOSEPAREN[)] COLON[:] COMMA[,] DOLLAR[$] DOT[.] DOUBLECOLON[::] EQUAL[=] HYPHEN[-] "
          "OPENPAREN[(] PERCENTAGE[%] QSNMARK[?] SLASH[/]" },
        { ":", "COLON[:]" },
        { "::", "DOUBLECOLON[::]" },
        { ":::", "DOUBLECOLON[::] COLON[:]" },
        { "::::", "DOUBLECOLON[::] DOUBLECOLON[::]" },
        { ": :", "COLON[:] COLON[:]" },
        { "--", "HYPHEN[-] HYPHEN[-]" },
        { "//", "SLASH[/] SLASH[/]" },
    } );
}

TEST( Identifiers, AreTypedByTheirFirstCharacterAlone ) {
    expectDumps( {
        { "a A z Z", "LIDENT[a] UIDENT[A] LIDENT[z] UIDENT[Z]" },
        { "aB_9z Zb_0Y x__ X_", "LIDENT[aB_9z] UIDENT[Zb_0Y] LIDENT[x__] UIDENT[X_]" },
        { "x-y_1", "LIDENT[x] HYPHEN[-] LIDENT[y_1]" },
        { "x.y", "LIDENT[x] DOT[.] LIDENT[y]" },
        { "Kiv::Entity", "UIDENT[Kiv] DOUBLECOLON[::] UIDENT[Entity]" },
        { "%slot", "PERCENTAGE[%] LIDENT[slot]" },
    } );
}

TEST( Numbers, HaveNoSignAndNoExponent ) {
    expectDumps( {
        { "0 7 12 00 0123456789", "INT[0] INT[7] INT[12] INT[00] INT[0123456789]" },
        { "-1", "HYPHEN[-] INT[1]" },
        { "1.5 0.0 12.345", "FLOAT[1.5] FLOAT[0.0] FLOAT[12.345]" },
        { "1.5.3", "FLOAT[1.5] DOT[.] INT[3]" },
        { ".5", "DOT[.] INT[5]" },
        { "1.5e3", "FLOAT[1.5] LIDENT[e3]" },
        { "0x1 0XaF 0xDeAdBeEf09", "HEX[0x1] HEX[0XaF] HEX[0xDeAdBeEf09]" },
        { "0x1g", "HEX[0x1] LIDENT[g]" },
        { "0x1.5", "HEX[0x1] DOT[.] INT[5]" },
        { "12a 0a 0b1", "INT[12] LIDENT[a] INT[0] LIDENT[a] INT[0] LIDENT[b1]" },
        { "00x1 1x1", "INT[00] LIDENT[x1] INT[1] LIDENT[x1]" },
        { "1Abc", "INT[1] UIDENT[Abc]" },
    } );
}

TEST( Strings, HaveNoEscapesAndMayHoldAnythingButQuotesAndNewlines ) {
    expectDumps( {
        { R"("")", R"(STRING[""])" },
        { R"("a b")", R"(STRING["a b"])" },
        { R"("a""b")", R"(STRING["a"] STRING["b"])" },
        { R"("a\")", R"(STRING["a\\"])" },
        { R"("# no comment, : = /")", R"(STRING["# no comment, : = /"])" },
        { "\"a\rb\"", R"(STRING["a\rb"])" },
        { "\"\\\r\"", R"(STRING["\\\r"])" },
        { "\"a\0b\""s, R"(STRING["a\x00b"])" },
        { "\"\t\x01\x7F\x80\xFF\"", R"(STRING["\x09\x01\x7F\x80\xFF"])" },
    } );
}

TEST( LineEnds, AreOneTokenACharacterAndNeverMerge ) {
    expectDumps( {
        { "\n\n\n", R"(NEWLN[\n] NEWLN[\n] NEWLN[\n])" },
        { "a\r\nb", "LIDENT[a] NEWLN[\\r] NEWLN[\\n] LIDENT[b]" },
        { "a\rb", "LIDENT[a] NEWLN[\\r] LIDENT[b]" },
        { "a\n\r", "LIDENT[a] NEWLN[\\n] NEWLN[\\r]" },
        { "a \n b", "LIDENT[a] NEWLN[\\n] LIDENT[b]" },
    } );
}

TEST( WhiteSpace, OfBlanksAndTabsYieldsNothing ) {
    expectDumps( {
        { " ", "" },
        { "\t", "" },
        { " \t \t", "" },
        { "\ta  b\t", "LIDENT[a] LIDENT[b]" },
    } );
}

TEST( Comments, SwallowTheirOwnLineEnd ) {
    expectDumps( {
        { "# note", "" },
        { "#", "" },
        { "# note\n", "" },
        { "# note\r\n", "" },
        { "# note\r", "" },
        { "#\n#\n", "" },
        { "a # note\nb", "LIDENT[a] LIDENT[b]" },
        { "a # note\r\nb", "LIDENT[a] LIDENT[b]" },
        { "a # note\n\nb", "LIDENT[a] NEWLN[\\n] LIDENT[b]" },
        { "a#b#c\nd", "LIDENT[a] LIDENT[d]" },
        { "# \"open\nb", "LIDENT[b]" },
        { "# ends in \\\nb", "LIDENT[b]" },
        { "# any \x01\x7F\x80\xFF{[~\nb", "LIDENT[b]" },
        { "# a\0b\nc"s, "LIDENT[c]" },
    } );
}

TEST( LineContinuations, JoinALineWithTheNext ) {
    expectDumps( {
        { "mountgroup a\\\nb", "MOUNTGROUP[mountgroup] LIDENT[a] LIDENT[b]" },
        { "a \\\n\\\n b", "LIDENT[a] LIDENT[b]" },
        { "a\\\n\nb", "LIDENT[a] NEWLN[\\n] LIDENT[b]" },
        { "ab\\\ncd", "LIDENT[ab] LIDENT[cd]" },
        { "a\\", "LIDENT[a]" },
        { "\\", "" },
        { "\\\n", "" },
        { "\\\n# note\na", "LIDENT[a]" },
    } );
}

} // namespace

} // namespace CorvidTest
