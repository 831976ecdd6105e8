#pragma once

#include "Cli/AgentRun.h"
#include "Cli/Command.h"

#include <cstddef>
#include <memory>
#include <string>

namespace Corvid::Cli {

/// What was found in the files of a check, in numbers.
struct CheckCounts {
    std::size_t valid = 0;
    std::size_t invalid = 0;
    std::size_t notAgentFile = 0; ///< named by the user
    std::size_t unreadable = 0;
    std::size_t passedOver = 0; ///< found in directories, and not agent files
};

/// One form in which `check` tells what it found. The files come in a fixed order, whatever computed them.
class CheckReport {
  public:
    CheckReport() = default;
    CheckReport( const CheckReport& ) = delete;
    CheckReport& operator=( const CheckReport& ) = delete;
    virtual ~CheckReport();

    /// What is to be said about a file. Called by several threads at once.
    [[nodiscard]] virtual std::string describe( const AgentRun& run ) const = 0;
    /// Says it. Called in the order of the files.
    virtual void file( const std::string& description ) = 0;
    /// Called once, after all files.
    virtual void end( const CheckCounts& counts ) = 0;
};

/// The form for people: diagnostics on standard error, one line of numbers on standard output.
[[nodiscard]] std::unique_ptr<CheckReport> newTextReport( Console& console );

} // namespace Corvid::Cli
