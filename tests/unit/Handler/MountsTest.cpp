// Mounts and the filters that they name: every operation called by itself.

#include "HandlerTesting.h"

using namespace CorvidTest;
using Corvid::MountProfileHdlr;

namespace {

class MountsTest : public HandlerTest {
  protected:
    MountsTest() {
        hdlr.agentProfileIs( "A" );
        hdlr.addMountGroup( "g", 7 );
    }
    [[nodiscard]] std::string mounts() const { return dumpedMounts( *hdlr.currMg() ); }

    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root{ new Corvid::PassiveAgentProfileDir };
    MountProfileHdlr hdlr{ "Agent", root, nullptr, false };
};

TEST_F( MountsTest, OneSlashAtEitherEndOfAPathIsDropped ) {
    for ( const auto& [path, stored] : { std::pair{ "a/b", "a/b" },
                                         { "/a/b", "a/b" },
                                         { "a/b/", "a/b" },
                                         { "/a/b/", "a/b" },
                                         { "//a//", "/a/" },
                                         { "a//b", "a//b" },
                                         { "///", "/" },
                                         { "//", "" },
                                         { "/", "" },
                                         { "", "" },
                                         { " a ", " a " } } ) {
        hdlr.addMountGroup( std::string( "group for " ) + path, 7 );
        const std::string given = path;
        hdlr.addMount( given, "T::T", "r", "" );
        EXPECT_EQ( mounts(), std::string( stored ) + " T::T r\n" ) << path;
        ASSERT_NE( hdlr.currMg()->mountProfile( stored ), nullptr ) << path;
        EXPECT_EQ( given, path );
    }
}

TEST_F( MountsTest, TextsAreStoredAsTheyAreBytesOfAnyValueIncluded ) {
    const std::string path( "a\0b\xff", 4 );
    const std::string type( " T\0", 3 );
    hdlr.addMount( "/" + path, type, "wrw", "" );
    const Corvid::Mount* mount = hdlr.currMg()->mountProfile( path );
    ASSERT_NE( mount, nullptr );
    EXPECT_EQ( mount->path(), path );
    EXPECT_EQ( mount->type(), type );
    EXPECT_EQ( mount->flags(), "wrw" ) << "only merging drops repeated flags";
    EXPECT_EQ( mount->mountFilter(), Corvid::MountFilter() );
}

TEST_F( MountsTest, PathsDifferByEveryByteAndAreOrderedByThem ) {
    for ( const char* path : { "b", "a//b", "B", "a/b", "a\xff", "a" } )
        hdlr.addMount( path, "T::T", "r", "" );
    EXPECT_EQ( mounts(), "B T::T r\na T::T r\na//b T::T r\na/b T::T r\na\xff T::T r\nb T::T r\n" );
}

TEST_F( MountsTest, ARepeatedPathMergesItsFlagsBehindThoseThatAreThere ) {
    for ( const auto& [path, flags, merged] : { std::tuple{ "/x", "ri", "ri" },
                                                { "x/", "wr", "riw" },
                                                { "x", "", "riw" },
                                                { "/x/", "ccfc", "riwcf" },
                                                { "x", "iwr", "riwcf" } } ) {
        hdlr.addMount( path, "T::T", flags, "" );
        EXPECT_EQ( mounts(), std::string( "x T::T " ) + merged + "\n" );
    }
    hdlr.addMount( "y", "T::T", "", "" );
    hdlr.addMount( "y", "T::T", "rrw", "" );
    EXPECT_EQ( mounts(), "x T::T riwcf\ny T::T rw\n" );
    hdlr.addMountGroup( "other", 7 );
    hdlr.addMount( "x", "T::U", "r", "" );
    EXPECT_EQ( mounts(), "x T::U r\n" ) << "another group knows nothing of it";
}

TEST_F( MountsTest, ARepeatedPathWithAnotherTypeIsReportedAndChangesNothing ) {
    for ( const std::string type : { "T::U", "t::t", "T::T ", "" } ) {
        const auto operation = [&]( MountProfileHdlr& running ) {
            running.addMount( "x", "T::T", "rw", "" );
            running.addMount( "/x/", type, "i", "" );
            EXPECT_EQ( dumpedMounts( *running.currMg() ), "x T::T rw\n" );
        };
        EXPECT_EQ( messageOf( operation ),
                   "Path x is already present with type: T::T. Mismatched type: " + type );
    }
}

TEST_F( MountsTest, IllegalFlagsAreReportedBeforeAnythingElseAndStoreNothing ) {
    const auto operation = []( MountProfileHdlr& running ) {
        running.addMount( "x", "T::T", "r", "" );
        running.addMount( "x", "T::U", "wX", "undeclared" );
        running.addMount( "new", "T::T", "wX", "" );
        EXPECT_EQ( dumpedMounts( *running.currMg() ), "x T::T r\n" );
    };
    EXPECT_EQ( messageOf( operation ), "illegal flag 'X'" );
}

TEST_F( MountsTest, AFilterThatIsNotDeclaredIsReportedAndStoresNothing ) {
    for ( const std::string name : { "f", "F1", "f1 ", "f11" } ) {
        const auto operation = [&]( MountProfileHdlr& running ) {
            running.registerMountFilterDecl( "f1" );
            running.addMount( "x", "T::T", "r", "f1" );
            running.addMount( "x", "T::T", "w", name );
            running.addMount( "new", "T::T", "w", name );
            EXPECT_EQ( dumpedMounts( *running.currMg() ), "x T::T r {}\n" );
        };
        EXPECT_EQ( messageOf( operation ),
                   "No mount filter with name '" + name + "' defined before this line." );
    }
}

TEST_F( MountsTest, ALineWithAClashOfTypesAndAnUndeclaredFilterReportsTheClash ) {
    const auto operation = []( MountProfileHdlr& running ) {
        running.addMount( "x", "T::T", "r", "" );
        running.addMount( "x", "T::U", "r", "undeclared" );
    };
    EXPECT_EQ( messageOf( operation ), "Path x is already present with type: T::T. Mismatched type: T::U" );
}

TEST_F( MountsTest, AMountCopiesItsFilterAsItStandsAtThatLine ) {
    hdlr.registerMountFilterDecl( "f1" );
    hdlr.addMount( "early", "T::T", "r", "f1" );
    hdlr.addAttrFilter( "name", "k1" );
    hdlr.addMount( "later", "T::T", "r", "f1" );
    hdlr.addAttrFilter( "name", "k2" );
    hdlr.addAttrFilter( "alias", "" );
    hdlr.addMount( "last", "T::T", "r", "f1" );
    hdlr.addMount( "without", "T::T", "r", "" );
    EXPECT_EQ( mounts(),
               "early T::T r {}\nlast T::T r {alias= name=k2}\nlater T::T r {name=k1}\nwithout T::T r\n" );
    EXPECT_EQ( hdlr.currMg()->mountProfile( "early" )->mountFilter().enabled(), 1 );
    EXPECT_EQ( hdlr.currMg()->mountProfile( "without" )->mountFilter().enabled(), 0 );
}

TEST_F( MountsTest, ARepeatedPathHasTheFilterOfItsLastLine ) {
    hdlr.registerMountFilterDecl( "f1" );
    hdlr.addAttrFilter( "a", "1" );
    hdlr.registerMountFilterDecl( "f2" );
    hdlr.addAttrFilter( "b", "2" );
    for ( const auto& [filter, expected] : { std::pair{ "f1", "x T::T r {a=1}\n" },
                                             { "f2", "x T::T r {b=2}\n" },
                                             { "", "x T::T r\n" },
                                             { "f1", "x T::T r {a=1}\n" } } ) {
        hdlr.addMount( "x", "T::T", "r", filter );
        EXPECT_EQ( mounts(), expected );
    }
}

TEST_F( MountsTest, AttributesGoToTheFilterDeclaredLastAndTheLastKeyOfOneWins ) {
    hdlr.registerMountFilterDecl( "f" );
    hdlr.addAttrFilter( "a", "1" );
    hdlr.registerMountFilterDecl( "F" ); // another one: case matters
    hdlr.addAttrFilter( "a", "k1" );
    hdlr.addAttrFilter( "A", "k" );
    hdlr.addAttrFilter( "a", "k2" );
    hdlr.addMount( "f", "T::T", "r", "f" );
    hdlr.addMount( "F", "T::T", "r", "F" );
    EXPECT_EQ( mounts(), "F T::T r {A=k a=k2}\nf T::T r {a=1}\n" );
    const auto& attributes = hdlr.currMg()->mountProfile( "F" )->mountFilter().attrFilter();
    EXPECT_EQ( attributes.at( "a" ), Corvid::AttrFilter( "a", "k2" ) );
}

TEST_F( MountsTest, AFilterDeclaredTwiceIsReportedAndTheOneDeclaredLastGoesOn ) {
    const auto operation = []( MountProfileHdlr& running ) {
        running.registerMountFilterDecl( "f1" );
        running.addAttrFilter( "a", "1" );
        running.registerMountFilterDecl( "f2" );
        running.registerMountFilterDecl( "f1" );
        running.addAttrFilter( "b", "2" );
        running.addMount( "x", "T::T", "r", "f1" );
        running.addMount( "y", "T::T", "r", "f2" );
        EXPECT_EQ( dumpedMounts( *running.currMg() ), "x T::T r {a=1}\ny T::T r {b=2}\n" );
    };
    EXPECT_EQ( messageOf( operation ), "Mount filter 'f1' is already declared" );
}

} // namespace
