#include "model/ModelBuilder.h"

#include <cstdlib>
#include <utility>

namespace Model {

void Builder::registerMountFilter( const std::string& name ) {
    if ( filters_.contains( name ) ) {
        check( false, "Mount filter '" + name + "' is already declared" );
        return;
    }
    filters_[name].enabled = true;
    lastFilter_ = name;
}

void Builder::addAttrFilter( const std::string& attribute, const std::string& key ) {
    filters_.at( lastFilter_ ).keys[attribute] = key;
}

void Builder::addMount( const std::string& path, const std::string& type, const std::string& flags,
                        const std::string& filter ) {
    std::string plain = path;
    if ( !plain.empty() && plain.front() == '/' )
        plain.erase( 0, 1 );
    if ( !plain.empty() && plain.back() == '/' )
        plain.pop_back();
    if ( !validateFlags( flags ) )
        return;
    MountRecord mount{ type, flags, {} };
    if ( const auto found = group_->mounts.find( plain ); found != group_->mounts.end() ) {
        if ( found->second.type != type ) {
            check( false, "Path " + plain + " is already present with type: " + found->second.type +
                              ". Mismatched type: " + type );
            return;
        }
        mount.flags = found->second.flags;
        for ( const char flag : flags )
            if ( mount.flags.find( flag ) == std::string::npos )
                mount.flags += flag;
    }
    if ( !filter.empty() ) {
        if ( !filters_.contains( filter ) ) {
            check( false, "No mount filter with name '" + filter + "' defined before this line." );
            return;
        }
        mount.filter = filters_.at( filter );
    }
    group_->mounts[plain] = mount;
}

std::string Builder::cellPath( const std::string& relative, std::uint32_t cell ) const {
    const std::uint32_t actual = cell == 0 ? input_.cell : cell;
    return actual == 0 ? relative : "cell/" + std::to_string( actual ) + '/' + relative;
}

std::uint32_t Builder::activeCell() const {
    if ( input_.activeCell )
        return static_cast<std::uint32_t>( std::strtol( input_.activeCell->c_str(), nullptr, 10 ) );
    return 3 - input_.cell;
}

bool Builder::hasPeer() const {
    return input_.system && !input_.standalone && input_.configuredMode == 3 && input_.operationalMode == 3;
}

void Builder::addDefaultMount( const std::string& path, const std::string& type, const std::string& flags ) {
    addMount( path, type, flags, {} );
}

void Builder::addDefaults() {
    addMountGroup( "default", 1 );
    addDefaultMount( "logging/config", "Kiv::LogConfig", "r" );
    addDefaultMount( "logging/status", "Kiv::LogStatus", "r" );
    addDefaultMount( cellPath( "Corvid/localStatus", 0 ), "Redundancy::LocalCellStatus", "r" );
    addDefaultMount( cellPath( "redundancySupport/status", 0 ), "Redundancy::RedundancySupportStatus", "r" );
    addDefaultMount( cellPath( "redundancy/status", 0 ), "Redundancy::RedundancyStatus", "r" );
    addDefaultMount( "Corvid/status", "Corvid::Status", "r" );
    addDefaultMount( "agent/config", "Agent::GlobalConfigDir", "r" );
    std::vector<std::string> agents = out_.subAgents;
    if ( agents.empty() )
        agents.emplace_back( "%agentString" );
    for ( const std::string& agent : agents ) {
        addDefaultMount( cellPath( "agent/config/", 0 ) + agent, "Agent::Config", "wfc" );
        addDefaultMount( cellPath( "agent/status/", 0 ) + agent, "Agent::Status", "wfc" );
        if ( !out_.subAgents.empty() )
            addPeer( agent, false );
    }
    addPeer( "%agentString", !input_.chroot || input_.waitForReady );
}

void Builder::addPeer( const std::string& agent, bool waits ) {
    if ( !hasPeer() )
        return;
    const std::uint32_t cell = activeCell();
    addDefaultMount( cellPath( "agent/status/", cell ) + agent, "Agent::Status", "rD" );
    if ( waits )
        addPeerReadyGroup( agent, cell );
}

void Builder::addPeerReadyGroup( const std::string& agent, std::uint32_t cell ) {
    addMountGroup( "peerReady", 2 );
    const std::string cells =
        "/%sysname/Corvid/cell/" + std::to_string( static_cast<std::int32_t>( cell ) ) + "/agent/status";
    const std::string there = agent + " in " + cells + ".entryState";
    const std::string ready = "true == " + cells + '/' + agent + ".ready";
    const std::string both = there + " and " + ready;
    if ( group_->entireCondition == both )
        return;
    group_->entireCondition = both;
    group_->blocking = true;
    group_->conditions.push_back( there );
    group_->conditions.push_back( ready );
}

void Builder::addConfiguredMounts() {
    trace( "1 adding all config mount paths" );
    std::map<std::string, const ConfiguredPath*> recorded;
    for ( const auto& configured : input_.configRoot )
        recorded[configured.path] = &configured;
    for ( const auto& [path, type, flags] : input_.configRoot ) {
        const ConfiguredPath& record = *recorded.at( path );
        addMount( path, record.type, record.flags.find( 'i' ) == std::string::npos ? "w" : "wi", {} );
    }
}

} // namespace Model
