// What a handler tells its observer: which files it reads, and which lines give a profile what it holds.

#include "HandlerTesting.h"

#include "ProfileParser/RunObserver.h"

#include <array>
#include <stdexcept>

using namespace CorvidTest;
using Corvid::Origin;

namespace {

/// All that is told, a line each; files by their names within the agent file's directory.
class Listing final : public Corvid::RunObserver {
  public:
    explicit Listing( std::string directory ) : directory_( std::move( directory ) + "/" ) {}

    [[nodiscard]] const std::string& text() const { return text_; }

    void fileRead( std::string_view fileName, bool isInclude ) override {
        add( { isInclude ? "read include" : "read", inDirectory( fileName ) } );
    }
    void includeEntered( const Corvid::IncludeEntry& entry ) override {
        add( { "include", inDirectory( entry.file ), "by", std::string( entry.pattern ),
               std::to_string( entry.number ), "of", std::to_string( entry.matches ), at( entry.origin ) } );
    }
    void agentStatement( Corvid::AgentStatement statement, std::string_view text,
                         const Origin& origin ) override {
        static constexpr std::array names = { "agentName",   "templateKey",  "alias",
                                              "hybridMount", "lowMountPrio", "noDefaultMountGroup",
                                              "rootFlags",   "subAgent" };
        add( { names.at( static_cast<std::size_t>( statement ) ), std::string( text ), at( origin ) } );
    }
    void mountFilterDeclared( std::string_view name, const Origin& origin ) override {
        add( { "filter", std::string( name ), at( origin ) } );
    }
    void attrFilterAdded( std::string_view mountFilter, const Corvid::AttrFilter& attrFilter,
                          const Origin& origin ) override {
        add( { "attribute", std::string( mountFilter ),
               attrFilter.attrName().str() + "=" + attrFilter.filterKey().str(), at( origin ) } );
    }
    void mountGroupOpened( const Corvid::PassiveMountGroup& group, unsigned priority,
                           const Origin& origin ) override {
        add( { "group", group.name().str(),
               std::to_string( priority ) + "/" + std::to_string( group.priority() ), at( origin ) } );
    }
    void conditionAdded( const Corvid::PassiveMountGroup& group, Corvid::ConditionPart part,
                         std::string_view text, const Origin& origin ) override {
        static constexpr std::array names = { "blocking", "single", "template", "whole" };
        add( { names.at( static_cast<std::size_t>( part ) ), group.name().str(), std::string( text ),
               at( origin ) } );
    }
    void mountAdded( const Corvid::MountAddition& addition ) override {
        EXPECT_EQ( addition.before, addition.group.mountProfile( addition.after.path() ) );
        add( { "mount", addition.group.name().str(), std::string( addition.flags ),
               std::string( addition.mountFilter ),
               addition.before ? dumped( *addition.before ) + " ->" : "->", dumped( addition.after ),
               at( addition.origin ) } );
    }

  private:
    [[nodiscard]] std::string inDirectory( std::string_view file ) const {
        return file.starts_with( directory_ ) ? std::string( file.substr( directory_.size() ) )
                                              : "not here: " + std::string( file );
    }
    [[nodiscard]] std::string at( const Origin& origin ) const {
        if ( origin.kind == Origin::Kind::implicit )
            return origin.file.empty() && origin.line == 0 ? "@implicit" : "@implicit with a place";
        return ( origin.kind == Origin::Kind::configuredPath ? "@configured " : "@" ) +
               inDirectory( origin.file ) + ":" + std::to_string( origin.line ) +
               ( origin.inIncludeFile ? " (included)" : "" );
    }
    void add( const std::vector<std::string>& words ) {
        for ( const std::string& word : words )
            text_.append( text_.empty() || text_.back() == '\n' || word.empty() ? "" : " " ).append( word );
        text_ += '\n';
    }

    std::string directory_;
    std::string text_;
};

class ObserverTest : public HandlerTest {
  protected:
    using Files = std::map<std::string, std::string>;

