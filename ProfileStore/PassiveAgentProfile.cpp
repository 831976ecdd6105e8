#include "ProfileStore/PassiveAgentProfile.h"

#include "ProfileStore/PassiveAgentProfileDir.h"

namespace Corvid {

PassiveAgentProfile::~PassiveAgentProfile() {
    for ( const auto& [name, group] : mountGroup_ )
        group->parent_ = nullptr; // somebody may hold the group longer than this profile lives
}

Kiv::Entity* PassiveAgentProfile::parent() const {
    return parent_;
}

Kiv::Ptr<PassiveMountGroup> PassiveAgentProfile::mountGroupIs( Kiv::Name name, unsigned priority ) {
    const auto place = mountGroup_.lower_bound( name );
    if ( place != mountGroup_.end() && place->first == name )
        return place->second;
    Kiv::Ptr<PassiveMountGroup> group( new PassiveMountGroup( name, priority ) );
    group->parent_ = this;
    mountGroup_.emplace_hint( place, std::move( name ), group );
    return group;
}

void PassiveAgentProfile::mountGroupDel( const Kiv::Name& name ) {
    const auto found = mountGroup_.find( name );
    if ( found == mountGroup_.end() )
        return;
    found->second->parent_ = nullptr;
    mountGroup_.erase( found );
}

} // namespace Corvid
