#pragma once

#include "Cli/ExitStatus.h"
#include "Cli/StageOptions.h"
#include "ProfileDocument/HandlerRun.h"

#include <optional>
#include <string>

namespace Corvid::Cli {

[[nodiscard]] ExitStatus exitStatusFor( Outcome outcome );

/// A handler after its run, with all that people are told of it.
struct AgentRun : HandlerRun {
    using HandlerRun::HandlerRun;

    std::string reason;              ///< of an unreadable file: what stands against it, for people
    std::string printed;             ///< what the run printed on standard error
    std::optional<std::string> text; ///< of the agent file, if it was not read from there
};

/// Runs one agent file in a directory of profiles of its own. May be called by several threads at once, after
/// Stage was set up.
/// @param observer is told what happens in the run; or null.
/// @param text is taken for the text of the agent file, if given.
[[nodiscard]] AgentRun runAgentFile( const Stage& stage, const std::string& agentFile,
                                     RunObserver* observer = nullptr,
                                     const std::optional<std::string>& text = {} );

} // namespace Corvid::Cli
