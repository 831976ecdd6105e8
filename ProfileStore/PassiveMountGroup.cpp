#include "ProfileStore/PassiveMountGroup.h"

#include "ProfileStore/PassiveAgentProfile.h"

namespace Corvid {

PassiveMountGroup::~PassiveMountGroup() = default;

Kiv::Entity* PassiveMountGroup::parent() const {
    return parent_;
}

const Mount* PassiveMountGroup::mountProfile( std::string_view path ) const noexcept {
    if ( belongsAtEnd( path ) )
        return nullptr;
    const auto found = mountProfile_.find( path );
    return found == mountProfile_.end() ? nullptr : &found->second;
}

void PassiveMountGroup::mountProfileIs( Mount&& mount ) {
    Kiv::String8 path = mount.path();
    if ( belongsAtEnd( path ) )
        mountProfile_.emplace_hint( mountProfile_.end(), std::move( path ), std::move( mount ) );
    else
        mountProfile_.insert_or_assign( std::move( path ), std::move( mount ) );
}

/// People write mounts in order, so most paths go behind all others: one comparison instead of one a level.
bool PassiveMountGroup::belongsAtEnd( std::string_view path ) const noexcept {
    return mountProfile_.empty() || mountProfile_.rbegin()->first < path;
}

} // namespace Corvid
