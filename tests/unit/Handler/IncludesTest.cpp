// Include statements: which files they stand for, in which order those are parsed, and what an error in one
// does.

#include "HandlerTesting.h"

#include <filesystem>
#include <map>
#include <stdexcept>

#include <sys/stat.h>

using namespace CorvidTest;

namespace {

/// Works in another directory as long as it lives.
class ScopedWorkingDirectory {
  public:
    explicit ScopedWorkingDirectory( const std::string& path ) : before_( std::filesystem::current_path() ) {
        std::filesystem::current_path( path );
    }
    ScopedWorkingDirectory( const ScopedWorkingDirectory& ) = delete;
    ScopedWorkingDirectory& operator=( const ScopedWorkingDirectory& ) = delete;
    ~ScopedWorkingDirectory() { std::filesystem::current_path( before_ ); }

  private:
    std::filesystem::path before_;
};

class IncludesTest : public HandlerTest {
  protected:
    struct Files : std::map<std::string, std::string> {
        using map::map;
    };
    /// An agent file with these lines behind its title, beside these files.
    struct IncludingBench : Bench {
        IncludingBench( const std::string& lines, const Files& files,
                        const Kiv::Ptr<const Corvid::EntityManager>& manager = nullptr )
            : Bench( "agentName: A-%slot\n" + lines, false, manager ) {
            for ( const auto& [name, text] : files )
                dir.file( name, text );
        }
        [[nodiscard]] std::string path( const std::string& name ) const { return dir.path() + "/" + name; }
        [[nodiscard]] std::string mounts( const std::string& group = "all" ) const {
            return dumpedMounts( *hdlr.agentProfile()->mountGroup().at( Kiv::Name( group ) ) );
        }
        /// The text of the std::runtime_error that ends the run.
        std::string thrown() {
            try {
                run();
            } catch ( const std::runtime_error& error ) {
                return error.what();
            }
            return "nothing thrown";
        }
    };

