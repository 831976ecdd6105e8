#include "Brae/Glob.h"
#include "ProfileDocument/HandlerRun.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace Corvid {

namespace {

/// The error that reading a file to its end meets, or 0.
int readError( int descriptor ) {
    char part[1 << 12];
    ssize_t count = 0;
    do
        count = ::read( descriptor, part, sizeof part );
    while ( count > 0 || ( count < 0 && errno == EINTR ) );
    return count < 0 ? errno : 0;
}

/// Why the library does not open a file; empty when nothing stands against it.
std::string whyNotOpened( const std::string& fileName, std::size_t maxFileSize ) {
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
    const bool isTooLarge = static_cast<std::size_t>( status.st_size ) > maxFileSize;
    const int error = isTooLarge ? 0 : readError( descriptor );
    ::close( descriptor );
    if ( isTooLarge )
        return "Larger than " + std::to_string( maxFileSize ) + " bytes";
    return error ? std::strerror( error ) : std::string();
}

/// The include file that an error is about, found again; the pattern, if there are other files now.
std::string includedFile( const std::string& agentFile, const ErrorDetails& details ) {
    const std::string pattern = agentFile.substr( 0, agentFile.rfind( '/' ) + 1 ) + details.includePattern;
    std::vector<std::string> matches;
    const bool isFound = Brae::getGlobResult( pattern, matches ) && matches.size() == details.includeMatches;
    return isFound ? matches[details.includeMatch - 1] : pattern;
}

} // namespace

std::string whyUnreadable( const std::string& fileName, const std::string& exception,
                           std::size_t maxFileSize ) {
    const std::string reason = whyNotOpened( fileName, maxFileSize );
    return reason.empty() ? exception : reason;
}

std::string whyUnreadable( const HandlerRun& run ) {
    const ErrorDetails& details = run.handler->errorDetails();
    const std::size_t limit = run.handler->maxFileSize();
    if ( details.includeLine == 0 )
        return whyUnreadable( run.agentFile, run.exception, limit );
    const std::string line = ", included in line " + std::to_string( details.includeLine ) + ": ";
    if ( details.includeMatches == 0 )
        return details.includePattern + line + "The configured paths are not known";
    const std::string name = includedFile( run.agentFile, details );
    if ( run.handler->includedFiles() > run.handler->maxIncludedFiles() )
        return name + line + "More than " + std::to_string( run.handler->maxIncludedFiles() ) +
               " include files";
    return name + line + whyUnreadable( name, "It cannot be read", limit );
}

} // namespace Corvid
