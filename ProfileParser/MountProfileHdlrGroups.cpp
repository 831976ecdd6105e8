// The agent, its template keys and switches, mount groups and their conditions.

#include "ProfileParser/FlagSet.h"
#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Corvid {

namespace {

constexpr std::array<std::string_view, 6> predefinedTemplateKeys{
    "%cellId", "%cellPath", "%peerCellId", "%peerCellPath", "%sysname", "%agentString" };

constexpr unsigned highestPriority = 99;
constexpr char implicitGroupName[] = "all";
constexpr char defaultGroupName[] = "default";

} // namespace

void MountProfileHdlr::agentProfileIs( const std::string& name ) {
    HDLR_ASSERT( root_, R"(root && "root is NULL.")" );
    agentProfile_ = root_->agentProfileIs( Kiv::Name( name ) );
    agentName_ = name;
    if ( observer_ )
        observer_->agentStatement( AgentStatement::agentName, name, statementOrigin() );
}

void MountProfileHdlr::addTemplateKeys( const std::vector<std::string>& keys ) {
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "agentProfile is not created yet.")" );
    for ( std::size_t i = 0; i < keys.size(); ++i )
        agentProfile_->templateKeyIs( static_cast<unsigned>( i ), Kiv::String8( keys[i] ) );
    if ( !observer_ )
        return;
    const Origin origin = statementOrigin();
    for ( const std::string& key : keys )
        observer_->agentStatement( AgentStatement::templateKey, key, origin );
}

void MountProfileHdlr::registerTemplateKeyDecl( const std::string& key ) {
    templateKeyDecls_.insert( key );
}

std::vector<std::string> MountProfileHdlr::knownTemplateKeys() const {
    std::vector<std::string> keys( templateKeyDecls_.begin(), templateKeyDecls_.end() );
    keys.insert( keys.end(), predefinedTemplateKeys.begin(), predefinedTemplateKeys.end() );
    std::ranges::sort( keys );
    return keys;
}

bool MountProfileHdlr::validateTemplateKey( const std::string& key ) {
    if ( std::ranges::find( predefinedTemplateKeys, key ) != predefinedTemplateKeys.end() ||
         templateKeyDecls_.contains( key ) )
        return true;
    constructHdlrException( "Reference to undeclared template key " + key, key );
    return false;
}

void MountProfileHdlr::setHybridMount( bool flag ) {
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "agentProfile is not created yet.")" );
    agentProfile_->hybridMountIs( flag );
    if ( observer_ )
        observer_->agentStatement( AgentStatement::hybridMount, {}, statementOrigin() );
}

void MountProfileHdlr::setLowMountPrio( bool flag ) {
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "agentProfile is not created yet.")" );
    agentProfile_->lowMountPrioIs( flag );
    if ( observer_ )
        observer_->agentStatement( AgentStatement::lowMountPrio, {}, statementOrigin() );
}

void MountProfileHdlr::setNoDefaultMountGroup( bool flag ) {
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "agentProfile is not created yet.")" );
    agentProfile_->noDefaultMountGroupIs( flag );
    if ( observer_ )
        observer_->agentStatement( AgentStatement::noDefaultMountGroup, {}, statementOrigin() );
}

void MountProfileHdlr::addSubAgent( const std::string& name ) {
    subAgents_.push_back( name );
    if ( observer_ )
        observer_->agentStatement( AgentStatement::subAgent, name, statementOrigin() );
}

void MountProfileHdlr::addAlias( const std::string& key, const std::string& targets ) {
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "agentProfile is not created yet.")" );
    agentProfile_->aliasKeyIs( Kiv::String8( key ), Kiv::String8( targets ) );
    if ( observer_ )
        observer_->agentStatement( AgentStatement::alias, key, statementOrigin() );
}

void MountProfileHdlr::setRootFlags( const std::string& flags ) {
    if ( !validateFlags( flags ) )
        return;
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "agentProfile is not created yet.")" );
    agentProfile_->rootFlagsIs( mergedFlags( agentProfile_->rootFlags(), flags ) );
    if ( observer_ )
        observer_->agentStatement( AgentStatement::rootFlags, flags, statementOrigin() );
}

bool MountProfileHdlr::validateFlags( const std::string& flags ) {
    const std::size_t illegal = firstIllegalFlag( flags );
    if ( illegal == std::string::npos )
        return true;
    constructHdlrException( std::string( "illegal flag '" ) + flags[illegal] + "'", flags );
    return false;
}

bool MountProfileHdlr::validateMountGroupName( const std::string& name ) {
    if ( name != implicitGroupName && name != defaultGroupName )
        return true;
    constructHdlrException( "Cannot use reserved mount group name", name );
    return false;
}

void MountProfileHdlr::addMountGroup() {
    addMountGroup( implicitGroupName );
}

void MountProfileHdlr::addMountGroup( const std::string& name ) {
    addMountGroup( name, highestPriority );
}

void MountProfileHdlr::addMountGroup( const std::string& name, unsigned priority ) {
    if ( priority < 1 || priority > highestPriority ) {
        constructHdlrException( "mount group priority should be in the range [1,99]" );
        pointExceptionAtLastToken( parserCtx_ );
        return;
    }
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "agentProfile is not set yet.")" );
    currMg_ = agentProfile_->mountGroupIs( Kiv::Name( name ), priority );
    currMgName_ = name;
    if ( observer_ )
        observer_->mountGroupOpened( *currMg_, priority,
                                     name == implicitGroupName ? Origin{} : statementOrigin() );
}

bool MountProfileHdlr::validateMgConditionNotSet() {
    HDLR_ASSERT( currMg_, R"(currMg && "currMg is NULL.")" );
    if ( currMg_->entireCondition().empty() )
        return true;
    constructHdlrException( "Condition for this mount group is already set to: " +
                            currMg_->entireCondition().str() + ". Multiple conditions not allowed." );
    return false;
}

void MountProfileHdlr::setBlockingConditional( bool flag ) {
    HDLR_ASSERT( currMg_, R"(currMg && "currMg is NULL.")" );
    currMg_->blockingConditionalIs( flag );
    if ( observer_ )
        observer_->conditionAdded( *currMg_, ConditionPart::blocking, {}, statementOrigin() );
}

void MountProfileHdlr::addCondition( const std::string& text ) {
    HDLR_ASSERT( currMg_, R"(currMg && "currMg is NULL")" );
    currMg_->conditionColEnq( Kiv::String8( text ) );
    if ( observer_ )
        observer_->conditionAdded( *currMg_, ConditionPart::single, text, tokenOrigin() );
}

void MountProfileHdlr::addTemplateCondition( const std::string& text ) {
    HDLR_ASSERT( currMg_, R"(currMg && "currMg is NULL")" );
    currMg_->templateConditionColIs( Kiv::String8( text ), true );
    if ( observer_ )
        observer_->conditionAdded( *currMg_, ConditionPart::templateKey, text, tokenOrigin() );
}

bool MountProfileHdlr::validateCondPathFunc( const std::string& name ) {
    if ( name == "len" )
        return true;
    constructHdlrException( "Only supported function is 'len'", name );
    return false;
}

void MountProfileHdlr::setEntireCondition( const std::string& text ) {
    HDLR_ASSERT( currMg_, R"(currMg && "currMg is NULL")" );
    currMg_->entireConditionIs( Kiv::String8( text ) );
    if ( observer_ )
        observer_->conditionAdded( *currMg_, ConditionPart::whole, text, statementOrigin() );
}

} // namespace Corvid
