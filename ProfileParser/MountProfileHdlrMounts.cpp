#include "ProfileParser/FlagSet.h"
#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/MountPath.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <string_view>
#include <utility>

namespace Corvid {

namespace {

/// What stands behind the flags of a mount line.
std::string behindFlags( const std::string& mountFilter ) {
    if ( mountFilter.empty() )
        return {};
    return "," + mountFilter;
}

} // namespace

void MountProfileHdlr::addMount( const std::string& path, const std::string& type, const std::string& flags,
                                 const std::string& mountFilter ) {
    const std::string_view normalised = normalisedPath( path );
    if ( !validateFlags( flags ) ) {
        pointExceptionAt( parserCtx_, flags, behindFlags( mountFilter ) );
        return;
    }
    HDLR_ASSERT( currMg_ && currMg_->parent(), R"(currMg && currMg->parent() && "currMg is NULL.")" );
    const MountsByPath::Place place = currMg_->mountPlace( normalised );
    const Mount* const existing = place.mount();
    if ( existing && existing->type() != type ) {
        constructHdlrException( "Path " + std::string( normalised ) + " is already present with type: " +
                                existing->type().str() + ". Mismatched type: " + type );
        pointExceptionAt( parserCtx_, type, "," + flags + behindFlags( mountFilter ) );
        return;
    }
    // A fresh value: a line without a filter takes away the one that an earlier line gave this path.
    Mount mount( existing ? existing->path() : Kiv::String8( normalised ),
                 existing ? existing->type() : sharedTexts_.of( type ),
                 sharedTexts_.of( existing ? mergedFlags( existing->flags(), flags ) : flags ) );
    if ( !mountFilter.empty() ) {
        const auto declared = mountFilterMap_.find( mountFilter );
        if ( declared == mountFilterMap_.end() ) {
            constructHdlrException(
                "No mount filter with name '" + mountFilter + "' defined before this line.", mountFilter );
            return;
        }
        mount.mountFilterIs( declared->second );
    }
    if ( observer_ )
        observer_->mountAdded( { *currMg_, existing, mount, flags, mountFilter, statementOrigin() } );
    currMg_->mountProfileIs( place, std::move( mount ) );
}

} // namespace Corvid
