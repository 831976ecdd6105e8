#include "Loaders.h"

#include "ProfileParser/MountProfileHdlr.h"

#include <limits>
#include <stdexcept>

namespace Bench {

namespace {

/// The records of the handler: those of one profile.
class LoadedProfile : public LoadedMounts {
  public:
    explicit LoadedProfile( Kiv::Ptr<Corvid::PassiveAgentProfileDir> profiles )
        : profiles_( std::move( profiles ) ) {}

    void visit( const MountVisitor& visitor ) const override {
        for ( const auto& [agent, profile] : profiles_->agentProfile() )
            for ( const auto& [name, group] : profile->mountGroup() )
                for ( const Corvid::Mount& mount : group->mountProfile() )
                    visitor( mount.path(), mount.type(), mount.flags() );
    }

  private:
    Kiv::Ptr<Corvid::PassiveAgentProfileDir> profiles_;
};

Loaded load( const std::string& fileName, bool plainTokens ) {
    Kiv::Ptr<Corvid::PassiveAgentProfileDir> profiles( new Corvid::PassiveAgentProfileDir );
    // Without the defaults: the peers have nothing of the kind.
    Corvid::MountProfileHdlr hdlr( fileName, profiles, nullptr, false );
    hdlr.maxFileSizeIs( std::numeric_limits<std::uint32_t>::max() / 2 );
    hdlr.plainTokensIs( plainTokens );
    hdlr.run();
    if ( !hdlr.validProfileFile() )
        throw std::runtime_error( fileName + " is not valid" );
    return std::make_unique<LoadedProfile>( std::move( profiles ) );
}

} // namespace

Loaded loadWithHandler( const std::string& fileName ) {
    return load( fileName, false );
}

Loaded loadWithPlainTokens( const std::string& fileName ) {
    return load( fileName, true );
}

} // namespace Bench
