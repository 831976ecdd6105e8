#pragma once

#include "ProfileParser/RunObserver.h"

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Corvid::Cli {

/// Notes down, beside the profile, which line gave each part of it. For one run.
class OriginRecord final : public RunObserver {
  public:
    /// How an include file came to be read.
    struct Include {
        std::string pattern;
        std::size_t number;           ///< of the file among those that match the pattern, from 1
        std::size_t matches;          ///< how many files match
        const std::string* agentFile; ///< never null
        std::uint32_t line;           ///< of the agent file
    };
    /// An Origin that lasts as long as this record.
    struct Place {
        Origin::Kind kind = Origin::Kind::implicit;
        const std::string* file = nullptr; ///< null for an implicit one
        std::uint32_t line = 0;
        const Include* include = nullptr; ///< null outside include files
    };
    /// A text, as the observer was told it, and its place.
    struct Statement {
        std::string text;
        Place place;
    };
    using Statements = std::vector<Statement>; ///< in the order of the file

    struct Filter {
        Place place;
        /// Their keys by attribute name. The last one counts.
        std::map<std::string, Statements, std::less<>> attributes;
    };
    struct Opening {
        unsigned priority; ///< the one that is asked for
        Place place;
    };
    /// What one line does to a mount.
    struct MountStep {
        std::string flags;  ///< of the line
        std::string added;  ///< those that the mount did not have before
        std::string filter; ///< name of the filter that the line names; maybe empty
        Place place;
    };
    using MountMap = std::map<std::string, std::vector<MountStep>, std::less<>>;
    struct Group {
        std::vector<Opening> openings; ///< the first one made it
        Statements blocking;           ///< without texts
        Statements wholeConditions;    ///< the last one counts
        Statements conditions;
        std::map<std::string, Place, std::less<>> templateConditions;
        MountMap mounts; ///< by path
    };
    using FilterMap = std::map<std::string, Filter, std::less<>>;
    using GroupMap = std::map<std::string, Group, std::less<>>;

    /// All statements of one kind.
    [[nodiscard]] const Statements& statements( AgentStatement kind ) const;
    /// Where an alias is declared; the last one counts.
    [[nodiscard]] const Statements& aliasDeclarations( std::string_view alias ) const;
    [[nodiscard]] const FilterMap& filters() const noexcept { return filters_; }
    [[nodiscard]] const GroupMap& groups() const noexcept { return groups_; }

    void includeEntered( const IncludeEntry& entry ) override;
    void agentStatement( AgentStatement statement, std::string_view text, const Origin& origin ) override;
    void mountFilterDeclared( std::string_view name, const Origin& origin ) override;
    void attrFilterAdded( std::string_view mountFilter, const AttrFilter& attrFilter,
                          const Origin& origin ) override;
    void mountGroupOpened( const PassiveMountGroup& group, unsigned priority, const Origin& origin ) override;
    void conditionAdded( const PassiveMountGroup& group, ConditionPart part, std::string_view text,
                         const Origin& origin ) override;
    void mountAdded( const MountAddition& addition ) override;

  private:
    [[nodiscard]] const std::string* lasting( std::string_view file );
    [[nodiscard]] Place placeOf( const Origin& origin );
    [[nodiscard]] Group& groupOf( const PassiveMountGroup& group );

    std::set<std::string, std::less<>> files_;
    std::deque<Include> includes_; // places point into it
    std::map<AgentStatement, Statements> statements_;
    std::map<std::string, Statements, std::less<>> aliases_;
    FilterMap filters_;
    GroupMap groups_;
};

} // namespace Corvid::Cli