    static std::string noMatch( const std::string& fullPattern ) {
        return " In mount group 'all' ,  near '\\n', No include file found matching " + fullPattern;
    }
    /// One configured path.
    static void putConfigRoot() {
        Kiv::Embedded::entityIs( configRootPath, Kiv::Embedded::newConfigRoot(
                                                     { { "fan/config", "Fan::Config", "riw" } }, true ) );
    }
};

TEST_F( IncludesTest, APatternIsTakenRelativeToTheAgentFilesDirectory ) {
    const TempDir elsewhere;
    elsewhere.file( "inc-elsewhere", "/elsewhere, T::T, r\n" );
    const ScopedWorkingDirectory work( elsewhere.path() );
    IncludingBench bench( "include: inc-*\n",
                          { { "inc-a", "/a, T::T, r\n" }, { "other", "/other, T::T, r\n" } } );
    bench.run();
    EXPECT_EQ( bench.mounts(), "a T::T r\n" );
    EXPECT_EQ( bench.trace, "1 Parsing include files matching pattern " + bench.path( "inc-*" ) + "\n" );
}

TEST_F( IncludesTest, BesideAnAgentFileWithoutADirectoryAPatternStandsAsItIs ) {
    IncludingBench files( "include: inc-*\ninclude: missing\n", { { "inc-a", "/a, T::T, r\n" } } );
    const ScopedWorkingDirectory work( files.dir.path() );
    Corvid::MountProfileHdlr hdlr( "Agent", files.root, nullptr, false );
    const CapturedTrace trace;
    const CapturedStandardError standardError;
    hdlr.run();
    EXPECT_EQ( files.root->agentProfileIs( Kiv::Name( "A-" ) )->mountGroup().size(), 1U );
    EXPECT_EQ( dumpedMounts( *hdlr.currMg() ), "a T::T r\n" );
    EXPECT_THAT( trace.text(), testing::StartsWith( "1 Parsing include files matching pattern inc-*\n" ) );
    EXPECT_EQ( hdlr.errorDesc().description(), noMatch( "missing" ) );
}

TEST_F( IncludesTest, APatternThatBeginsWithASlashIsStillTakenRelativeToTheAgentFile ) {
    EXPECT_THAT( messageOf( []( Corvid::MountProfileHdlr& running ) { running.parseIncludes( "/etc/*" ); } ),
                 testing::MatchesRegex( "No include file found matching .*corvid-test-......//etc/\\*" ) );
}

TEST_F( IncludesTest, TheAgentsDirectoryIsPartOfThePattern ) {
    const TempDir dir;
    for ( const char* name : { "a[b]", "ab" } )
        std::filesystem::create_directory( dir.path() + "/" + name );
    dir.file( "a[b]/inc", "/wild, T::T, r\n" );
    dir.file( "ab/inc", "/matched, T::T, r\n" );
    Corvid::MountProfileHdlr hdlr( dir.file( "a[b]/Agent", "agentName: A\ninclude: inc\n" ),
                                   new Corvid::PassiveAgentProfileDir, nullptr, false );
    hdlr.run();
    EXPECT_EQ( dumpedMounts( *hdlr.currMg() ), "matched T::T r\n" );
}

TEST_F( IncludesTest, FilesAreParsedInTheByteWiseOrderOfTheirNames ) {
    // Flags of one path merge in the order of the lines, so they tell the order of the files.
    IncludingBench bench( "include: i*\n", { { "i-a", "/x, T::T, i\n" },
                                             { "i-B", "/x, T::T, w\n" },
                                             { "i-10", "/x, T::T, r\n" },
                                             { "i-9", "/x, T::T, c\n" },
                                             { "i-\xff", "/x, T::T, S\n" },
                                             { "i-b", "/x, T::T, f\n" } } );
    bench.run();
    EXPECT_EQ( bench.mounts(), "x T::T rcwifS\n" );
}

TEST_F( IncludesTest, MountsGoToTheGroupWithTheStatementAndLinesBehindItGoOn ) {
    IncludingBench bench( "/first, T::T, r\ninclude: inc\n/last, T::T, r\n"
                          "mountGroup: g, 3\ncondition: 1 == /a.b\ninclude: inc\n/x, T::T, w\n",
                          { { "inc", "\n# comment\n/x, T::T, r\n\n\"y\" \"z\", T::T, r" } } );
    bench.run();
    EXPECT_TRUE( bench.hdlr.validProfileFile() ) << bench.description();
    EXPECT_EQ( bench.mounts(), "first T::T r\nlast T::T r\nx T::T r\nyz T::T r\n" );
    EXPECT_EQ( bench.mounts( "g" ), "x T::T rw\nyz T::T r\n" );
}

TEST_F( IncludesTest, AnIncludeFileKnowsWhatTheAgentFileHasDeclared ) {
    IncludingBench bench( "mountFilter: f\nname, key\nalias: %peer = %slot\ninclude: inc\n",
                          { { "inc", "/%slot/%peer/%sysname, T::T, r, f\n" } } );
    bench.run();
    EXPECT_EQ( bench.mounts(), "%slot/%peer/%sysname T::T r {name=key}\n" ) << bench.description();
    IncludingBench undeclared( "include: inc\n", { { "inc", "/%chassis, T::T, r\n" } } );
    undeclared.run();
    EXPECT_EQ( undeclared.description(),
               " In include file,  near ',', Reference to undeclared template key %chassis" );
}

TEST_F( IncludesTest, APatternWithoutAMatchIsReported ) {
    putConfigRoot();
    struct Row {
        const char* pattern;
        bool inTestRoot;
    };
    for ( const Row& row : { Row{ "inc*", false },
                             { "inc", true },
                             { "ConfigMountProfile", false },
                             { "ConfigMountProfile*", true },
                             { "configMountProfile", true },
                             { "ConfigMountProfile-", true } } ) {
        const ScopedEnvironment testRoot( "K7_CHROOT", row.inTestRoot ? std::optional( "/" ) : std::nullopt );
        IncludingBench bench( std::string( "/a, T::T, r\ninclude: " ) + row.pattern + "\n/b, T::T, r\n", {},
                              entityManager() );
        bench.run();
        EXPECT_EQ( bench.description(), noMatch( bench.path( row.pattern ) ) );
        EXPECT_EQ( bench.mounts(), "a T::T r\n" );
        EXPECT_THAT( bench.trace, testing::Not( testing::HasSubstr( "Parsing include files" ) ) );
    }
}

TEST_F( IncludesTest, InATestRootTheConfiguredPathsStandInForAMissingConfigMountProfile ) {
    putConfigRoot();
    for ( const char* anyValue : { "/root", "" } ) {
        const ScopedEnvironment testRoot( "K7_CHROOT", anyValue );
        IncludingBench bench( "mountGroup: g, 4\ninclude: ConfigMountProfile\n/b, T::T, r\n", {},
                              entityManager() );
        bench.run();
        EXPECT_TRUE( bench.hdlr.validProfileFile() ) << bench.description();
        EXPECT_EQ( bench.mounts( "g" ), "b T::T r\nfan/config Fan::Config wi\n" );
        EXPECT_EQ( bench.mounts(), "" );
        EXPECT_EQ( bench.trace, "8 void Corvid::MountProfileHdlr::addConfigMountProfile()\n"
                                "1 adding all config mount paths\n" );
    }
}

TEST_F( IncludesTest, ARunThatReadsMoreFilesThanTheHostAllowsIsGivenUp ) {
    for ( const std::size_t allowed : { 0, 4, 5 } ) {
        IncludingBench bench( "include: inc-*\n/a, T::T, r\ninclude: inc-1\ninclude: inc-*\n",
                              { { "inc-1", "/1, T::T, r\n" }, { "inc-2", "/2, T::T, r\n" } } );
        EXPECT_EQ( bench.hdlr.maxIncludedFiles(), 10'000U );
        bench.hdlr.maxIncludedFilesIs( allowed );
        if ( allowed == 5 )
            EXPECT_NO_THROW( bench.run() );
        else
            EXPECT_THROW( bench.run(), std::runtime_error );
        EXPECT_EQ( bench.hdlr.includedFiles(), allowed == 5 ? 5 : allowed + 1 );
        EXPECT_EQ( bench.mounts(), allowed == 0 ? "" : "1 T::T r\n2 T::T r\na T::T r\n" );
        EXPECT_EQ( bench.hdlr.errorDetails().includeLine, allowed == 0 ? 2U : allowed == 4 ? 5U : 0U );
    }
}

TEST_F( IncludesTest, ConfiguredPathsThatAreNotKnownThrowWhereAHostAsksForThat ) {
    using Kiv::Embedded::newConfigRoot;
    const ScopedEnvironment testRoot( "K7_CHROOT", "/" );
    for ( const auto& [manager, root] :
          std::vector<std::pair<Kiv::Ptr<const Corvid::EntityManager>, Kiv::Ptr<Kiv::Entity>>>{
              { nullptr, nullptr },
              { entityManager(), nullptr },
              { entityManager(), newConfigRoot( {}, false ) } } ) {
        Kiv::Embedded::entityIs( configRootPath, root );
        IncludingBench bench( "/a, T::T, r\n\ninclude: ConfigMountProfile\n/b, T::T, r\n", {}, manager );
        bench.hdlr.missingDatabaseThrowsIs( true );
        EXPECT_THROW( bench.run(), std::runtime_error );
        EXPECT_EQ( bench.mounts(), "a T::T r\n" );
        EXPECT_EQ( bench.hdlr.errorDetails().includeLine, 4U );
        EXPECT_EQ( bench.hdlr.errorDetails().includePattern, "ConfigMountProfile" );
        EXPECT_EQ( bench.hdlr.errorDetails().includeMatches, 0U );
    }
}

TEST_F( IncludesTest, AConfigMountProfileThatIsThereIsParsedAlsoInATestRoot ) {
    putConfigRoot();
    const ScopedEnvironment testRoot( "K7_CHROOT", "/" );
    IncludingBench bench( "include: ConfigMountProfile\n", { { "ConfigMountProfile", "/a, T::T, r\n" } },
                          entityManager() );
    bench.run();
    EXPECT_EQ( bench.mounts(), "a T::T r\n" );
}

TEST_F( IncludesTest, AnErrorInOneFileEndsTheIncludeAndTheErrorNamesThatFile ) {
    for ( const std::string wrong : { "inc-1", "inc-2", "inc-3" } ) {
        Files files{
            { "inc-1", "/1, T::T, r\n" }, { "inc-2", "/2, T::T, r\n" }, { "inc-3", "/3, T::T, r\n" } };
        files[wrong] += "/x, t\n";
        IncludingBench bench( "include: inc-*\n/behind, T::T, r\n", files );
        bench.run();
        std::string parsed;
        for ( char file = '1'; file <= wrong.back(); ++file )
            parsed += std::string( 1, file ) + " T::T r\n";
        EXPECT_EQ( bench.mounts(), parsed ) << "also what stands before the error";
        const auto& error = bench.hdlr.errorDesc();
        EXPECT_EQ( error.description(), " In include file,  near 't', Invalid kiv type." );
        EXPECT_EQ( error.fileName(), bench.agentFile );
        EXPECT_EQ( error.includeFileName(), bench.path( wrong ) );
        EXPECT_EQ( error.line(), 2U );
        EXPECT_EQ( bench.hdlr.agentProfile()->errorDesc(), error );
        EXPECT_EQ(
            bench.trace,
            "1 Parsing include files matching pattern " + bench.path( "inc-*" ) +
                "\n1 Invalid profile file " + bench.agentFile +
                "\n1 Include file parser found error. Constructing handler exception to inform this to "
                "agent file parser\n"
                "8 void Corvid::MountProfileHdlr::constructHdlrException(const string&)\n"
                "1 Constucting handler exception, occured while parsing agent file\n"
                "0 Invalidating agent profile: 'A-'\n" );
    }
}

TEST_F( IncludesTest, TheAgentFilesParserIsToldWhichFileHasTheError ) {
    // The first error is kept, so this one never shows. Making the file valid again just before it is raised
    // shows it.
    IncludingBench bench( "include: inc-*\n", { { "inc-1", "/1, T::T, r\n" }, { "inc-2", "/2, t\n" } } );
    Kiv::Embedded::traceLevelsAre( "MountProfileHdlr/1" );
    Kiv::Embedded::traceSinkIs(
        [&]( const Kiv::TraceHandle&, unsigned, const char*, unsigned, std::string_view text ) {
            if ( text.starts_with( "Include file parser found error." ) )
                bench.hdlr.validProfileFileIs( true );
        } );
    bench.hdlr.parseFile( bench.agentFile, false );
    Kiv::Embedded::traceSinkIs( {} );
    Kiv::Embedded::traceLevelsAre( "" );
    EXPECT_EQ(
        bench.description(),
        " In mount group 'all' ,  near '\\n', Mount profile is invalid due to error in include file: " +
            bench.path( "inc-2" ) );
}

TEST_F( IncludesTest, InAFileThatIsInvalidAlreadyAllMatchingFilesAreParsed ) {
    IncludingBench bench( "include: inc-*\n/behind, T::T, r\n{\n", { { "inc-1", "/1, T::T, r\n/x, t\n" },
                                                                     { "inc-2", "/2, T::T, r\n}\n" },
                                                                     { "inc-3", "/3, T::T, r\n" } } );
    bench.run();
    EXPECT_EQ( bench.mounts(), "1 T::T r\n2 T::T r\n3 T::T r\nbehind T::T r\n" );
    EXPECT_EQ( bench.description(), "Unrecongnized character , near '{'\n" );
    EXPECT_EQ( bench.hdlr.errorDesc().includeFileName(), "" );
    EXPECT_EQ( bench.trace, "1 Invalid profile file " + bench.agentFile +
                                "\n1 Parsing include files matching pattern " + bench.path( "inc-*" ) +
                                "\n0 Invalidating agent profile: 'A-'\n" );
}

TEST_F( IncludesTest, AnIncludeFileHoldsMountLinesAndNothingElse ) {
    const std::string onlyMounts = "Include file should contain only mounts.";
    for ( const auto& [text, description] :
          { std::pair<std::string, std::string>{ "", " at <EOF>, " + onlyMounts },
            { "# only a comment\n\n", " at <EOF>, " + onlyMounts },
            { "agentName: A\n", " near 'agentName', " + onlyMounts },
            { "/a, T::T, r\nhybridMount\n", " In include file,  near 'hybridMount', " + onlyMounts },
            { "include: inc\n",
              " In include file,  near ':', Found ':', include file should only contain mounts" },
            { "/a, T::T, r\nmountGroup: g\n",
              " In include file,  near ':', Found ':', include file should only contain mounts" } } ) {
        IncludingBench bench( "include: inc\n", { { "inc", text } } );
        bench.run();
        EXPECT_EQ( bench.description(), description );
        EXPECT_EQ( bench.hdlr.errorDesc().includeFileName(), bench.path( "inc" ) );
    }
}

TEST_F( IncludesTest, AnAgentFileThatIncludesItselfIsInvalid ) {
    IncludingBench bench( "/a, T::T, r\ninclude: A*\n", {} );
    bench.run();
    EXPECT_EQ( bench.description(), " near 'agentName', Include file should contain only mounts." );
    EXPECT_EQ( bench.hdlr.errorDesc().includeFileName(), bench.agentFile );
    EXPECT_EQ( bench.mounts(), "a T::T r\n" );
}

TEST_F( IncludesTest, AMatchThatCannotBeReadEndsTheRunWithWhatTheProfileHoldsThen ) {
    const std::map<std::string, std::function<void( const std::string& )>> unreadable{
        { "directory", []( const std::string& path ) { std::filesystem::create_directory( path ); } },
        { "FIFO", []( const std::string& path ) { ASSERT_EQ( ::mkfifo( path.c_str(), 0600 ), 0 ); } },
        { "dangling link",
          []( const std::string& path ) { std::filesystem::create_symlink( "none", path ); } },
        { "large file",
          []( const std::string& path ) {
              std::ofstream( path ).close();
              std::filesystem::resize_file( path, Corvid::MountProfileHdlr::defaultMaxFileSize + 1 );
          } },
    };
    for ( const auto& [name, make] : unreadable ) {
        IncludingBench bench( "/a, T::T, r\ninclude: inc-*\n/behind, T::T, r\n",
                              { { "inc-1", "/1, T::T, r\n" }, { "inc-3", "/3, T::T, r\n" } } );
        make( bench.path( "inc-2" ) );
        const Deadline deadline( 30 );
        EXPECT_EQ(
            bench.thrown(),
            "void Corvid::MountProfileHdlr::parseFile(const string&, bool): runtime error while parsing " +
                bench.agentFile )
            << name;
        EXPECT_EQ( bench.mounts(), "1 T::T r\na T::T r\n" ) << name;
        EXPECT_TRUE( bench.hdlr.validProfileFile() && bench.hdlr.agentProfile()->validProfile() ) << name;
        EXPECT_EQ( bench.hdlr.errorDesc(), Corvid::RecognitionError() ) << name;
    }
}

} // namespace
