#pragma once

#include "Kiv/Entity.h"
#include "ProfileStore/Export.h"
#include "ProfileStore/MountsByPath.h"

#include <map>
#include <vector>

namespace Corvid {

class PassiveAgentProfile;

/// A prioritised set of mounts, maybe waiting on conditions. Member of a profile.
class CORVID_API PassiveMountGroup : public Kiv::Entity {
  public:
    /// Comparisons in the order given.
    using ConditionQueue = std::vector<Kiv::String8>;
    /// By comparison, whether it has to hold.
    using TemplateConditionMap = std::map<Kiv::String8, bool>;

    /// A group that is no member of a profile yet; profiles make their own with `mountGroupIs`.
    PassiveMountGroup( Kiv::Name name, unsigned priority ) noexcept
        : name_( std::move( name ) ), priority_( priority ) {}

    [[nodiscard]] Kiv::Name name() const override { return name_; }
    /// The profile; null for a group that is not, or no longer, a member of one.
    [[nodiscard]] Kiv::Entity* parent() const override;
    /// 1 to 99 for groups of profile files.
    [[nodiscard]] unsigned priority() const noexcept { return priority_; }

    /// The mounts by path, ordered byte-wise.
    [[nodiscard]] const MountsByPath& mountProfile() const noexcept { return mountProfile_; }
    /// The mount at a path, or null. Valid until the group's mounts change.
    [[nodiscard]] const Mount* mountProfile( std::string_view path ) const noexcept {
        return mountProfile_.find( path );
    }
    /// Inserts a mount under its path, or replaces the one that is there.
    void mountProfileIs( const Mount& mount ) { mountProfileIs( Mount( mount ) ); }
    void mountProfileIs( Mount&& mount ) {
        const MountsByPath::Place place = mountPlace( mount.path() );
        mountProfileIs( place, std::move( mount ) );
    }
    /// The same in two steps, for who has to know first what is there: one search serves both.
    [[nodiscard]] MountsByPath::Place mountPlace( std::string_view path ) noexcept {
        return mountProfile_.place( path );
    }
    void mountProfileIs( const MountsByPath::Place& place, Mount&& mount ) {
        mountProfile_.assign( place, std::move( mount ) );
    }

    /// The single conditions, in the order given.
    [[nodiscard]] const ConditionQueue& conditionCol() const noexcept { return conditionCol_; }
    /// Adds a single condition behind the others.
    void conditionColEnq( Kiv::String8 condition ) { conditionCol_.push_back( std::move( condition ) ); }

    /// The whole condition: the conjunction of the single ones; empty when there is none.
    [[nodiscard]] const Kiv::String8& entireCondition() const noexcept { return entireCondition_; }
    void entireConditionIs( Kiv::String8 condition ) noexcept { entireCondition_ = std::move( condition ); }

    /// The conditions on template keys.
    [[nodiscard]] const TemplateConditionMap& templateConditionCol() const noexcept {
        return templateConditionCol_;
    }
    void templateConditionColIs( Kiv::String8 condition, bool value ) {
        templateConditionCol_.insert_or_assign( std::move( condition ), value );
    }

    /// Whether the agent is held up until the condition holds.
    [[nodiscard]] bool blockingConditional() const noexcept { return blockingConditional_; }
    void blockingConditionalIs( bool blocking ) noexcept { blockingConditional_ = blocking; }

  protected:
    ~PassiveMountGroup() override;

  private:
    friend class PassiveAgentProfile;

    Kiv::Name name_;
    unsigned priority_;
    PassiveAgentProfile* parent_ = nullptr;
    MountsByPath mountProfile_;
    ConditionQueue conditionCol_;
    Kiv::String8 entireCondition_;
    TemplateConditionMap templateConditionCol_;
    bool blockingConditional_ = false;
};

} // namespace Corvid
