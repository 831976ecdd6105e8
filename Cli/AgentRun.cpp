#include "Cli/AgentRun.h"

#include "Cli/CapturedErrors.h"

namespace Corvid::Cli {

ExitStatus exitStatusFor( Outcome outcome ) {
    switch ( outcome ) {
    case Outcome::valid:
        return ExitStatus::valid;
    case Outcome::invalid:
    case Outcome::notAgentFile:
        return ExitStatus::invalid;
    case Outcome::unreadable:
        break;
    }
    return ExitStatus::trouble;
}

AgentRun runAgentFile( const Stage& stage, const std::string& agentFile, RunObserver* observer,
                       const std::optional<std::string>& text ) {
    const CapturedErrors::Collector errors;
    AgentRun run( agentFile, stage.entityManager, stage.addDefaults );
    run.handler->observerIs( observer );
    run.text = text;
    if ( text )
        run.handler->agentTextIs( *text );
    run.run();
    if ( run.outcome == Outcome::unreadable )
        run.reason = whyUnreadable( run );
    run.printed = errors.text();
    return run;
}

} // namespace Corvid::Cli
