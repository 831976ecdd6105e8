#pragma once

#include "ProfileStore/MountFilter.h"

namespace Corvid {

/// One mount: which path, the type of the entity there, and how it may be accessed. A value.
class Mount {
  public:
    /// A mount without a filter. The texts are kept as they are.
    Mount( Kiv::String8 path, Kiv::String8 type, Kiv::String8 flags ) noexcept
        : path_( std::move( path ) ), type_( std::move( type ) ), flags_( std::move( flags ) ) {}

    /// The normalised path; the key within a mount group.
    [[nodiscard]] const Kiv::String8& path() const noexcept { return path_; }
    /// The type name of the mounted entity, for example "Agent::Config".
    [[nodiscard]] const Kiv::String8& type() const noexcept { return type_; }
    /// Mount flags, one character each, in the order in which they were given.
    [[nodiscard]] const Kiv::String8& flags() const noexcept { return flags_; }
    /// Which of the entity's content is mounted; not enabled for all of it.
    [[nodiscard]] const MountFilter& mountFilter() const noexcept { return mountFilter_; }
    void mountFilterIs( MountFilter mountFilter ) noexcept { mountFilter_ = std::move( mountFilter ); }

    friend bool operator==( const Mount&, const Mount& ) = default;

  private:
    Kiv::String8 path_;
    Kiv::String8 type_;
    Kiv::String8 flags_;
    MountFilter mountFilter_;
};

} // namespace Corvid
