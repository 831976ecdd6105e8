#pragma once

#include "Brae/PathTrie.h"
#include "Kiv/Entity.h"

#include <vector>

namespace Corvid {

/// The entity "Corvid/configRoot": which paths hold configuration.
class KIV_API ConfigRoot : public Kiv::Entity {
  public:
    /// Whether every root of the configuration has been loaded.
    [[nodiscard]] virtual bool rootsComplete() const = 0;
    /// The configured paths, in the platform's order; valid as long as the entity does not change.
    [[nodiscard]] virtual const std::vector<Kiv::String8>& configuredPaths() const = 0;
    /// Types and flags of the configured paths; lives as long as this entity.
    [[nodiscard]] virtual const Brae::PathTrie& pathTrie() const = 0;

  protected:
    ConfigRoot() noexcept = default;
    ~ConfigRoot() override;
};

} // namespace Corvid
