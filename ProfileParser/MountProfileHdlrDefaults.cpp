// The mounts that every agent gets beside those of its profile file.

#include "Cell/Cell.h"
#include "Corvid/ConfigRoot.h"
#include "Kiv/Format.h"
#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/MountProfileHdlr.h"
#include "Redundancy/RedundancyStatus.h"

#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace Corvid {

namespace {

constexpr char ownAgent[] = "%agentString"; // the profile's consumer puts the agent's name in its place
constexpr std::uint32_t ownCell = 0;

std::string cellPath( const char* relativePath, std::uint32_t cell = ownCell ) {
    return Cell::path( relativePath, cell ).str();
}

Kiv::Ptr<Kiv::Entity> corvidEntity( const EntityManager& manager, const Kiv::String8& relativePath ) {
    return Kiv::globalDir()->entity( "/" + manager.systemName().str() + "/Corvid/" + relativePath.str() );
}

/// Null without an entity manager, too.
Kiv::Ptr<const ConfigRoot> configRootOf( const EntityManager* manager ) {
    if ( !manager )
        return nullptr;
    return Kiv::dynamicCast<const ConfigRoot>( corvidEntity( *manager, "Corvid/configRoot" ) );
}

/// Whether this cell works in hot standby with a peer cell.
bool peerRedundancyOf( const EntityManager& manager ) {
    const auto redundancyStatus = Kiv::dynamicCast<const Redundancy::RedundancyStatus>(
        corvidEntity( manager, Cell::path( "redundancy/status", ownCell ) ) );
    HDLR_ASSERT( redundancyStatus, "redundancyStatus" );
    return !manager.standalone() && redundancyStatus->configuredMode() == Redundancy::Mode::hotStandby &&
           redundancyStatus->operationalMode() == Redundancy::Mode::hotStandby;
}

/// An agent on a real system waits for its peer; one in a test root only on request.
bool waitsForReadyPeer() {
    return !std::getenv( "K7_CHROOT" ) || std::getenv( "AGENT_WAIT_FOR_READY" );
}

} // namespace

void MountProfileHdlr::addDefaultProfiles() {
    HDLR_TRACE( 8, "void Corvid::MountProfileHdlr::addDefaultProfiles()" );
    addMountGroup( "default", 1 );
    addMount( "logging/config", "Kiv::LogConfig", "r", "" );
    addMount( "logging/status", "Kiv::LogStatus", "r", "" );
    addMount( cellPath( "Corvid/localStatus" ), "Redundancy::LocalCellStatus", "r", "" );
    addMount( cellPath( "redundancySupport/status" ), "Redundancy::RedundancySupportStatus", "r", "" );
    addMount( cellPath( "redundancy/status" ), "Redundancy::RedundancyStatus", "r", "" );
    addMount( "Corvid/status", "Corvid::Status", "r", "" );
    addMount( "agent/config", "Agent::GlobalConfigDir", "r", "" );

    const bool peerRedundancy = entityManager_ && peerRedundancyOf( *entityManager_ );
    const bool waitForReady = entityManager_ && waitsForReadyPeer();
    // The platform may tell a path from a directory, to which the name of a sub-agent is added afterwards.
    if ( subAgents_.empty() ) {
        addMount( cellPath( "agent/config/%agentString" ), "Agent::Config", "wfc", "" );
        addMount( cellPath( "agent/status/%agentString" ), "Agent::Status", "wfc", "" );
    }
    for ( const std::string& subAgent : subAgents_ ) {
        addMount( cellPath( "agent/config/" ) + subAgent, "Agent::Config", "wfc", "" );
        addMount( cellPath( "agent/status/" ) + subAgent, "Agent::Status", "wfc", "" );
        addPeerReady( subAgent, peerRedundancy, false );
    }
    addPeerReady( ownAgent, peerRedundancy, waitForReady );
}

void MountProfileHdlr::addPeerReady( const std::string& agent, bool peerRedundancy, bool waitForReady ) {
    if ( !peerRedundancy )
        return;
    HDLR_TRACE( 8, "void Corvid::MountProfileHdlr::addPeerReady(const string&, bool, bool)" );
    const std::uint32_t cell = activeCellId();
    addMount( cellPath( "agent/status/", cell ) + agent, "Agent::Status", "rD", "" );
    if ( !waitForReady )
        return;

    addMountGroup( "peerReady", 2 );
    const std::string agentStatus =
        "/%sysname/Corvid/" + Kiv::format( "cell/%d/", cell ).str() + "agent/status";
    const std::string exists = agent + " in " + agentStatus + ".entryState";
    const std::string isReady = "true == " + agentStatus + "/" + agent + ".ready";
    const std::string whole = exists + " and " + isReady;
    HDLR_ASSERT( currMg_, R"(currMg && "currMg is NULL.")" );
    if ( currMg_->entireCondition() == whole )
        return;
    setEntireCondition( whole );
    setBlockingConditional( true );
    addCondition( exists );
    addCondition( isReady );
}

void MountProfileHdlr::addConfigMountProfile() {
    HDLR_TRACE( 8, "void Corvid::MountProfileHdlr::addConfigMountProfile()" );
    HDLR_TRACE( 1, "adding all config mount paths" );
    const auto configRoot = configRootOf( entityManager_.get() );
    if ( missingDatabaseThrows_ && !( configRoot && configRoot->rootsComplete() ) )
        throw std::runtime_error( "The configured paths are not known." );
    HDLR_ASSERT( entityManager_, R"(entityManager && "entityManager is NULL.")" );
    HDLR_ASSERT( configRoot, R"(configRoot && "configRoot is not found.")" );
    HDLR_ASSERT( configRoot->rootsComplete(), "configRoot->rootsComplete()" );
    const Brae::PathTrie& trie = configRoot->pathTrie();
    mountingConfiguredPaths_ = true;
    for ( const Kiv::String8& path : configRoot->configuredPaths() ) {
        const bool isInitial = trie.prefixFlags( path ).view().find( 'i' ) != std::string_view::npos;
        addMount( path.str(), trie.prefixTypename( path ).str(), isInitial ? "wi" : "w", "" );
    }
    mountingConfiguredPaths_ = false;
}

std::uint32_t activeCellId() {
    if ( const char* environment = std::getenv( "ACTIVE_CELLID" ) )
        return static_cast<std::uint32_t>( std::strtol( environment, nullptr, 10 ) );
    const std::uint32_t cellId = Cell::cellId();
    HDLR_ASSERT( cellId < 3, "cellId < 3" );
    return 3 - cellId;
}

} // namespace Corvid
