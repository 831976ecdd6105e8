#include "Cli/CapturedErrors.h"
#include "Cli/Program.h"

#include <csignal>
#include <cstring>

int main( int argc, char** argv ) {
    using namespace Corvid::Cli;

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
