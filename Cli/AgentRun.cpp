#include "Cli/AgentRun.h"

#include "Cli/CapturedErrors.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Corvid::Cli {

namespace {

/// Why the library does not open a file; empty when nothing stands against it.
std::string whyNotOpened( const std::string& fileName ) {
    struct stat status {};
    if ( ::stat( fileName.c_str(), &status ) != 0 )
        return std::strerror( errno );
    if ( S_ISDIR( status.st_mode ) )
        return std::strerror( EISDIR );
    if ( !S_ISREG( status.st_mode ) )
        return "Not a regular file";
    const int descriptor = ::open( fileName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK );
    if ( descriptor < 0 )
        return std::strerror( errno );
    ::close( descriptor );
    if ( static_cast<std::size_t>( status.st_size ) > MountProfileHdlr::defaultMaxFileSize )
        return "Larger than " + std::to_string( MountProfileHdlr::defaultMaxFileSize ) + " bytes";
    return {};
}

} // namespace

ExitStatus exitStatusFor( Outcome outcome ) {
    switch ( outcome ) {
    case Outcome::valid:
        return ExitStatus::valid;
    case Outcome::invalid:
    case Outcome::notAgentFile:
        return ExitStatus::invalid;
    case Outcome::unreadable:
        break;
    }
    return ExitStatus::trouble;
}

AgentRun runAgentFile( const Stage& stage, const std::string& agentFile ) {
    const CapturedErrors::Collector errors;
    AgentRun run( agentFile, stage.entityManager, stage.addDefaults );
    try {
        run.run();
    } catch ( const std::exception& exception ) {
        run.exception = exception.what();
    }
    if ( run.outcome == Outcome::unreadable )
        run.reason = whyUnreadable( agentFile, run.exception );
    run.printed = errors.text();
    return run;
}

std::string whyUnreadable( const std::string& fileName, const std::string& exception ) {
    const std::string reason = whyNotOpened( fileName );
    if ( !reason.empty() )
        return reason;
    if ( exception.find( ": runtime error while parsing " ) != std::string::npos )
        return "A file that it includes cannot be read";
    return exception;
}

} // namespace Corvid::Cli
