#include "ProfileStore/MountsByPath.h"

#include <algorithm>
#include <utility>

namespace Corvid {

namespace {

/// The block that holds a path if any does. @param blocks not empty.
template <class Blocks>
auto& blockOf( Blocks& blocks, std::string_view path ) noexcept {
    return std::prev( blocks.upper_bound( path ) )->second;
}

template <class Block>
auto lowerBound( Block& block, std::string_view path ) noexcept {
    return std::ranges::lower_bound( block, path, std::less<>(), &Mount::path );
}

} // namespace

const Mount* MountsByPath::find( std::string_view path ) const noexcept {
    if ( belongsAtEnd( path ) )
        return nullptr;
    const Block& block = blockOf( blocks_, path );
    const auto found = lowerBound( block, path );
    return found != block.end() && found->path() == path ? &*found : nullptr;
}

MountsByPath::Place MountsByPath::place( std::string_view path ) noexcept {
    Place place;
    if ( belongsAtEnd( path ) ) {
        // People write mounts in order, so most paths go behind all others: one comparison finds their place.
        place.block_ = last_;
        place.index_ = last_ ? last_->size() : 0;
        return place;
    }
    place.block_ = &blockOf( blocks_, path );
    const auto found = lowerBound( *place.block_, path );
    place.index_ = static_cast<std::size_t>( found - place.block_->begin() );
    if ( found != place.block_->end() && found->path() == path )
        place.mount_ = &*found;
    return place;
}

void MountsByPath::assign( const Place& place, Mount&& mount ) {
    if ( place.mount_ ) {
        ( *place.block_ )[place.index_] = std::move( mount );
        return;
    }
    if ( place.block_ == last_ && ( !last_ || place.index_ == last_->size() ) ) {
        append( std::move( mount ) );
    } else {
        const Place free = place.block_->size() < blockSize ? place : placeInFullBlock( place );
        free.block_->insert( free.block_->begin() + static_cast<std::ptrdiff_t>( free.index_ ),
                             std::move( mount ) );
    }
    ++size_;
}

/// Blocks that are left behind full stay full: mounts in order take no more room than they need.
void MountsByPath::append( Mount&& mount ) {
    if ( last_ && last_->size() < blockSize ) {
        last_->push_back( std::move( mount ) );
        return;
    }
    Kiv::String8 firstPath = last_ ? mount.path() : Kiv::String8();
    Block block;
    block.reserve( last_ ? blockSize : 1 ); // most groups are small
    block.push_back( std::move( mount ) );
    last_ = &blocks_.emplace( std::move( firstPath ), std::move( block ) ).first->second;
}

/// Moves the upper half of a full block to a new one. @return where the place is then.
MountsByPath::Place MountsByPath::placeInFullBlock( const Place& place ) {
    constexpr std::size_t half = blockSize / 2;
    Block& lower = *place.block_;
    Block room;
    room.reserve( blockSize );
    Block& upper = blocks_.emplace( lower[half].path(), std::move( room ) ).first->second;
    upper.assign( std::move_iterator( lower.begin() + half ), std::move_iterator( lower.end() ) );
    lower.erase( lower.begin() + half, lower.end() );
    if ( last_ == &lower )
        last_ = &upper;
    Place free;
    const bool isInUpper = place.index_ > half;
    free.block_ = isInUpper ? &upper : &lower;
    free.index_ = isInUpper ? place.index_ - half : place.index_;
    return free;
}

} // namespace Corvid
