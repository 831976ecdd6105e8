#include "Cell/Cell.h"
#include "EmbeddedPlatform.h"
#include "Kiv/Format.h"

namespace {

std::uint32_t ownCellId = 1;

} // namespace

std::uint32_t Cell::cellId() {
    return ownCellId;
}

Kiv::String8 Cell::path( const Kiv::String8& relativePath, std::uint32_t cellId ) {
    const std::uint32_t cell = cellId == 0 ? ownCellId : cellId;
    if ( cell == 0 )
        return relativePath;
    return "cell/" + std::to_string( cell ) + "/" + relativePath.str();
}

void Kiv::Embedded::cellIdIs( std::uint32_t cellId ) {
    ownCellId = cellId;
}
