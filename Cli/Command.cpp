#include "Cli/Command.h"

#include "Cli/CommandCodes.h"
#include "Cli/PrintableText.h"

namespace Corvid::Cli {

void Console::complain( std::string_view text, std::string_view code ) {
    out.flush();
    err.append( "mountprofile: " + withoutMiddle( printable( text ) ) + codeMark( code ) + "\n" );
    err.flush();
}

Command::~Command() = default;

} // namespace Corvid::Cli
