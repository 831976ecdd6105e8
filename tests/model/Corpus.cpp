#include "model/Corpus.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace Model {

namespace {

namespace fs = std::filesystem;

std::string contents( const fs::path& file ) {
    std::ostringstream text;
    text << std::ifstream( file, std::ios::binary ).rdbuf();
    return text.str();
}

std::vector<std::string> lines( const fs::path& file ) {
    std::vector<std::string> out;
    std::istringstream text( contents( file ) );
    for ( std::string line; std::getline( text, line ); )
        out.push_back( line );
    return out;
}

void configure( Case& out, const fs::path& file ) {
    for ( const std::string& line : lines( file ) ) {
        ConfiguredPath configured;
        std::istringstream( line ) >> configured.path >> configured.type >> configured.flags;
        if ( !configured.path.empty() )
            out.configRoot.push_back( configured );
    }
}

void applyArguments( Case& out, const fs::path& folder ) {
    const std::vector<std::string> arguments = lines( folder / "args" );
    out.configuredMode = 1; // redundancy only on request
    auto argument = arguments.begin();
    const auto value = [&] {
        if ( argument + 1 == arguments.end() )
            throw std::runtime_error( "no value for " + *argument );
        return *++argument;
    };
    for ( ; argument != arguments.end(); ++argument )
        if ( *argument == "--no-defaults" )
            out.addDefaults = false;
        else if ( *argument == "--redundancy" )
            out.configuredMode = 3;
        else if ( *argument == "--system" )
            out.system = value();
        else if ( *argument == "--cell" )
            out.cell = static_cast<std::uint32_t>( std::stoul( value() ) );
        else if ( *argument == "--config-root" )
            configure( out, folder / value() );
        else
            throw std::runtime_error( "unknown argument " + *argument );
}

void applyEnvironment( Case& out, const fs::path& folder ) {
    for ( const std::string& line : lines( folder / "env" ) ) {
        const auto equals = line.find( '=' );
        const std::string name = line.substr( 0, equals );
        const std::string value = line.substr( equals + 1 );
        if ( name == "K7_CHROOT" )
            out.chroot = value;
        else if ( name == "AGENT_WAIT_FOR_READY" )
            out.waitForReady = value;
        else if ( name == "ACTIVE_CELLID" )
            out.activeCell = value;
    }
}

} // namespace

std::vector<fs::path> corpusFolders() {
    std::vector<fs::path> out;
    for ( const auto& topic : fs::directory_iterator( MODEL_CORPUS ) )
        if ( topic.is_directory() )
            for ( const auto& folder : fs::directory_iterator( topic ) )
                out.push_back( folder.path() );
    std::ranges::sort( out );
    return out;
}

Case corpusCase( const fs::path& folder ) {
    Case out;
    out.bareName = true;
    out.agentText = contents( folder / agentFileName );
    for ( const auto& entry : fs::directory_iterator( folder ) ) {
        const std::string name = entry.path().filename();
        if ( entry.is_directory() )
            out.directories.push_back( name );
        else if ( name != agentFileName )
            out.otherFiles[name] = contents( entry.path() );
    }
    applyArguments( out, folder );
    applyEnvironment( out, folder );
    return out;
}

} // namespace Model
