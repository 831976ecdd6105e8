#include "ProfileDocument/HandlerRun.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Corvid {

namespace {

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
    ::close( descriptor );
    if ( static_cast<std::size_t>( status.st_size ) > maxFileSize )
        return "Larger than " + std::to_string( maxFileSize ) + " bytes";
    return {};
}

} // namespace

std::string whyUnreadable( const std::string& fileName, const std::string& exception,
                           std::size_t maxFileSize ) {
    const std::string reason = whyNotOpened( fileName, maxFileSize );
    if ( !reason.empty() )
        return reason;
    if ( exception.find( ": runtime error while parsing " ) != std::string::npos )
        return "A file that it includes cannot be read";
    return exception;
}

} // namespace Corvid
