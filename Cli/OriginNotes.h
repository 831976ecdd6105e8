#pragma once

#include "Cli/OriginRecord.h"

#include <string>
#include <string_view>

namespace Corvid::Cli {

/// "FILE:LINE"; "default" where no line gave it; "FILE:LINE (configured path)" where a line asked for the
/// configured paths. Not made printable.
[[nodiscard]] std::string textOf( const OriginRecord::Place& place );

/// The notes on a profile that is printed with its origins: "[agent:3]", "[agent:3 r, agent:5 w]". All are
/// empty when nothing was recorded; none is made printable.
class OriginNotes {
  public:
    /// @param record may be null; else it outlives the notes.
    explicit OriginNotes( const OriginRecord* record ) : record_( record ) {}

    [[nodiscard]] bool areGiven() const noexcept { return record_ != nullptr; }
    [[nodiscard]] std::string agentStatement( AgentStatement kind ) const;
    /// Of all of them: they stand on one line.
    [[nodiscard]] std::string templateKeys() const;
    [[nodiscard]] std::string rootFlags() const;
    [[nodiscard]] std::string alias( std::string_view name ) const;
    /// @param index of the sub-agent, from 0.
    [[nodiscard]] std::string subAgent( std::size_t index ) const;
    [[nodiscard]] std::string group( std::string_view name ) const;
    [[nodiscard]] std::string wholeCondition( std::string_view group ) const;
    /// @param index of the condition among the single ones, from 0.
    [[nodiscard]] std::string condition( std::string_view group, std::size_t index ) const;
    [[nodiscard]] std::string templateCondition( std::string_view group, std::string_view text ) const;
    [[nodiscard]] std::string mount( std::string_view group, std::string_view path ) const;
    // For a mount that has a filter:
    /// Only with a record.
    [[nodiscard]] std::string filter( std::string_view group, std::string_view path ) const;
    [[nodiscard]] std::string attribute( std::string_view group, std::string_view path,
                                         std::string_view attribute ) const;

  private:
    [[nodiscard]] const OriginRecord::Group* find( std::string_view group ) const;
    [[nodiscard]] const std::vector<OriginRecord::MountStep>* find( std::string_view group,
                                                                    std::string_view path ) const;

    const OriginRecord* record_;
};

} // namespace Corvid::Cli
