#pragma once

#include "ProfileStore/PassiveAgentProfileDir.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

namespace Corvid {

/// What readers are shown of one agent. Never changes once it is published.
struct PublishedProfile {
    /// The newest profile that was valid; null before there was one. It may be read by any number of threads,
    /// as long as this pointer or a copy of it is held.
    std::shared_ptr<const PassiveAgentProfile> profile;
    /// Whether the newest run was valid. Unless it was, `profile` is that of an earlier one.
    bool valid = false;
    /// What was wrong in the newest run; all fields are empty or 0 when it was valid.
    RecognitionError error;
    /// How often the agent has been published, from 1.
    std::uint64_t revision = 0;
};

/// The profiles that a host shows to its readers, by agent name. Every reader sees a profile as one run left
/// it, whole, or the one before it; nobody sees it being filled.
///
/// The writer fills a directory of its own for each run, and publishes it when the run is over:
///
///     const Kiv::Ptr<PassiveAgentProfileDir> apart( new PassiveAgentProfileDir );
///     MountProfileHdlr handler( agentFile, apart, entityManager, true );
///     handler.run();
///     published.publish( apart );
///
/// An invalid profile does not take the place of a valid one, which stays in force with the new error beside
/// it. A run that ended before it knew the agent's name leaves the directory empty, so that publishing it
/// changes nothing: the host, who knows which agent the file was for, calls `errorIs`.
///
/// May be used by several threads at once, if pointers are thread-safe (`KIV_THREAD_SAFE_POINTERS`). Readers
/// wait for no run: only while a pointer is copied.
class CORVID_API PublishedProfiles {
  public:
    /// What a reader holds: it stays as it is, whatever is published meanwhile.
    using Reading = std::shared_ptr<const PublishedProfile>;

    PublishedProfiles() = default;
    PublishedProfiles( const PublishedProfiles& ) = delete;
    PublishedProfiles& operator=( const PublishedProfiles& ) = delete;
    ~PublishedProfiles();

    /// Publishes the profiles of a directory, each of them by itself.
    /// @param filled by runs that are over. Nobody changes it, or what it holds, from here on.
    /// @throws std::bad_alloc; what was published of the other agents by then stays so.
    void publish( const Kiv::Ptr<PassiveAgentProfileDir>& filled );
    /// Publishes that an agent's newest run was invalid for this reason. The profile stays as it is.
    /// @throws std::bad_alloc, and then nothing has changed.
    void errorIs( const Kiv::Name& agent, const RecognitionError& error );
    /// Shows no profile of that agent any more. Who has read it keeps it.
    void agentDel( const Kiv::Name& agent );

    /// What is published of an agent; null when that is nothing.
    [[nodiscard]] Reading agent( const Kiv::Name& name ) const;
    /// What is published of all agents.
    /// @throws std::bad_alloc
    [[nodiscard]] std::map<Kiv::Name, Reading> agents() const;

  private:
    void put( const Kiv::Name& agent, std::shared_ptr<const PassiveAgentProfile> profile,
              const RecognitionError& error );

    mutable std::mutex mutex_;
    std::map<Kiv::Name, Reading> agents_;
};

} // namespace Corvid
