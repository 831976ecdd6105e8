#include "Cli/Program.h"

#include "Cli/CommandCodes.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>

namespace Corvid::Cli {

Program::Program() {
    app_.set_help_all_flag( "" );
    app_.set_version_flag( "--version", "mountprofile " MOUNTPROFILE_VERSION, "Print the version and exit" );
    app_.require_subcommand( 0, 1 ); // none is told in our own words, see runChosen()
    app_.footer( "Every command has --help.\n\n"
                 "Examples:\n"
                 "  mountprofile show profiles/Fan\n"
                 "  mountprofile check profiles\n"
                 "  mountprofile why profiles/Fan /hardware/fan/%chassis/%slot\n"
                 "  mountprofile tokens profiles/Fan\n"
                 "  mountprofile explain MP042" );
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
    } catch ( const std::bad_alloc& ) {
        console.out.discard();
        console.complain( std::strerror( ENOMEM ) );
    } catch ( const std::runtime_error& error ) { // of the command line, or of the command
        console.out.discard();
        console.complain( error.what(), usageCode );
    } catch ( const std::exception& error ) {
        console.out.discard();
        console.complain( error.what() );
    }
    return ExitStatus::trouble;
}

ExitStatus Program::runChosen( Console& console ) {
    for ( Command* command :
          { static_cast<Command*>( &show_ ), static_cast<Command*>( &check_ ), static_cast<Command*>( &why_ ),
            static_cast<Command*>( &tokens_ ), static_cast<Command*>( &explain_ ) } )
        if ( command->chosen() )
            return command->run( console );
    throw std::runtime_error( "no command given; see mountprofile --help" );
}

} // namespace Corvid::Cli
