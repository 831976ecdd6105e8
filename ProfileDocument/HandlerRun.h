#pragma once

#include "Corvid/EntityManager.h"
#include "Kiv/Ptr.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <cstddef>
#include <memory>
#include <string>

namespace Corvid {

/// What became of an agent file.
enum class Outcome {
    valid,
    invalid,      ///< there was an error; `errorDesc()` of the handler tells which
    notAgentFile, ///< no error, but no agent title line either: maybe an include file
    unreadable,   ///< the run was given up: a file could not be read
};

/// The name of an outcome in documents.
[[nodiscard]] const char* nameOf( Outcome outcome );

/// A handler with a directory of profiles of its own, and what its run left behind.
struct HandlerRun {
    std::string agentFile;
    Outcome outcome = Outcome::unreadable;
    std::unique_ptr<MountProfileHdlr> handler; ///< null only when the outcome is unreadable
    std::string exception;                     ///< of an unreadable file: the text that the run threw

    HandlerRun() = default;
    HandlerRun( std::string agentFile, Kiv::Ptr<const EntityManager> entityManager, bool addDefaults );

    /// Runs the handler, once. What the run throws is kept as `exception`.
    /// @throws std::bad_alloc
    void run();
};

// The codes of what is wrong with a file as a whole; see ErrorDetails.h for those of its content.
inline constexpr char unreadableCode[] = "MP090";
inline constexpr char notAgentFileCode[] = "MP091";

/// What is said of a file without an agent title line.
inline constexpr char whyNotAgentFile[] =
    "not an agent file: it does not begin with an agent title line (agentName: NAME)";

/// What stands against reading a file, for people.
/// @param exception the text that the attempt threw: the answer when nothing is to be seen from outside.
/// @param maxFileSize what the handler that tried took, in bytes.
[[nodiscard]] std::string whyUnreadable( const std::string& fileName, const std::string& exception,
                                         std::size_t maxFileSize = MountProfileHdlr::defaultMaxFileSize );
/// The same for an unreadable run. When what cannot be read is a file that the agent file includes, or are
/// the configured paths that stand in for it, its name and the line come first.
[[nodiscard]] std::string whyUnreadable( const HandlerRun& run );

} // namespace Corvid
