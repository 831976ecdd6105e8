#pragma once

#include "ProfileStore/PassiveMountGroup.h"
#include "ProfileStore/RecognitionError.h"

namespace Corvid {

class PassiveAgentProfileDir;

/// The mount profile of one agent. Member of the directory of profiles. One thread at a time writes to it and
/// to what it holds; once nobody does any more, any number of threads may read it.
class CORVID_API PassiveAgentProfile : public Kiv::Entity {
  public:
    /// Groups by name.
    using MountGroupMap = std::map<Kiv::Name, Kiv::Ptr<PassiveMountGroup>>;
    /// Keys by their place in the title line, from 0.
    using TemplateKeyMap = std::map<unsigned, Kiv::String8>;
    /// Targets, joined by ", ", by alias.
    using AliasKeyMap = std::map<Kiv::String8, Kiv::String8>;

    /// A profile that is no member of a directory yet; directories make their own with `agentProfileIs`.
    explicit PassiveAgentProfile( Kiv::Name name ) noexcept : name_( std::move( name ) ) {}

    [[nodiscard]] Kiv::Name name() const override { return name_; }
    /// The directory; null for a profile that is not, or no longer, a member of one.
    [[nodiscard]] Kiv::Entity* parent() const override;

    /// False when the profile file or its defaults were in error; `errorDesc` then tells which.
    [[nodiscard]] bool validProfile() const noexcept { return validProfile_; }
    void validProfileIs( bool valid ) noexcept { validProfile_ = valid; }
    /// The error of an invalid profile; empty for a valid one.
    [[nodiscard]] const RecognitionError& errorDesc() const noexcept { return errorDesc_; }
    void errorDescIs( const RecognitionError& errorDesc ) { errorDesc_ = errorDesc; }

    /// The mount groups by name.
    [[nodiscard]] const MountGroupMap& mountGroup() const noexcept { return mountGroup_; }
    /// The group of that name, created with the priority when it is absent. One that is there is yielded as
    /// it is, its priority unchanged. Never null.
    Kiv::Ptr<PassiveMountGroup> mountGroupIs( Kiv::Name name, unsigned priority );
    /// Removes the group of that name, if there is one. Who still holds it sees it without a parent.
    void mountGroupDel( const Kiv::Name& name );

    /// The agent's template keys by position, from 0.
    [[nodiscard]] const TemplateKeyMap& templateKey() const noexcept { return templateKey_; }
    void templateKeyIs( unsigned index, Kiv::String8 key ) {
        templateKey_.insert_or_assign( index, std::move( key ) );
    }

    /// Mount flags of the agent's root.
    [[nodiscard]] const Kiv::String8& rootFlags() const noexcept { return rootFlags_; }
    void rootFlagsIs( Kiv::String8 flags ) noexcept { rootFlags_ = std::move( flags ); }

    /// Template keys that stand for others: alias to comma-separated targets.
    [[nodiscard]] const AliasKeyMap& aliasKey() const noexcept { return aliasKey_; }
    void aliasKeyIs( Kiv::String8 key, Kiv::String8 value ) {
        aliasKey_.insert_or_assign( std::move( key ), std::move( value ) );
    }

    /// Whether the file has the statement `hybridMount`.
    [[nodiscard]] bool hybridMount() const noexcept { return hybridMount_; }
    void hybridMountIs( bool hybrid ) noexcept { hybridMount_ = hybrid; }
    /// Whether the file has the statement `lowMountPrio`.
    [[nodiscard]] bool lowMountPrio() const noexcept { return lowMountPrio_; }
    void lowMountPrioIs( bool low ) noexcept { lowMountPrio_ = low; }
    /// Whether the profile goes without the mounts that every agent gets.
    [[nodiscard]] bool noDefaultMountGroup() const noexcept { return noDefaultMountGroup_; }
    void noDefaultMountGroupIs( bool none ) noexcept { noDefaultMountGroup_ = none; }

  protected:
    ~PassiveAgentProfile() override;

  private:
    friend class PassiveAgentProfileDir;

    Kiv::Name name_;
    PassiveAgentProfileDir* parent_ = nullptr;
    bool validProfile_ = true;
    bool hybridMount_ = false;
    bool lowMountPrio_ = false;
    bool noDefaultMountGroup_ = false;
    RecognitionError errorDesc_;
    MountGroupMap mountGroup_;
    TemplateKeyMap templateKey_;
    Kiv::String8 rootFlags_;
    AliasKeyMap aliasKey_;
};

} // namespace Corvid
