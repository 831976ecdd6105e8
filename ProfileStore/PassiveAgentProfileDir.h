#pragma once

#include "ProfileStore/PassiveAgentProfile.h"

namespace Corvid {

/// The directory of agent profiles. Not guarded against concurrent use: one thread at a time.
class CORVID_API PassiveAgentProfileDir : public Kiv::Entity {
  public:
    /// Profiles by name.
    using AgentProfileMap = std::map<Kiv::Name, Kiv::Ptr<PassiveAgentProfile>>;

    PassiveAgentProfileDir() noexcept = default;

    /// The profiles by agent name.
    [[nodiscard]] const AgentProfileMap& agentProfile() const noexcept { return agentProfile_; }
    /// The profile of that name, with all that it holds; created when it is absent. Never null.
    Kiv::Ptr<PassiveAgentProfile> agentProfileIs( Kiv::Name name );

  protected:
    ~PassiveAgentProfileDir() override;

  private:
    AgentProfileMap agentProfile_;
};

} // namespace Corvid
