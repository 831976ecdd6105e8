#pragma once

#include "Kiv/Entity.h"

namespace Corvid {

/// The manager of one system's entities.
class KIV_API EntityManager : public Kiv::Entity {
  public:
    /// The system's name: the first component of the absolute paths of its entities.
    [[nodiscard]] virtual Kiv::String8 systemName() const = 0;
    /// Whether the system runs by itself, without a peer cell.
    [[nodiscard]] virtual bool standalone() const = 0;

  protected:
    EntityManager() noexcept = default;
    ~EntityManager() override;
};

} // namespace Corvid
