// The console blocks of the documents: every command in them is run, and has to print what is shown.
#include "docs/MarkdownFile.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace CorvidTest {

namespace {

struct Command {
    std::string line;   ///< as a shell reads it
    std::string output; ///< both streams
    std::string place;
};

/// What is run in place of a command's first words; what begins with none of these is not run.
struct Runnable {
    std::string words;
    std::string program;
};
const std::vector<Runnable>& runnables() {
    static const std::vector<Runnable> all{
        { "./dev run ", MOUNTPROFILE_PROGRAM },
        { "mountprofile ", MOUNTPROFILE_PROGRAM },
        { "./host ", README_HOST_PROGRAM },
        { "./profiles ", EXAMPLE_HOST_PROGRAM },
        { "./profile-of ", C_EXAMPLE_PROGRAM },
        { "python3 examples/python/mount_profile.py ", PYTHON_EXAMPLE },
    };
    return all;
}

/// "NAME=VALUE ", or nothing.
std::string assignmentOf( const std::string& line ) {
    const auto blank = line.find( ' ' );
    return line.substr( 0, blank ).find( '=' ) == std::string::npos ? "" : line.substr( 0, blank + 1 );
}

/// The line with its program's path in it, or nothing for a command that is not run.
std::string runnableLine( const std::string& line ) {
    const std::string assignment = assignmentOf( line );
    const std::string command = line.substr( assignment.size() );
    for ( const auto& runnable : runnables() )
        if ( command.starts_with( runnable.words ) )
            return assignment + runnable.program + command.substr( runnable.words.size() - 1 );
    return {};
}

/// The commands of a block with what each prints, less what the developer's switch says by itself.
std::vector<Command> commandsOf( const MarkdownFile& document, const MarkdownBlock& block ) {
    std::vector<Command> commands;
    std::istringstream lines( block.text );
    unsigned number = block.line;
    for ( std::string line; std::getline( lines, line ); ) {
        const std::string place = document.name() + ":" + std::to_string( ++number );
        if ( line.starts_with( "$ " ) )
            commands.push_back( { line.substr( 2 ), "", place } );
        else if ( commands.empty() )
            ADD_FAILURE() << place << ": output without a command";
        else if ( !line.starts_with( "dev: " ) )
            commands.back().output += line + "\n";
    }
    return commands;
}

std::string outputOf( const std::string& line ) {
    const std::string command = "cd '" CORVID_SOURCE_DIR
                                "' && unset K7_CHROOT AGENT_WAIT_FOR_READY ACTIVE_CELLID KIV_TRACE; { " +
                                line + "\n} 2>&1";
    const std::unique_ptr<std::FILE, int ( * )( std::FILE* )> pipe( ::popen( command.c_str(), "r" ),
                                                                    &::pclose );
    std::string output;
    char buffer[4096];
    for ( std::size_t size = 0; pipe && ( size = std::fread( buffer, 1, sizeof buffer, pipe.get() ) ) > 0; )
        output.append( buffer, size );
    return output;
}

/// Runs the commands of a document. @return how many.
std::size_t runAll( const std::string& name ) {
    std::size_t count = 0;
    const MarkdownFile document( name );
    for ( const auto& block : document.blocks() ) {
        if ( block.language != "console" )
            continue;
        for ( const auto& command : commandsOf( document, block ) ) {
            const std::string line = runnableLine( command.line );
            if ( line.empty() ) {
                // The installation's test compiles with the line of the compiler.
                EXPECT_TRUE( command.line.starts_with( "./dev " ) || command.line.starts_with( "git " ) ||
                             command.line.starts_with( "c++ " ) )
                    << command.place << ": a command that no test knows";
                continue;
            }
            ++count;
            EXPECT_EQ( outputOf( line ), command.output ) << command.place << ": $ " << command.line;
        }
    }
    return count;
}

} // namespace

TEST( Console, TheReadmeShowsWhatItsCommandsPrint ) {
    EXPECT_GE( runAll( "README.md" ), 3U );
}

TEST( Console, TheExamplesPageShowsWhatItsCommandsPrint ) {
    EXPECT_GE( runAll( "examples/README.md" ), 8U );
}

TEST( Console, TheLanguageReferenceShowsWhatItsCommandsPrint ) {
    EXPECT_GE( runAll( "docs/language.md" ), 1U );
}

TEST( Console, ThePythonExamplePrintsTheBytesOfTheFile ) {
    const TempDir files;
    const std::string agent =
        files.file( "agent", "agentName: Fan\nnoDefaultMountGroup\n\"/a/\xC3\xBC/\xFF\", T::T, r\n" );
    EXPECT_EQ( outputOf( PYTHON_EXAMPLE " " + agent ), "Fan all: a/\xC3\xBC/\xFF as T::T, r\n" );
}

TEST( Console, TheExampleProgramsTellHowTheyAreUsedWhenTheyAreGivenNoFile ) {
    EXPECT_EQ( outputOf( C_EXAMPLE_PROGRAM "; echo $?" ), "usage: profile-of FILE\n2\n" );
    EXPECT_EQ( outputOf( PYTHON_EXAMPLE "; echo $?" ), "usage: mount_profile.py FILE...\n2\n" );
}

} // namespace CorvidTest
