#pragma once

#include "ProfileStore/Export.h"
#include "ProfileStore/Mount.h"

#include <cstddef>
#include <iterator>
#include <map>
#include <string_view>
#include <vector>

namespace Corvid {

/// Mounts, one for each path, ordered byte-wise by path. They lie side by side in small blocks: a group of
/// many mounts costs no allocation for each, and mounts that come in the order of their paths are only
/// appended.
class CORVID_API MountsByPath {
    using Block = std::vector<Mount>;
    using Blocks = std::map<Kiv::String8, Block, std::less<>>;

  public:
    /// Visits the mounts in the order of their paths. Valid until the collection changes.
    class const_iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Mount;
        using difference_type = std::ptrdiff_t;
        using pointer = const Mount*;
        using reference = const Mount&;

        const_iterator() = default;
        reference operator*() const noexcept { return block_->second[index_]; }
        pointer operator->() const noexcept { return &**this; }
        const_iterator& operator++() noexcept {
            if ( ++index_ == block_->second.size() ) {
                ++block_;
                index_ = 0;
            }
            return *this;
        }
        const_iterator operator++( int ) noexcept {
            const_iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==( const const_iterator&, const const_iterator& ) = default;

      private:
        friend class MountsByPath;
        explicit const_iterator( Blocks::const_iterator block ) noexcept : block_( block ) {}

        Blocks::const_iterator block_;
        std::size_t index_ = 0;
    };

    /// Where a path is in the collection, or belongs. Valid until the collection changes.
    class Place {
      public:
        /// The mount that has the path, or null.
        [[nodiscard]] const Mount* mount() const noexcept { return mount_; }

      private:
        friend class MountsByPath;
        Block* block_ = nullptr; ///< null when there is none yet
        std::size_t index_ = 0;
        const Mount* mount_ = nullptr;
    };

    MountsByPath() = default;
    MountsByPath( const MountsByPath& ) = delete;
    MountsByPath& operator=( const MountsByPath& ) = delete;

    /// How many mounts there are.
    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    /// Whether there are none.
    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
    /// The mount whose path comes first.
    [[nodiscard]] const_iterator begin() const noexcept { return const_iterator( blocks_.begin() ); }
    /// Behind the last one.
    [[nodiscard]] const_iterator end() const noexcept { return const_iterator( blocks_.end() ); }

    /// The mount at a path, or null. Valid until the collection changes.
    [[nodiscard]] const Mount* find( std::string_view path ) const noexcept;
    /// Where a mount with this path goes.
    [[nodiscard]] Place place( std::string_view path ) noexcept;
    /// Puts a mount in its place: inserts it, or replaces the one that is there.
    /// @param place of the mount's path. @throws std::bad_alloc, and then nothing has changed.
    void assign( const Place& place, Mount&& mount );

  private:
    static constexpr std::size_t blockSize = 32; ///< mounts; larger ones cost more to insert into

    [[nodiscard]] bool belongsAtEnd( std::string_view path ) const noexcept {
        return !last_ || last_->back().path() < path;
    }
    void append( Mount&& mount );
    [[nodiscard]] Place placeInFullBlock( const Place& place );

    Blocks blocks_; ///< by a path that none of the block is smaller than; the first by the empty path. None
                    ///< is empty.
    Block* last_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace Corvid
