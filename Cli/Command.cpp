#include "Cli/Command.h"

#include "Cli/PrintableText.h"

#include <CLI/CLI.hpp>

namespace Corvid::Cli {

void Console::complain( std::string_view text ) {
    out.flush();
    err.append( "mountprofile: " + printable( text ) + "\n" );
    err.flush();
}

Command::~Command() = default;

bool Command::chosen() const {
    return app_.parsed();
}

} // namespace Corvid::Cli
