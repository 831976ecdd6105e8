#include "Cli/Diagnostics.h"

#include "Cli/CommandCodes.h"
#include "Cli/PrintableText.h"
#include "Cli/SourceExcerpt.h"

namespace Corvid::Cli {

namespace {

std::string codeNote( std::string_view code ) {
    return "      = " + std::string( code ) + ": 'mountprofile explain " + std::string( code ) +
           "' tells more\n";
}

} // namespace

std::string diagnosticsOf( const AgentRun& run, bool coloured ) {
    std::string text = withoutMiddle( run.printed );
    switch ( run.outcome ) {
    case Outcome::valid:
        break;
    case Outcome::invalid:
        text += sourceExcerpt( run.handler->errorDesc(), coloured );
        text += codeNote( run.handler->errorDetails().code );
        break;
    case Outcome::notAgentFile:
        text += "mountprofile: " + printable( run.agentFile ) + ": " + whyNotAgentFile +
                codeMark( notAgentFileCode ) + "\n";
        break;
    case Outcome::unreadable:
        text += "mountprofile: " + printable( run.agentFile + ": " + run.reason ) +
                codeMark( unreadableCode ) + "\n";
        break;
    }
    return text;
}

} // namespace Corvid::Cli
