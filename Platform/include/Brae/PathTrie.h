#pragma once

#include "Kiv/Export.h"
#include "Kiv/String8.h"

namespace Brae {

/// Types and flags recorded for paths; answers by prefix: a path without a record of its own gets that of its
/// longest recorded ancestor, and empty texts when there is none.
class KIV_API PathTrie {
  public:
    PathTrie( const PathTrie& ) = delete;
    PathTrie& operator=( const PathTrie& ) = delete;

    /// Name of the type that is recorded.
    [[nodiscard]] virtual Kiv::String8 prefixTypename( const Kiv::String8& path ) const = 0;
    /// Flags that are recorded; a character each.
    [[nodiscard]] virtual Kiv::String8 prefixFlags( const Kiv::String8& path ) const = 0;

  protected:
    PathTrie() = default;
    virtual ~PathTrie();
};

} // namespace Brae
