#pragma once

#include "Corvid/ConfigRoot.h"
#include "Corvid/EntityManager.h"
#include "Kiv/TraceHandle.h"
#include "Redundancy/RedundancyStatus.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The knobs of the embedded platform, the stand-in behind the platform contract. For programs that are their
/// own platform: the command, tests, examples. Set them before handlers run: they are not guarded against
/// concurrent readers.
namespace Kiv::Embedded {

/// What Cell::cellId() answers from now on. The platform starts with cell 1.
KIV_API void cellIdIs( std::uint32_t cellId );

[[nodiscard]] KIV_API Ptr<const Corvid::EntityManager> newEntityManager( const String8& systemName,
                                                                         bool standalone );
[[nodiscard]] KIV_API Ptr<Redundancy::RedundancyStatus> newRedundancyStatus( Redundancy::Mode configured,
                                                                             Redundancy::Mode operational );

/// One configured path with what the path trie records for it. Of two with the same path, the trie keeps the
/// later.
struct ConfiguredPath {
    String8 path;
    String8 type;
    String8 flags;
};
/// The trie answers by whole path components: "a/b" is recorded for "a/b/c" too, but not for "a/bc"; a record
/// for the empty path holds for every path.
[[nodiscard]] KIV_API Ptr<Corvid::ConfigRoot> newConfigRoot( const std::vector<ConfiguredPath>& paths,
                                                             bool complete );

/// Puts an entity into the global tree at an absolute path, in place of one that was there; null removes it.
KIV_API void entityIs( const String8& path, Ptr<Entity> entity );
/// Empties the global tree.
KIV_API void entitiesDel();

/// Receives every line of trace that is switched on, in place of standard error; an empty function restores
/// that. One call at a time, under a lock: it must not trace or change the sink itself.
using TraceSink = std::function<void( const TraceHandle&, unsigned level, const char* function, unsigned line,
                                      std::string_view )>;
KIV_API void traceSinkIs( TraceSink sink );
/// Switches levels as the environment variable KIV_TRACE does: "Name/0-8,Other/1", "Name" alone for all
/// levels. Holds for facilities that exist and those to come; what cannot be read switches nothing on.
KIV_API void traceLevelsAre( const std::string& switches );

} // namespace Kiv::Embedded
