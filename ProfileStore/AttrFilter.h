#pragma once

#include "Kiv/String8.h"

#include <utility>

namespace Corvid {

/// One attribute of a mount filter: which attribute, and the key that it is filtered on (may be empty).
class AttrFilter {
  public:
    /// Keeps the texts as they are.
    AttrFilter( Kiv::String8 attrName, Kiv::String8 filterKey ) noexcept
        : attrName_( std::move( attrName ) ), filterKey_( std::move( filterKey ) ) {}

    /// Name of the attribute.
    [[nodiscard]] const Kiv::String8& attrName() const noexcept { return attrName_; }
    /// What its value has to be; empty for any.
    [[nodiscard]] const Kiv::String8& filterKey() const noexcept { return filterKey_; }

    friend bool operator==( const AttrFilter&, const AttrFilter& ) noexcept = default;

  private:
    Kiv::String8 attrName_;
    Kiv::String8 filterKey_;
};

} // namespace Corvid
