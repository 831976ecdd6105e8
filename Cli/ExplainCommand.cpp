#include "Cli/ExplainCommand.h"

#include "Cli/ErrorsPage.h"

#include <cctype>
#include <stdexcept>

namespace Corvid::Cli {

namespace {

/// A code as the page spells it, from what a user types: "mp42", "42" and "MP042" are the same.
std::string spelled( const std::string& typed ) {
    std::string digits = typed;
    if ( digits.size() > 2 && std::toupper( static_cast<unsigned char>( digits[0] ) ) == 'M' &&
         std::toupper( static_cast<unsigned char>( digits[1] ) ) == 'P' )
        digits.erase( 0, 2 );
    return "MP" + std::string( digits.size() < 3 ? 3 - digits.size() : 0, '0' ) + digits;
}

} // namespace

ExitStatus ExplainCommand::run( Console& console ) {
    const std::string code = spelled( code_ );
    const auto explanation = explanationOf( code );
    if ( !explanation ) {
        std::string known;
        for ( const std::string& one : knownCodes() )
            known += ( known.empty() ? "" : " " ) + one;
        throw std::runtime_error( "no error has the code " + code_ + "; there are " + known );
    }
    console.out.append( code + "  " + explanation->title + "\n" );
    console.out.append( readable( explanation->body ) );
    return ExitStatus::valid;
}

} // namespace Corvid::Cli
