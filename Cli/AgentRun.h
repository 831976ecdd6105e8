#pragma once

#include "Cli/ExitStatus.h"
#include "Cli/StageOptions.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <memory>
#include <string>

namespace Corvid::Cli {

/// What became of an agent file.
enum class Outcome {
    valid,
    invalid,      ///< there was an error; `errorDesc()` of the handler tells which
    notAgentFile, ///< no error, but no agent title line either: maybe an include file
    unreadable,   ///< the run was given up: a file could not be read
};

/// The name of an outcome in documents.
[[nodiscard]] const char* nameOf( Outcome outcome );
[[nodiscard]] ExitStatus exitStatusFor( Outcome outcome );

/// A handler after its run, with all that the run left behind.
struct AgentRun {
    std::string agentFile;
    Outcome outcome = Outcome::unreadable;
    std::unique_ptr<MountProfileHdlr> handler; ///< null only when the outcome is unreadable
    std::string exception;                     ///< of an unreadable file: the text that the run threw
    std::string reason;                        ///< of an unreadable file: what stands against it, for people
    std::string printed;                       ///< what the run printed on standard error
};

/// Runs one agent file in a directory of profiles of its own. May be called by several threads at once, after
/// Stage was set up.
[[nodiscard]] AgentRun runAgentFile( const Stage& stage, const std::string& agentFile );

/// What stands against reading a file, for people.
/// @param exception the text that the attempt threw: the answer when nothing is to be seen from outside.
[[nodiscard]] std::string whyUnreadable( const std::string& fileName, const std::string& exception );

} // namespace Corvid::Cli
