#include "ProfileStore/PublishedProfiles.h"

#include <utility>

namespace Corvid {

PublishedProfiles::~PublishedProfiles() = default;

void PublishedProfiles::publish( const Kiv::Ptr<PassiveAgentProfileDir>& filled ) {
    // Profiles know their directory, so it lives as long as one of them is read.
    const auto owner = std::make_shared<const Kiv::Ptr<PassiveAgentProfileDir>>( filled );
    for ( const auto& [name, profile] : filled->agentProfile() )
        if ( profile->validProfile() )
            put( name, { owner, profile.get() }, {} );
        else
            put( name, nullptr, profile->errorDesc() );
}

void PublishedProfiles::errorIs( const Kiv::Name& agent, const RecognitionError& error ) {
    put( agent, nullptr, error );
}

/// @param profile to be put in force; null leaves the one that is, because the newest run was invalid.
void PublishedProfiles::put( const Kiv::Name& agent, std::shared_ptr<const PassiveAgentProfile> profile,
                             const RecognitionError& error ) {
    const auto next = std::make_shared<PublishedProfile>();
    next->valid = profile != nullptr;
    next->profile = std::move( profile );
    next->error = error;
    Reading before; // let go of when nobody waits any more: a whole profile may go with it
    const std::lock_guard lock( mutex_ );
    Reading& published = agents_[agent];
    next->revision = published ? published->revision + 1 : 1;
    if ( !next->profile && published )
        next->profile = published->profile;
    before = std::exchange( published, next );
}

void PublishedProfiles::agentDel( const Kiv::Name& agent ) {
    Reading before;
    const std::lock_guard lock( mutex_ );
    const auto found = agents_.find( agent );
    if ( found == agents_.end() )
        return;
    before = std::move( found->second );
    agents_.erase( found );
}

PublishedProfiles::Reading PublishedProfiles::agent( const Kiv::Name& name ) const {
    const std::lock_guard lock( mutex_ );
    const auto found = agents_.find( name );
    return found == agents_.end() ? nullptr : found->second;
}

std::map<Kiv::Name, PublishedProfiles::Reading> PublishedProfiles::agents() const {
    const std::lock_guard lock( mutex_ );
    return agents_;
}

} // namespace Corvid
