#pragma once

#include "ProfileStore/AttrFilter.h"
#include "ProfileStore/Export.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Corvid {

class Mount;
class PassiveMountGroup;

/// Where something in a profile comes from. Its texts are valid during the call that tells it.
struct Origin {
    /// What gave it.
    enum class Kind {
        line,           ///< a line of the agent file, or of an include file
        configuredPath, ///< the state database's configured paths, asked for by a line of the agent file
        implicit        ///< no line: the group "all", which every profile has, and what every agent gets
    };
    Kind kind = Kind::implicit; ///< what gave it
    std::string_view file;      ///< path of the file, as it was opened; empty when there is none
    std::uint32_t line = 0;     ///< on which the statement begins, from 1; 0 when there is none
    bool inIncludeFile = false; ///< whether the file was included
};

/// An include file that is about to be read.
struct IncludeEntry {
    std::string_view file;    ///< path of the include file
    std::string_view pattern; ///< as the agent file gives it
    std::size_t number;       ///< of this file among those that match the pattern, from 1
    std::size_t matches;      ///< how many files match the pattern
    Origin origin;            ///< the line that includes it
};

/// A statement about the agent as a whole.
enum class AgentStatement {
    agentName,           ///< text: the name in the profile
    templateKey,         ///< text: the key, as the title line declares it; told once for each key
    alias,               ///< text: the alias. One that is declared again replaces what it stood for
    hybridMount,         ///< no text; so the next two
    lowMountPrio,        //
    noDefaultMountGroup, //
    rootFlags,           ///< text: the flags of this line. They add to those of earlier lines
    subAgent             ///< text: the name
};

/// What a group waits for.
enum class ConditionPart {
    blocking,    ///< no text: the agent is held up until the condition holds
    single,      ///< one comparison
    templateKey, ///< one comparison with a template key
    whole        ///< all comparisons, joined
};

/// One mount line, or a mount that was made up for.
struct MountAddition {
    const PassiveMountGroup& group; ///< that takes the mount
    const Mount* before;            ///< what the group holds at this path so far; null when that is nothing
    const Mount& after;             ///< what replaces it
    std::string_view flags;         ///< of this line; `after` has those of `before`, too
    std::string_view mountFilter;   ///< name of the filter that this line names; empty without one
    Origin origin;                  ///< of the mount
};

/// What a handler tells, while it runs, about the files that it reads and about what comes of them: for
/// dependency lists, and for the answer to where something in a profile comes from. A host overrides what it
/// wants to know; see `MountProfileHdlr::observerIs`.
///
/// Everything is told in the order in which it happens, on the handler's thread, also in a file that turns
/// out to be invalid later on. References and texts are valid during the call. A function must not throw, and
/// must not change the profile or call the handler.
class CORVID_API RunObserver {
  public:
    RunObserver() noexcept = default;
    RunObserver( const RunObserver& ) = delete;
    RunObserver& operator=( const RunObserver& ) = delete;
    virtual ~RunObserver();

    /// A file has been opened and read to its end, and is parsed now. Files that cannot be read are not told.
    virtual void fileRead( std::string_view fileName, bool isInclude );
    /// Told before the include file is opened.
    virtual void includeEntered( const IncludeEntry& entry );

    /// A statement about the agent has been read, or a part of its title line.
    virtual void agentStatement( AgentStatement statement, std::string_view text, const Origin& origin );
    /// A filter has been declared, still without attributes.
    virtual void mountFilterDeclared( std::string_view name, const Origin& origin );
    /// A filter has got an attribute; one of the same name is replaced.
    virtual void attrFilterAdded( std::string_view mountFilter, const AttrFilter& attrFilter,
                                  const Origin& origin );
    /// A group has been made, or opened again.
    /// @param priority the one that is asked for; a group that is there keeps its own.
    virtual void mountGroupOpened( const PassiveMountGroup& group, unsigned priority, const Origin& origin );
    /// @param origin of a single comparison names the line on which that ends.
    virtual void conditionAdded( const PassiveMountGroup& group, ConditionPart part, std::string_view text,
                                 const Origin& origin );
    /// Told just before the group takes the mount.
    virtual void mountAdded( const MountAddition& addition );
};

} // namespace Corvid
