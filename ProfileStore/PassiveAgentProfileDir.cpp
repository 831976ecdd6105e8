#include "ProfileStore/PassiveAgentProfileDir.h"

namespace Corvid {

PassiveAgentProfileDir::~PassiveAgentProfileDir() {
    for ( const auto& [name, profile] : agentProfile_ )
        profile->parent_ = nullptr; // somebody may hold the profile longer than this directory lives
}

Kiv::Ptr<PassiveAgentProfile> PassiveAgentProfileDir::agentProfileIs( Kiv::Name name ) {
    const auto place = agentProfile_.lower_bound( name );
    if ( place != agentProfile_.end() && place->first == name )
        return place->second;
    Kiv::Ptr<PassiveAgentProfile> profile( new PassiveAgentProfile( name ) );
    profile->parent_ = this;
    agentProfile_.emplace_hint( place, std::move( name ), profile );
    return profile;
}

} // namespace Corvid