    /// What is told about a run over an agent file beside these files: the same wherever the tokens come
    /// from.
    static std::string told( const std::string& text, const Files& files = {}, bool addDefaults = false,
                             const Kiv::Ptr<const Corvid::EntityManager>& manager = nullptr ) {
        std::string lists[2];
        for ( const bool plainTokens : { false, true } ) {
            Bench bench( text, addDefaults, manager );
            for ( const auto& [name, content] : files )
                bench.dir.file( name, content );
            Listing listing( bench.dir.path() );
            bench.hdlr.plainTokensIs( plainTokens );
            bench.hdlr.observerIs( &listing );
            try {
                bench.run();
            } catch ( const std::runtime_error& ) {
                lists[plainTokens] = "thrown\n";
            }
            lists[plainTokens].insert( 0, listing.text() );
        }
        EXPECT_EQ( lists[0], lists[1] );
        return lists[0];
    }
};

TEST_F( ObserverTest, EveryFileIsToldWhenItHasBeenRead ) {
    EXPECT_EQ( told( "agentName: A\n/a, T, r\n\ninclude: inc-*\n",
                     { { "inc-1", "\n/b, T, r\n" }, { "inc-2", "# c\n/c, T, r\n" }, { "other", "" } } ),
               "read Agent\n"
               "agentName A @Agent:1\n"
               "group all 99/99 @implicit\n"
               "mount all r -> a T r @Agent:2\n"
               "include inc-1 by inc-* 1 of 2 @Agent:4\n"
               "read include inc-1\n"
               "mount all r -> b T r @inc-1:2 (included)\n"
               "include inc-2 by inc-* 2 of 2 @Agent:4\n"
               "read include inc-2\n"
               "mount all r -> c T r @inc-2:2 (included)\n" );
}

TEST_F( ObserverTest, AFileThatIsNoAgentFileIsToldAsRead ) {
    EXPECT_EQ( told( "/a, T, r\n" ), "read Agent\n" );
}

TEST_F( ObserverTest, AFileThatCannotBeReadIsNotTold ) {
    Bench bench( "agentName: A\ninclude: inc\n" );
    std::filesystem::create_directory( bench.dir.path() + "/inc" );
    Listing listing( bench.dir.path() );
    bench.hdlr.observerIs( &listing );
    EXPECT_THROW( bench.run(), std::runtime_error );
    EXPECT_EQ( listing.text(), "read Agent\nagentName A @Agent:1\ngroup all 99/99 @implicit\n"
                               "include inc by inc 1 of 1 @Agent:2\n" );

    std::filesystem::remove( bench.agentFile );
    Corvid::MountProfileHdlr missing( bench.agentFile, bench.root, nullptr, false );
    Listing nothing( bench.dir.path() );
    missing.observerIs( &nothing );
    EXPECT_THROW( missing.run(), std::runtime_error );
    EXPECT_EQ( nothing.text(), "" );
}

TEST_F( ObserverTest, AFileThatStopsAtAnErrorIsToldUpToIt ) {
    EXPECT_EQ( told( "agentName: A\n/a, T, r\ninclude: inc-*\n/d, T, r\n",
                     { { "inc-1", "/b, T, r\n/a, U, r\n/c, T, r\n" }, { "inc-2", "/e, T, r\n" } } ),
               "read Agent\n"
               "agentName A @Agent:1\n"
               "group all 99/99 @implicit\n"
               "mount all r -> a T r @Agent:2\n"
               "include inc-1 by inc-* 1 of 2 @Agent:3\n"
               "read include inc-1\n"
               "mount all r -> b T r @inc-1:1 (included)\n" );
}

TEST_F( ObserverTest, StatementsAboutTheAgentAreToldWithTheirTexts ) {
    EXPECT_EQ( told( "\nagentName: A-%b-%a$\nhybridMount\nlowMountPrio\nnoDefaultMountGroup\n"
                     "rootFlags: rw\nrootFlags: wi\nsubAgent: S-%a\nalias: %c = %a, %b\nalias: %c = %b\n" ),
               "read Agent\n"
               "agentName A- @Agent:2\n"
               "templateKey %b @Agent:2\n"
               "templateKey %a$ @Agent:2\n"
               "hybridMount @Agent:3\n"
               "lowMountPrio @Agent:4\n"
               "noDefaultMountGroup @Agent:5\n"
               "rootFlags rw @Agent:6\n"
               "rootFlags wi @Agent:7\n"
               "subAgent S-%a @Agent:8\n"
               "alias %c @Agent:9\n"
               "alias %c @Agent:10\n"
               "group all 99/99 @implicit\n" );
}

TEST_F( ObserverTest, AMountThatComesAgainIsToldWithWhatItWas ) {
    EXPECT_EQ( told( "agentName: A\nmountFilter: f\nstate, up\nname\nstate, down\n"
                     "/a, T, ri, f\n\na/, T, wr\n/a, T, c, f\n" ),
               "read Agent\n"
               "agentName A @Agent:1\n"
               "filter f @Agent:2\n"
               "attribute f state=up @Agent:3\n"
               "attribute f name= @Agent:4\n"
               "attribute f state=down @Agent:5\n"
               "group all 99/99 @implicit\n"
               "mount all ri f -> a T ri {name= state=down} @Agent:6\n"
               "mount all wr a T ri {name= state=down} -> a T riw @Agent:8\n"
               "mount all c f a T riw -> a T riwc {name= state=down} @Agent:9\n" );
}

TEST_F( ObserverTest, AGroupThatComesAgainIsToldWithBothPriorities ) {
    EXPECT_EQ(
        told( "agentName: A\nmountGroup: g, 7\n/a, T, r\nmountGroup: h\nmountGroup: g, 8\n/a, T, w\n" ),
        "read Agent\n"
        "agentName A @Agent:1\n"
        "group all 99/99 @implicit\n"
        "group g 7/7 @Agent:2\n"
        "mount g r -> a T r @Agent:3\n"
        "group h 99/99 @Agent:4\n"
        "group g 8/7 @Agent:5\n"
        "mount g w a T r -> a T rw @Agent:6\n" );
}

TEST_F( ObserverTest, EveryPartOfAConditionIsTold ) {
    EXPECT_EQ( told( "agentName: A-%k\nmountGroup: g\nconditionBlocker: 1 == /a.b and \\\n x == %k\n"
                     "mountGroup: h\ncondition: 2 == len( /c.d )\n" ),
               "read Agent\n"
               "agentName A- @Agent:1\n"
               "templateKey %k @Agent:1\n"
               "group all 99/99 @implicit\n"
               "group g 99/99 @Agent:2\n"
               "blocking g @Agent:3\n"
               "single g 1 == /a.b @Agent:3\n"
               "template g x == %k @Agent:4\n"
               "whole g 1 == /a.b and x == %k @Agent:3\n"
               "group h 99/99 @Agent:5\n"
               "single h 2 == len( /c.d ) @Agent:6\n"
               "whole h 2 == len( /c.d ) @Agent:6\n" );
}

TEST_F( ObserverTest, AStatementOnSeveralLinesIsToldWithTheFirstOne ) {
    EXPECT_EQ( told( "agentName: \\\n\\\nA\r\n/a, T, r # b\n\n\\\n/b\\\n, T,\\\n r" ),
               "read Agent\n"
               "agentName A @Agent:1\n"
               "group all 99/99 @implicit\n"
               "mount all r -> a T r @Agent:4\n"
               "mount all r -> b T r @Agent:7\n" );
}

TEST_F( ObserverTest, ConfiguredPathsAreToldWithTheLineThatAsksForThem ) {
    const ScopedEnvironment testRoot( "K7_CHROOT", "/" );
    Kiv::Embedded::entityIs( configRootPath,
                             Kiv::Embedded::newConfigRoot( { { "x", "X", "i" }, { "y", "Y", "" } }, true ) );
    EXPECT_EQ( told( "agentName: A\n\ninclude: ConfigMountProfile\n/x, X, r\n", {}, false, entityManager() ),
               "read Agent\n"
               "agentName A @Agent:1\n"
               "group all 99/99 @implicit\n"
               "mount all wi -> x X wi @configured Agent:3\n"
               "mount all w -> y Y w @configured Agent:3\n"
               "mount all r x X wi -> x X wir @Agent:4\n" );
}

TEST_F( ObserverTest, WhatEveryAgentGetsHasNoLine ) {
    Kiv::Embedded::entityIs(
        "/sys/Corvid/cell/1/redundancy/status",
        Kiv::Embedded::newRedundancyStatus( Redundancy::Mode::hotStandby, Redundancy::Mode::hotStandby ) );
    const std::string text = told( "agentName: A\nmountGroup: peerReady, 5\n", {}, true, entityManager() );
    EXPECT_THAT( text,
                 testing::StartsWith( "read Agent\n"
                                      "agentName A @Agent:1\n"
                                      "group all 99/99 @implicit\n"
                                      "group peerReady 5/5 @Agent:2\n"
                                      "group default 1/1 @implicit\n"
                                      "mount default r -> logging/config Kiv::LogConfig r @implicit\n" ) );
    const std::string there = "%agentString in /%sysname/Corvid/cell/2/agent/status.entryState";
    const std::string ready = "true == /%sysname/Corvid/cell/2/agent/status/%agentString.ready";
    EXPECT_THAT( text, testing::EndsWith( "group peerReady 2/5 @implicit\n"
                                          "whole peerReady " +
                                          there + " and " + ready +
                                          " @implicit\n"
                                          "blocking peerReady @implicit\n"
                                          "single peerReady " +
                                          there +
                                          " @implicit\n"
                                          "single peerReady " +
                                          ready + " @implicit\n" ) );
}

TEST_F( ObserverTest, AnObserverThatAsksForNothingIsTheSameAsNone ) {
    const auto dumpWith = []( Corvid::RunObserver* observer ) {
        Bench bench( "agentName: A-%k\nhybridMount\nmountFilter: f\nstate\n/a, T, r, f\ninclude: inc\n"
                     "mountGroup: g\ncondition: 1 == /a.b\n/a, T, r\n",
                     true );
        bench.dir.file( "inc", "/b, T, r\n" );
        bench.hdlr.observerIs( observer );
        bench.run();
        return bench.dump();
    };
    Corvid::RunObserver silent;
    EXPECT_EQ( dumpWith( &silent ), dumpWith( nullptr ) );
}

} // namespace
