#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/MountProfileHdlr.h"

namespace Corvid {

void MountProfileHdlr::registerMountFilterDecl( const std::string& name ) {
    const auto [declared, isNew] = mountFilterMap_.try_emplace( name );
    if ( !isNew ) {
        constructHdlrException( "Mount filter '" + name + "' is already declared", name );
        return;
    }
    declared->second.enabledIs( 1 );
    currMountFilterName_ = name;
    if ( observer_ )
        observer_->mountFilterDeclared( name, statementOrigin() );
}

std::vector<std::string> MountProfileHdlr::knownMountFilters() const {
    std::vector<std::string> names;
    for ( const auto& [name, filter] : mountFilterMap_ )
        names.push_back( name );
    return names;
}

void MountProfileHdlr::addAttrFilter( const std::string& attrName, const std::string& filterKey ) {
    HDLR_ASSERT( mountFilterMap_.count( currMountFilterName_ ) != 0,
                 R"(mountFilterMap.count( currMountFilterName ) != 0 && )"
                 R"("Trying to add attr filter to undeclared mount filter")" );
    const AttrFilter attrFilter( attrName, filterKey );
    mountFilterMap_[currMountFilterName_].newAttrFilter( attrFilter );
    if ( observer_ )
        observer_->attrFilterAdded( currMountFilterName_, attrFilter, statementOrigin() );
}

} // namespace Corvid
