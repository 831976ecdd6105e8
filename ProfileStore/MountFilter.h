#pragma once

#include "Kiv/Ptr.h"
#include "Kiv/RefCount.h"
#include "ProfileStore/AttrFilter.h"
#include "ProfileStore/Export.h"

#include <cstdint>
#include <map>

namespace Corvid {

/// Which attributes of a mounted entity are filtered. A value: a copy does not see what is added to the
/// original later. Fresh ones are not enabled and empty; such a value takes one pointer and no allocation.
class CORVID_API MountFilter {
  public:
    /// Attribute filters by the name of their attribute. Ordered, because whoever writes a file chooses the
    /// names, and could choose some that collide in a hash table.
    using AttrFilterMap = std::map<Kiv::String8, AttrFilter>;

    /// 1 for a filter that a profile file declared, with or without attribute filters; 0 for "no filter".
    [[nodiscard]] std::uint8_t enabled() const noexcept { return content_ ? content_->enabled : 0; }
    void enabledIs( std::uint8_t enabled );

    /// The attribute filters by attribute name, in byte-wise order.
    [[nodiscard]] const AttrFilterMap& attrFilter() const noexcept;
    /// Adds an attribute filter; one of the same attribute is overwritten, both of its fields.
    void newAttrFilter( const AttrFilter& attrFilter );

    friend bool operator==( const MountFilter& a, const MountFilter& b ) {
        return a.enabled() == b.enabled() && a.attrFilter() == b.attrFilter();
    }

  private:
    struct Content {
        std::uint8_t enabled = 0;
        AttrFilterMap attrFilter;

        void addRef() const noexcept { count.increment(); }
        void release() const noexcept {
            if ( count.decrement() )
                delete this; // GCOVR_EXCL_BR_LINE: the compiler asks whether it is null
        }
        Kiv::RefCount count{ 0 };
    };
    /// The content to write to, shared with no other value.
    Content& ownContent();

    // Mounts copy their filter's declaration: copies share the content until one of them changes.
    Kiv::Ptr<Content> content_;
};

} // namespace Corvid
