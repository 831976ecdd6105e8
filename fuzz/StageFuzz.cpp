// What surrounds an agent file: stage options, environment and configuration root. The parts of the input are
// the words of the command line, one a line, NAME=VALUE for a variable of the environment; the file of the
// configured paths; the agent file.

#include "InputDirectory.h"
#include "Laws.h"

#include "Cli/StageOptions.h"
#include "EmbeddedPlatform.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

namespace CorvidFuzz {

namespace {

constexpr std::array variables{ "K7_CHROOT", "AGENT_WAIT_FOR_READY", "ACTIVE_CELLID" };

std::vector<std::string> linesOf( std::string_view text ) {
    std::vector<std::string> lines;
    for ( std::size_t start = 0; start < text.size(); start += lines.back().size() + 1 )
        lines.emplace_back( text.substr( start, text.find( '\n', start ) - start ) );
    return lines;
}

/// Sets a variable if the line is about one.
bool setsVariable( const std::string& line ) {
    const auto equals = std::min( line.find( '=' ), line.size() );
    const std::string name = line.substr( 0, equals );
    if ( std::ranges::find( variables, name ) == variables.end() || equals == line.size() )
        return false;
    ::setenv( name.c_str(), line.substr( equals + 1 ).c_str(), 1 );
    return true;
}

bool isCell( const std::string& word ) {
    return word.size() == 1 && word[0] >= '0' && word[0] <= '2';
}

/// What the words ask for; nothing when the command would refuse them.
/// @param configRoot is the file of the configured paths, whatever its name is in the words.
std::optional<Corvid::Cli::StageOptions> stageOptionsOf( const std::vector<std::string>& words,
                                                         const std::string& configRoot ) {
    Corvid::Cli::StageOptions options;
    for ( auto word = words.begin(); word != words.end(); ++word ) {
        const bool hasValue = word + 1 != words.end();
        if ( *word == "--no-defaults" )
            options.noDefaults = true;
        else if ( *word == "--redundancy" )
            options.redundancy = true;
        else if ( hasValue && *word == "--system" )
            options.system = *++word;
        else if ( hasValue && *word == "--cell" && isCell( word[1] ) )
            options.cell = static_cast<unsigned>( ( *++word )[0] - '0' );
        else if ( hasValue && *word == "--config-root" ) {
            options.configRootFile = configRoot;
            ++word;
        } else
            return std::nullopt;
    }
    if ( !options.system && ( options.redundancy || options.configRootFile ) )
        return std::nullopt;
    return options;
}

/// The platform as the options have it; taken back at the end.
class Platform {
  public:
    Platform() = default;
    Platform( const Platform& ) = delete;
    Platform& operator=( const Platform& ) = delete;
    ~Platform() {
        for ( const char* variable : variables )
            ::unsetenv( variable );
        Kiv::Embedded::entitiesDel();
        Kiv::Embedded::cellIdIs( 1 );
    }

    /// @return nothing when the file of the configured paths cannot be used.
    static std::optional<Corvid::Cli::Stage> setUp( const Corvid::Cli::StageOptions& options,
                                                    const std::string& configRoot ) {
        try {
            return options.setUp();
        } catch ( const std::runtime_error& error ) {
            require( std::string_view( error.what() ).starts_with( configRoot + ":" ),
                     "what is wrong with the configured paths names their file", error.what() );
            return std::nullopt;
        }
    }
};

void runStage( const std::vector<std::string_view>& parts ) {
    static InputDirectory directory;
    const Platform platform;
    std::vector<std::string> words;
    for ( const std::string& line : linesOf( parts[0] ) )
        if ( !setsVariable( line ) )
            words.push_back( line );
    const std::string configRoot = directory.write( "paths", parts[1] );
    const auto stageOptions = stageOptionsOf( words, configRoot );
    if ( !stageOptions )
        return;
    // A test root without configured paths is a trap of the environment's.
    if ( !stageOptions->configRootFile )
        ::unsetenv( "K7_CHROOT" );
    const auto stage = Platform::setUp( *stageOptions, configRoot );
    if ( !stage )
        return;
    RunOptions runOptions;
    runOptions.addDefaults = stage->addDefaults;
    runOptions.entityManager = stage->entityManager;
    const std::string agentFile = directory.write( "agent", parts[2] );
    checkedRun( agentFile, { { agentFile, parts[2] }, { configRoot, parts[1] } }, runOptions );
}

} // namespace

} // namespace CorvidFuzz

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size ) {
    const auto parts = CorvidFuzz::partsOf( data, size );
    if ( parts.size() != 3 )
        return -1; // nothing to learn from
    CorvidFuzz::runStage( parts );
    return 0;
}
