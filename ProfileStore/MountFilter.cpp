#include "ProfileStore/MountFilter.h"

namespace Corvid {

void MountFilter::enabledIs( std::uint8_t enabled ) {
    if ( enabled != this->enabled() )
        ownContent().enabled = enabled;
}

const MountFilter::AttrFilterMap& MountFilter::attrFilter() const noexcept {
    static const AttrFilterMap none;
    return content_ ? content_->attrFilter : none;
}

void MountFilter::newAttrFilter( const AttrFilter& attrFilter ) {
    ownContent().attrFilter.insert_or_assign( attrFilter.attrName(), attrFilter );
}

MountFilter::Content& MountFilter::ownContent() {
    if ( !content_ ) {
        content_ = new Content;
    } else if ( content_->count.value() > 1 ) {
        Kiv::Ptr<Content> copy( new Content );
        copy->enabled = content_->enabled;
        copy->attrFilter = content_->attrFilter;
        content_ = std::move( copy );
    }
    return *content_;
}

} // namespace Corvid
