#include "ProfileStore/PassiveMountGroup.h"

#include "ProfileStore/PassiveAgentProfile.h"

namespace Corvid {

PassiveMountGroup::~PassiveMountGroup() = default;

Kiv::Entity* PassiveMountGroup::parent() const {
    return parent_;
}

} // namespace Corvid
