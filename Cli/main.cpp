#include "Cli/CapturedErrors.h"
#include "Cli/CommandCodes.h"
#include "Cli/Program.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>

namespace {

using namespace Corvid::Cli;

ExitStatus runProgram( int argc, char** argv ) {
    const CapturedErrors capturedErrors;
    Console console;
    ExitStatus status = Program().run( argc, argv, console );
    console.out.flush();
    if ( const int failure = console.out.failure() ) {
        console.complain( std::string( "cannot write to standard output: " ) + std::strerror( failure ),
                          systemCode );
        status = ExitStatus::trouble;
    }
    return status;
}

} // namespace

int main( int argc, char** argv ) {
    std::signal( SIGPIPE, SIG_IGN ); // a reader that goes away is reported like any other failed write
    ExitStatus status = ExitStatus::trouble;
    try {
        status = runProgram( argc, argv );
    } catch (
        const std::exception& error ) { // not even the complaint could be made: this one takes no memory
        std::fprintf( stderr, "mountprofile: %s [%s]\n", error.what(), systemCode.data() );
    }
    return static_cast<int>( status );
}
