#include "Cli/Output.h"

#include <cerrno>
#include <cstdlib>
#include <unistd.h>

namespace Corvid::Cli {

void Output::receive( std::string_view text ) {
    while ( !text.empty() && failure_ == 0 ) {
        const ssize_t written = ::write( descriptor_, text.data(), text.size() );
        if ( written >= 0 )
            text.remove_prefix( static_cast<std::size_t>( written ) );
        else if ( errno != EINTR )
            failure_ = errno;
    }
}

bool Output::isTerminal() const noexcept {
    return ::isatty( descriptor_ ) == 1;
}

bool isCapableTerminal( const Output& output ) {
    const char* terminal = std::getenv( "TERM" );
    return output.isTerminal() && !( terminal && std::string_view( terminal ) == "dumb" );
}

bool mayBeColoured( const Output& output ) {
    const char* noColour = std::getenv( "NO_COLOR" );
    return isCapableTerminal( output ) && ( !noColour || !*noColour );
}

} // namespace Corvid::Cli
