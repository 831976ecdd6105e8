#include "Cli/CapturedErrors.h"
#include "Cli/CheckCommand.h"
#include "Cli/ShowCommand.h"
#include "Cli/TokensCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstring>
#include <exception>
#include <stdexcept>

namespace {

using namespace Corvid::Cli;

/// The whole command line: the program and its commands.
class Program {
  public:
    Program();
    ExitStatus run( int argc, char** argv, Console& console );

  private:
    ExitStatus runChosen( Console& console );

    CLI::App app_{ "Turns the mount-profile files of agents into mount-profile records.", "mountprofile" };
    ShowCommand show_{ app_ };
    CheckCommand check_{ app_ };
    TokensCommand tokens_{ app_ };
};

Program::Program() {
    app_.set_help_all_flag( "" );
    app_.set_version_flag( "--version", "mountprofile " MOUNTPROFILE_VERSION, "Print the version and exit" );
    app_.require_subcommand( 0, 1 ); // none is told in our own words, see runChosen()
    app_.footer( "Every command has --help.\n\n"
                 "Examples:\n"
                 "  mountprofile show profiles/Fan\n"
                 "  mountprofile check profiles\n"
                 "  mountprofile tokens profiles/Fan" );
}

ExitStatus Program::run( int argc, char** argv, Console& console ) {
    try {
        app_.parse( argc, argv );
        return runChosen( console );
    } catch ( const CLI::CallForHelp& ) {
        console.out.append( app_.help() );
        return ExitStatus::valid;
    } catch ( const CLI::CallForVersion& version ) {
        console.out.append( std::string( version.what() ) + "\n" );
        return ExitStatus::valid;
    } catch ( const std::exception& error ) { // of the command line, or of the command
        console.complain( error.what() );
        return ExitStatus::trouble;
    }
}

ExitStatus Program::runChosen( Console& console ) {
    for ( Command* command : { static_cast<Command*>( &show_ ), static_cast<Command*>( &check_ ),
                               static_cast<Command*>( &tokens_ ) } )
        if ( command->chosen() )
            return command->run( console );
    throw std::runtime_error( "no command given; see mountprofile --help" );
}

} // namespace

int main( int argc, char** argv ) {
    std::signal( SIGPIPE, SIG_IGN ); // a reader that goes away is reported like any other failed write
    const CapturedErrors capturedErrors;
    Console console;
    ExitStatus status = Program().run( argc, argv, console );
    console.out.flush();
    if ( const int failure = console.out.failure() ) {
        console.complain( std::string( "cannot write to standard output: " ) + std::strerror( failure ) );
        status = ExitStatus::trouble;
    }
    return static_cast<int>( status );
}
