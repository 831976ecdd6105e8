#include "Cli/StageOptions.h"

#include "Cell/Cell.h"
#include "EmbeddedPlatform.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace Corvid::Cli {

namespace {

using Kiv::Embedded::ConfiguredPath;

ConfiguredPath configuredPath( const std::string& line, const std::string& place ) {
    std::istringstream words( line );
    words.exceptions( std::ios::badbit ); // no memory for a word must not look like no word
    std::string path;
    std::string type;
    std::string flags;
    std::string tooMuch;
    words >> path >> type >> flags >> tooMuch;
    if ( type.empty() || !tooMuch.empty() )
        throw std::runtime_error( place + ": expected 'path type' or 'path type flags'" );
    return { path, type, flags };
}

/// One path a line; lines of nothing but blanks are passed over.
std::vector<ConfiguredPath> readConfiguredPaths( const std::string& fileName ) {
    std::error_code ignored;                              // whatever it is, opening the file meets it again
    if ( std::filesystem::is_other( fileName, ignored ) ) // a pipe could be waited for without end
        throw std::runtime_error( fileName + ": Not a regular file" );
    errno = 0;
    std::ifstream file( fileName );
    std::vector<ConfiguredPath> paths;
    std::string line;
    for ( unsigned number = 1; std::getline( file, line ); ++number )
        if ( line.find_first_not_of( " \t\r\v\f" ) != std::string::npos )
            paths.push_back( configuredPath( line, fileName + ":" + std::to_string( number ) ) );
    if ( !file.eof() )
        throw std::runtime_error( fileName + ": " + std::strerror( errno ) );
    return paths;
}

} // namespace

Stage StageOptions::setUp() const {
    using Redundancy::Mode;
    namespace Platform = Kiv::Embedded;

    Stage stage;
    stage.addDefaults = !noDefaults;
    Platform::cellIdIs( cell );
    if ( !system )
        return stage;
    stage.entityManager = Platform::newEntityManager( *system, !redundancy );
    const std::string root = "/" + *system + "/Corvid/";
    const Mode mode = redundancy ? Mode::hotStandby : Mode::none;
    Platform::entityIs( root + Cell::path( "redundancy/status", 0 ).str(),
                        Platform::newRedundancyStatus( mode, mode ) );
    if ( configRootFile )
        Platform::entityIs( root + "Corvid/configRoot",
                            Platform::newConfigRoot( readConfiguredPaths( *configRootFile ), true ) );
    return stage;
}

std::vector<std::string> StageOptions::filesRead() const {
    return configRootFile ? std::vector{ *configRootFile } : std::vector<std::string>();
}

} // namespace Corvid::Cli
