#include "Cli/Diagnostics.h"

#include "Cli/PrintableText.h"
#include "Cli/SourceExcerpt.h"

namespace Corvid::Cli {

std::string diagnosticsOf( const AgentRun& run, bool coloured ) {
    std::string text = run.printed;
    switch ( run.outcome ) {
    case Outcome::valid:
        break;
    case Outcome::invalid:
        text += sourceExcerpt( run.handler->errorDesc(), coloured );
        break;
    case Outcome::notAgentFile:
        text += "mountprofile: " + printable( run.agentFile ) +
                ": not an agent file: it does not begin with an agent title line (agentName: NAME)\n";
        break;
    case Outcome::unreadable:
        text += "mountprofile: " + printable( run.agentFile + ": " + run.reason ) + "\n";
        break;
    }
    return text;
}

} // namespace Corvid::Cli
