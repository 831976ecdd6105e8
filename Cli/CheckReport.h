#pragma once

#include "Cli/Command.h"
#include "Cli/Diagnostic.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

/// What was found in the files of a check, in numbers.
struct CheckCounts {
    std::size_t valid = 0;
    std::size_t invalid = 0;
    std::size_t notAgentFile = 0; ///< named by the user
    std::size_t unreadable = 0;
    std::size_t passedOver = 0; ///< found in directories, and not agent files

    [[nodiscard]] std::size_t checked() const { return valid + invalid + notAgentFile + unreadable; }
};

/// One form in which `check` tells what it found. The files come in a fixed order, whatever computed them.
class CheckReport {
  public:
    CheckReport() = default;
    CheckReport( const CheckReport& ) = delete;
    CheckReport& operator=( const CheckReport& ) = delete;
    virtual ~CheckReport();

    /// What is to be said about a file; empty for nothing. Called by several threads at once.
    [[nodiscard]] virtual std::string describe( const AgentRun& run ) const = 0;
    /// Says it. Called in the order of the files.
    virtual void file( const std::string& description ) = 0;
    /// Called once, after all files.
    /// @param problem is what else the command was to do, and could not.
    virtual void end( const CheckCounts& counts, ExitStatus status,
                      const std::optional<Diagnostic>& problem ) = 0;
    /// Called in place of all others when the command cannot do its work.
    virtual void usageError( const Diagnostic& diagnostic ) = 0;
};

// The form for people: diagnostics on standard error, one line of numbers on standard output.
[[nodiscard]] std::unique_ptr<CheckReport> newTextReport( Console& console );
// The forms for programs: everything on standard output, and nothing else there.
[[nodiscard]] std::unique_ptr<CheckReport> newJsonReport( Console& console );
[[nodiscard]] std::unique_ptr<CheckReport> newSarifReport( Console& console );
[[nodiscard]] std::unique_ptr<CheckReport> newGccReport( Console& console );
[[nodiscard]] std::unique_ptr<CheckReport> newGithubReport( Console& console );

/// A form by the name that users give it.
struct ReportFormat {
    std::string_view name;
    std::unique_ptr<CheckReport> ( *newReport )( Console& );
};
/// All of them, the default first.
[[nodiscard]] std::span<const ReportFormat> reportFormats();
/// Null when there is none of that name.
[[nodiscard]] const ReportFormat* reportFormat( std::string_view name );

} // namespace Corvid::Cli
