#include "Cli/StandardInput.h"

#include "ProfileParser/MountProfileHdlr.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace Corvid::Cli {

StandardInput readStandardInput() {
    constexpr std::size_t limit = MountProfileHdlr::defaultMaxFileSize;
    StandardInput input;
    std::array<char, 65536> part;
    for ( ;; ) {
        const ssize_t count = ::read( STDIN_FILENO, part.data(), part.size() );
        if ( count == 0 )
            return input;
        if ( count < 0 && errno == EINTR )
            continue;
        if ( count < 0 )
            return { {}, std::strerror( errno ) };
        input.text.append( part.data(), static_cast<std::size_t>( count ) );
        if ( input.text.size() > limit )
            return { {}, "Larger than " + std::to_string( limit ) + " bytes" };
    }
}

} // namespace Corvid::Cli
