#include "Cli/LiteralArguments.h"

#include <algorithm>

namespace Corvid::Cli {

std::vector<std::string> literalArguments( int argc, const char* const* argv ) {
    std::vector<std::string> arguments( argv + std::min( argc, 1 ), argv + argc );
    for ( std::string& argument : arguments )
        if ( argument.ends_with( ']' ) || ( argument.starts_with( "--" ) && argument.ends_with( '=' ) ) )
            argument += '\0';
    std::ranges::reverse( arguments );
    return arguments;
}

std::string withoutMarks( std::string text ) {
    std::erase( text, '\0' );
    return text;
}

} // namespace Corvid::Cli
