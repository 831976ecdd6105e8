#include "ProfileDocument/HandlerRun.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

} // namespace

std::string whyUnreadable( const std::string& fileName, const std::string& exception,
                           std::size_t maxFileSize ) {
    std::string reason = whyNotOpened( fileName, maxFileSize );
    if ( !reason.empty() )
        return reason;
    if ( exception.find( ": runtime error while parsing " ) != std::string::npos )
        return "A file that it includes cannot be read";
    return exception;
}

} // namespace Corvid
