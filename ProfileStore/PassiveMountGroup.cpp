#include "ProfileStore/PassiveMountGroup.h"

#include "ProfileStore/PassiveAgentProfile.h"

namespace Corvid {

Kiv::Entity* PassiveMountGroup::parent() const {
    return parent_;
}

const Mount* PassiveMountGroup::mountProfile( std::string_view path ) const noexcept {
    const auto found = mountProfile_.find( path );
    return found == mountProfile_.end() ? nullptr : &found->second;
}

void PassiveMountGroup::mountProfileIs( const Mount& mount ) {
    mountProfile_.insert_or_assign( mount.path(), mount );
}

} // namespace Corvid
