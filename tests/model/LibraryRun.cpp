#include "model/LibraryRun.h"

#include "EmbeddedPlatform.h"
#include "ProfileParser/MountProfileHdlr.h"
#include "ProfileParser/TokenListing.h"
#include "model/LibraryRecords.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace Model {

namespace {

void environmentIs( const char* name, const std::optional<std::string>& value ) {
    if ( value )
        ::setenv( name, value->c_str(), 1 );
    else
        ::unsetenv( name );
}

std::string inCell( const Case& input, const std::string& path ) {
    return input.cell == 0 ? path : "cell/" + std::to_string( input.cell ) + '/' + path;
}

/// Sets environment and platform up as the case wants them, and takes both back.
class Stage {
  public:
    explicit Stage( const Case& input ) {
        environmentIs( "K7_CHROOT", input.chroot );
        environmentIs( "AGENT_WAIT_FOR_READY", input.waitForReady );
        environmentIs( "ACTIVE_CELLID", input.activeCell );
        Kiv::Embedded::cellIdIs( input.cell );
        Kiv::Embedded::traceLevelsAre( "MountProfileHdlr/0-1" );
        Kiv::Embedded::traceSinkIs(
            [this]( const Kiv::TraceHandle&, unsigned level, const char*, unsigned, std::string_view text ) {
                traces.push_back( std::to_string( level ) + ' ' + std::string( text ) );
            } );
        if ( input.system )
            addSystem( input );
    }
    Stage( const Stage& ) = delete;
    Stage& operator=( const Stage& ) = delete;
    ~Stage() {
        for ( const char* name : { "K7_CHROOT", "AGENT_WAIT_FOR_READY", "ACTIVE_CELLID" } )
            ::unsetenv( name );
        Kiv::Embedded::cellIdIs( 1 );
        Kiv::Embedded::traceLevelsAre( "" );
        Kiv::Embedded::traceSinkIs( {} );
        Kiv::Embedded::entitiesDel();
    }

    Kiv::Ptr<const Corvid::EntityManager> entityManager;
    std::vector<std::string> traces;

  private:
    void addSystem( const Case& input ) {
        entityManager = Kiv::Embedded::newEntityManager( *input.system, input.standalone );
        const std::string root = '/' + *input.system + "/Corvid/";
        Kiv::Embedded::entityIs(
            root + inCell( input, "redundancy/status" ),
            Kiv::Embedded::newRedundancyStatus( static_cast<Redundancy::Mode>( input.configuredMode ),
                                                static_cast<Redundancy::Mode>( input.operationalMode ) ) );
        std::vector<Kiv::Embedded::ConfiguredPath> paths;
        for ( const auto& [path, type, flags] : input.configRoot )
            paths.push_back( { path, type, flags } );
        Kiv::Embedded::entityIs( root + "Corvid/configRoot", Kiv::Embedded::newConfigRoot( paths, true ) );
    }
};

/// Collects what is written to standard error.
class CapturedErrors {
  public:
    CapturedErrors() : before_( std::cerr.rdbuf( text_.rdbuf() ) ) {}
    CapturedErrors( const CapturedErrors& ) = delete;
    CapturedErrors& operator=( const CapturedErrors& ) = delete;
    ~CapturedErrors() { std::cerr.rdbuf( before_ ); }
    [[nodiscard]] std::string text() const { return text_.str(); }

  private:
    std::ostringstream text_;
    std::streambuf* before_;
};

/// Making tens of thousands of files takes by far the most time where they go to a disk.
std::filesystem::path temporaryFiles() {
    const std::filesystem::path inMemory = "/dev/shm";
    return !std::getenv( "TMPDIR" ) && ::access( inMemory.c_str(), W_OK ) == 0
               ? inMemory
               : std::filesystem::temp_directory_path();
}

} // namespace

LibraryRun::LibraryRun() {
    std::string pattern = ( temporaryFiles() / "mountprofile-model-XXXXXX" ).string();
    if ( !::mkdtemp( pattern.data() ) )
        throw std::runtime_error( "cannot create " + pattern );
    directory_ = pattern;
    std::filesystem::current_path( directory_ );
}

LibraryRun::~LibraryRun() {
    std::error_code ignored;
    std::filesystem::current_path( directory_.parent_path(), ignored );
    std::filesystem::remove_all( directory_, ignored );
}

std::string LibraryRun::directory( const Case& input ) const {
    return input.bareName ? "" : directory_.string() + '/';
}

void LibraryRun::layOut( const Case& input ) {
    for ( const auto& path : made_ )
        std::filesystem::remove( path );
    made_.clear();
    const auto write = [this]( const std::string& name, const std::string& text ) {
        made_.push_back( directory_ / name );
        std::ofstream( made_.back(), std::ios::binary ) << text;
    };
    write( agentFileName, input.agentText );
    for ( const auto& [name, text] : input.otherFiles )
        write( name, text );
    for ( const auto& name : input.directories ) {
        made_.push_back( directory_ / name );
        std::filesystem::create_directory( made_.back() );
    }
}

Outcome LibraryRun::run( const Case& input ) {
    layOut( input );
    Stage stage( input );
    const CapturedErrors captured;
    const Kiv::Ptr<Corvid::PassiveAgentProfileDir> root( new Corvid::PassiveAgentProfileDir );
    Corvid::MountProfileHdlr handler( directory( input ) + agentFileName, root, stage.entityManager,
                                      input.addDefaults );
    handler.plainTokensIs( input.plainTokens );
    Outcome out;
    try {
        handler.run();
        out.kind = !handler.validProfileFile()  ? "invalid"
                   : handler.maybeIncludeFile() ? "notAgentFile"
                                                : "valid";
    } catch ( const std::runtime_error& error ) {
        out.kind = "unreadable";
        out.exception = error.what();
    }
    out.profiles = plain( *root );
    out.error = plain( handler.errorDesc() );
    out.subAgents = handler.subAgents();
    out.traces = stage.traces;
    out.printed = captured.text();
    return out;
}

Lexed LibraryRun::tokens( const std::string& name ) const {
    Lexed out;
    const auto receive = [&]( const Corvid::ListedToken& token ) {
        const auto type = static_cast<Type>( token.type );
        if ( token.type >= typeCount || std::string_view( token.name ) != typeName( type ) )
            throw std::logic_error( std::string( "wrong name of a token: " ) + token.name );
        out.tokens.push_back( { type, token.line, token.charPositionInLine, std::string( token.text ) } );
    };
    const Corvid::RecognitionError error = Corvid::listTokens( ( directory_ / name ).string(), receive );
    if ( !error.description().empty() )
        out.firstError = LexError{ error.exceptionType(), error.line(), error.charPositionInLine(),
                                   error.description().str(), error.sourceLine().str() };
    return out;
}

} // namespace Model
