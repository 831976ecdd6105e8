#pragma once

#include <memory>
#include <new>

namespace Corvid {

/// Owns a part made by the parser library, which brings its own `free`.
struct FreePart {
    template <class Part>
    void operator()( Part* part ) const noexcept {
        part->free( part );
    }
};
template <class Part>
using Owner = std::unique_ptr<Part, FreePart>;

/// A part that the parser library has made. @throws std::bad_alloc for null: it had no memory.
template <class Part>
[[nodiscard]] Owner<Part> owned( Part* part ) {
    if ( !part )
        throw std::bad_alloc();
    return Owner<Part>( part );
}

} // namespace Corvid
