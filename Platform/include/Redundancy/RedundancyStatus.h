#pragma once

#include "Kiv/Entity.h"

#include <cstdint>

namespace Redundancy {

/// How a pair of cells shares its work. The numbers are part of the contract.
enum class Mode : std::uint32_t { unknown = 0, none = 1, coldStandby = 2, hotStandby = 3 };

/// The entity "redundancy/status" of a cell.
class KIV_API RedundancyStatus : public Kiv::Entity {
  public:
    /// The mode that the configuration asks for.
    [[nodiscard]] virtual Mode configuredMode() const = 0;
    /// The mode that is in force now.
    [[nodiscard]] virtual Mode operationalMode() const = 0;

  protected:
    RedundancyStatus() noexcept = default;
    ~RedundancyStatus() override;
};

} // namespace Redundancy
