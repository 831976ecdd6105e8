// Whole agent files that are valid: what each statement leaves in the profile.

#include "support/ParsedProfile.h"

namespace CorvidTest {

namespace {

constexpr char emptyGroup[] = "group all 99\n";

TEST( AgentFiles, TellTheHandlerEverythingInTheirOrder ) {
    expectProfile( "agentName: Fan-%slot\n"
                   "hybridMount\n"
                   "alias: %peer = %slot\n"
                   "/agent/status/%slot, Kiv::Entity, w\n"
                   "mountFilter: f1\n"
                   "name, fan-1\n"
                   "mountGroup: g1, 10\n"
                   "condition: 1 == /agent/config.enabled\n"
                   "/agent/config, Kiv::Entity, r, f1\n",
                   "agent Fan-\n"
                   "key 0 %slot\n"
                   "hybridMount\n"
                   "alias %peer = %slot\n"
                   "group all 99\n"
                   "agent/status/%slot Kiv::Entity w\n"
                   "group g1 10\n"
                   "entire 1 == /agent/config.enabled\n"
                   "condition 1 == /agent/config.enabled\n"
                   "agent/config Kiv::Entity r {name=fan-1}\n" );
}

struct Row {
    std::string text;
    std::string dump;
};

TEST( TitleLines, GiveTheAgentItsNameAndItsTemplateKeys ) {
    const Row rows[] = {
        { "agentName: Foo", "agent Foo\n" },
        { "AGENTNAME : Foo\n", "agent Foo\n" },
        { "\n\r\n # note\n agentname:Foo\n", "agent Foo\n" },
        { "agentName: my agent", "agent myagent\n" },
        { "agentName: my-agent-2", "agent my-agent-2\n" },
        { "agentName: -7", "agent -7\n" },
        { "agentName: agentName", "agent agentName\n" },
        { "agentName: a-%k", "agent a-\nkey 0 %k\n" },
        { "agentName: Foo-%slot$", "agent Foo-\nkey 0 %slot$\n" },
        { "agentName: Foo-%chassis-%slot$", "agent Foo-\nkey 0 %chassis\nkey 1 %slot$\n" },
        { "agentName: Foo - % a - % B - % alias", "agent Foo-\nkey 0 %a\nkey 1 %B\nkey 2 %alias\n" },
        { "agentName: a-%k-%k", "agent a-\nkey 0 %k\nkey 1 %k\n" },
    };
    for ( const Row& row : rows ) {
        expectProfile( row.text, row.dump + emptyGroup );
        expectProfile( row.text + "\n\n", row.dump + emptyGroup );
    }
}

TEST( TitleLines, DeclareTheirKeysWithoutTheDollar ) {
    expectProfile( "agentName: A-%a-%b$\n/%a/%b, T, r\n",
                   "agent A-\nkey 0 %a\nkey 1 %b$\ngroup all 99\n%a/%b T r\n" );
}

TEST( AgentFiles, WithoutATitleLineAreNoError ) {
    for ( const char* text : { "", "\n\n", "# note", "/a, T, r", "agentName", "agentName Foo", "agentName\n:",
                               "x: y", "mountGroup: g", "agentNames: A", "\"agentName\": A", "hybridMount" } )
        for ( const bool plainTokens : { false, true } ) {
            const ParsedProfile parsed( text, { .plainTokens = plainTokens } );
            EXPECT_EQ( parsed.outcome(), "notAgentFile" ) << text;
            EXPECT_TRUE( parsed.root().agentProfile().empty() );
            EXPECT_EQ( parsed.trace(), "0 agent name for " + parsed.agentFile() + " not provided\n" );
        }
}

TEST( AgentFiles, OfATitleLineOnlyOpenTheDefaultGroup ) {
    expectProfile( "agentName: A", "agent A\ngroup all 99\n" );
    expectProfile( "agentName: A # note", "agent A\ngroup all 99\n" );
}

void expectStatements( std::initializer_list<Row> rows ) {
    for ( const Row& row : rows )
        expectProfile( "agentName: A\n" + row.text, "agent A\n" + row.dump );
}

TEST( AgentLevelStatements, MayStandInAnyOrderAndNumber ) {
    expectStatements( {
        { "hybridMount", "hybridMount\ngroup all 99\n" },
        { "LOWMOUNTPRIO\n\n", "lowMountPrio\ngroup all 99\n" },
        { "noDefaultMountGroup", "noDefaultMountGroup\ngroup all 99\n" },
        { "hybridMount\nhybridMount\nlowMountPrio\nnoDefaultMountGroup",
          "hybridMount\nlowMountPrio\nnoDefaultMountGroup\ngroup all 99\n" },
        { "rootFlags: rw\nrootFlags: wi", "rootFlags rwi\ngroup all 99\n" },
        { "rootFlags: S", "rootFlags S\ngroup all 99\n" },
        { "subAgent: b\nhybridMount\nsubAgent: a\nsubAgent: b",
          "hybridMount\ngroup all 99\nsubAgent b\nsubAgent a\nsubAgent b\n" },
        { "alias: %x = %sysname\nalias: %y=%x,%cellId , %agentString",
          "alias %x = %sysname\nalias %y = %x, %cellId, %agentString\ngroup all 99\n" },
        { "alias: %x = %sysname\nalias: %x = %cellId", "alias %x = %cellId\ngroup all 99\n" },
        { "mountFilter: f\nhybridMount\nmountFilter: g\na\nlowMountPrio\n/x, T, r, f\n/y, T, r, g",
          "hybridMount\nlowMountPrio\ngroup all 99\nx T r {}\ny T r {a=}\n" },
    } );
}

TEST( SubAgents, JoinTheirNameWithTheirTemplateKeys ) {
    expectStatements( {
        { "subAgent: Probe-%sysname", "group all 99\nsubAgent Probe-%sysname\n" },
        { "subAgent: my Probe-2 - %sysname-%cellId", "group all 99\nsubAgent myProbe-2-%sysname-%cellId\n" },
        { "subAgent: subAgent", "group all 99\nsubAgent subAgent\n" },
    } );
    expectProfile( "agentName: A-%slot\nsubAgent: P-%slot",
                   "agent A-\nkey 0 %slot\ngroup all 99\nsubAgent P-%slot\n" );
}

TEST( MountLines, JoinTheTokensOfEachPart ) {
    expectStatements( {
        { "/status/all, Kiv::Entity, w", "group all 99\nstatus/all Kiv::Entity w\n" },
        { "a b / c-7::d , :: Kiv :: Entity , r\n", "group all 99\nab/c-7::d ::Kiv::Entity r\n" },
        { "/a/b/, T, r", "group all 99\na/b T r\n" },
        { "/a/b?, T, r", "group all 99\na/b? T r\n" },
        { "/a/b/?, T, r", "group all 99\na/b/? T r\n" },
        { R"("/a" "/b", T, r)", "group all 99\na/b T r\n" },
        { R"("/a b/" "c", T, r)", "group all 99\na b/c T r\n" },
        { R"("", T, r)", "group all 99\n T r\n" },
        { R"("x, y: z # \" , T, r)", "group all 99\nx, y: z # \\ T r\n" },
        { "7, T, r\n-, T, r\n::, T, r\n", "group all 99\n- T r\n7 T r\n:: T r\n" },
        { "/%sysname/x%cellId-y, T, r", "group all 99\n%sysname/x%cellId-y T r\n" },
    } );
}

TEST( MountLines, MayBeginWithAnyKeywordThatIsAName ) {
    expectStatements( {
        { "agentName/a, T, r\nalias-a, T, r\ncondition, T, r\nconditionBlocker/a, T, r\ninclude/a, T, r\n"
          "mountFilter, T, r\nmountGroup/, T, r\nrootFlags?, T, r\nsubAgent 7, T, r\n",
          "group all 99\nagentName/a T r\nalias-a T r\ncondition T r\nconditionBlocker/a T r\ninclude/a T r\n"
          "mountFilter T r\nmountGroup T r\nrootFlags? T r\nsubAgent7 T r\n" },
    } );
}

TEST( MountLines, TakeAKeywordAsTypeButNoLowerCaseName ) {
    expectStatements( { { "/a, include::Alias::T, r", "group all 99\na include::Alias::T r\n" } } );
}

TEST( MountFilters, EndAtTheFirstLineThatIsNoAttribute ) {
    expectStatements( {
        { "mountFilter: f-1\nname, eth-1\n/x, T, r, f-1", "group all 99\nx T r {name=eth-1}\n" },
        { "mountFilter: f\nname, \"x y\"\n/x, T, r, f", "group all 99\nx T r {name=x y}\n" },
        { "mountFilter: f\nname, \"x\" \"\" \" y\"\n/x, T, r, f", "group all 99\nx T r {name=x y}\n" },
        { "mountFilter: f\nname\nalias, T7-a\n/x, T, r, f", "group all 99\nx T r {alias=T7-a name=}\n" },
        { "mountFilter: f\na, Key\nb, Key 7\nc, alias\n/x, T, r, f",
          "group all 99\nx T r {a=Key b=Key7 c=alias}\n" },
        { "mountFilter: f\na, T, r, f", "group all 99\na T r {}\n" },
        { "mountFilter: f\na, T::U, r, f", "group all 99\na T::U r {}\n" },
        { "mountFilter: f\na\nx, T, r, f", "group all 99\nx T r {a=}\n" },
        { "mountFilter: f\n\n\na\n\n\nX, T, r, f", "group all 99\nX T r {a=}\n" },
        { "mountFilter: f\n\"x\", T, r, f", "group all 99\nx T r {}\n" },
        { "mountFilter: f\na, k1\na, k2\n/x, T, r, f", "group all 99\nx T r {a=k2}\n" },
        { "/x, T, r\nmountFilter: f\na\nmountFilter: g\nmountGroup: h\n/y, T, r, f\n/z, T, r, g",
          "group all 99\nx T r\ngroup h 99\ny T r {a=}\nz T r {}\n" },
        { "mountFilter: f\nmountFilter: F\n/x, T, r, F", "group all 99\nx T r {}\n" },
    } );
}

TEST( MountGroups, HaveANameAndMaybeAPriority ) {
    expectStatements( {
        { "mountGroup: g1, 20", "group all 99\ngroup g1 20\n" },
        { "mountGroup: g1", "group all 99\ngroup g1 99\n" },
        { "mountGroup: peer-2, 10\n\n", "group all 99\ngroup peer-2 10\n" },
        { "mountGroup: my group 7 alias, 01", "group all 99\ngroup mygroup7alias 1\n" },
        { "mountGroup: All\nmountGroup: Default", "group All 99\ngroup Default 99\ngroup all 99\n" },
        { "mountGroup: a, 99\n/x, T, r\nmountGroup: b, 1\n/x, U, w",
          "group a 99\nx T r\ngroup all 99\ngroup b 1\nx U w\n" },
        { "mountGroup: a\n/x, T, r\nmountGroup: b\nmountGroup: a\n/y, T, r",
          "group a 99\nx T r\ny T r\ngroup all 99\ngroup b 99\n" },
        { "mountGroup: g\nmountGroup/x, T, r\nmountFilter, T, r",
          "group all 99\ngroup g 99\nmountFilter T r\nmountGroup/x T r\n" },
        // The number is cut to 32 bits.
        { "mountGroup: g, 4294967297", "group all 99\ngroup g 1\n" },
    } );
}

TEST( Conditions, AreNormalisedEachAndJoined ) {
    const std::string group = "mountGroup: g\n";
    const std::string before = "group all 99\ngroup g 99\n";
    expectStatements( {
        { group + "condition: 1==/a/b.count",
          before + "entire 1 == /a/b.count\ncondition 1 == /a/b.count\n" },
        { group + "condition:1 == /a/b.count and ready == len(/a/b.items)",
          before + "entire 1 == /a/b.count and ready == len( /a/b.items )\n"
                   "condition 1 == /a/b.count\n"
                   "condition ready == len( /a/b.items )\n" },
        { group + "condition: -5 < / a . b", before + "entire -5 < /a.b\ncondition -5 < /a.b\n" },
        { group + "condition: - 0x1F != /a.b", before + "entire -0x1F != /a.b\ncondition -0x1F != /a.b\n" },
        { group + "condition: 1.5 >= /a.b", before + "entire 1.5 >= /a.b\ncondition 1.5 >= /a.b\n" },
        { group + "condition: %sysname in /a.b",
          before + "entire %sysname in /a.b\ncondition %sysname in /a.b\n" },
        { group + "condition: a-%cellId 7 notin /a.b",
          before + "entire a-%cellId7 notin /a.b\ncondition a-%cellId7 notin /a.b\n" },
        { group + "condition: 1 == %sysname", before + "entire 1 == %sysname\ntemplate 1 == %sysname\n" },
        { group + "condition: b == %sysname and a == %cellId and c == /d.alias",
          before + "entire b == %sysname and a == %cellId and c == /d.alias\n"
                   "condition c == /d.alias\n"
                   "template a == %cellId\n"
                   "template b == %sysname\n" },
        { group + "condition: 1 == len ( / %sysname / x-7::Y . include )",
          before + "entire 1 == len( /%sysname/x-7::Y.include )\ncondition 1 == len( "
                   "/%sysname/x-7::Y.include )\n" },
        { group + "conditionBlocker: 1 == /a.b\n\n/x, T, r",
          before + "entire 1 == /a.b\ncondition 1 == /a.b\nblocking\nx T r\n" },
        { group + "condition, T, r\nconditionBlocker/x, T, r",
          before + "condition T r\nconditionBlocker/x T r\n" },
    } );
}

TEST( AgentFiles, ReadTheSameWithEveryKindOfLineEnd ) {
    const std::string text = "agentName: A\nhybridMount\n\n/a, T, r\nmountFilter: f\na, b\nmountGroup: g\n"
                             "condition: 1 == /a.b\n/b, T, r, f\n";
    const std::string dump = "agent A\nhybridMount\ngroup all 99\na T r\n"
                             "group g 99\nentire 1 == /a.b\ncondition 1 == /a.b\nb T r {a=b}\n";
    for ( const char* lineEnd : { "\n", "\r\n", "\r", "\n\n", " \n", "\n# note\n", "\t\r\n" } ) {
        std::string other;
        for ( const char c : text )
            other.append( c == '\n' ? lineEnd : std::string( 1, c ) );
        expectProfile( other, dump );
        expectProfile( other.substr( 0, other.size() - std::string( lineEnd ).size() ), dump );
    }
}

TEST( AgentFiles, JoinContinuedAndCommentedLines ) {
    expectStatements( {
        { "/a\\\n/b, T, \\\nr", "group all 99\na/b T r\n" },
        { "/a # the comment takes the line end along\n/b, T, r", "group all 99\na/b T r\n" },
        { "/a, T, r\\", "group all 99\na T r\n" },
    } );
}

} // namespace

} // namespace CorvidTest
