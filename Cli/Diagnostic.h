#pragma once

#include "Cli/AgentRun.h"
#include "Cli/SourceText.h"

#include <optional>
#include <string>
#include <string_view>

namespace Corvid::Cli {

/// The line that has an include file read.
struct Inclusion {
    std::string file;
    std::size_t line = 0; ///< from 1
    std::string pattern;
    std::size_t match = 0; ///< number of the include file among those that match, from 1
    std::size_t matches = 0;
};

/// One error, in the parts that every form of output is made of.
struct Diagnostic {
    std::string_view code;
    std::string file;    ///< where it lies; empty for an error of the command line
    std::string message; ///< printable, without the place
    std::string hint;    ///< what to do about it; may be empty

    std::optional<TextPlace> place; ///< where it was found
    TextPlace begin;                ///< what is wrong, when there is a place
    TextPlace end;                  ///< behind its last character
    std::optional<Inclusion> includedFrom;

    std::string excerpt; ///< the source line with the marks, as text; may be empty
};

/// What is wrong with the command line. @param text of any bytes.
[[nodiscard]] Diagnostic usageError( std::string_view text );

/// What is to be said of a run that did not end well; nothing for a valid file.
[[nodiscard]] std::optional<Diagnostic> diagnosticOf( const AgentRun& run, bool coloured );

/// "included from agent:12 (pattern inc*, match 2 of 3)"
[[nodiscard]] std::string printable( const Inclusion& inclusion );

/// What a user is told, on standard error, about a run that did not end well; empty for a valid file. Begins
/// with what the library printed.
[[nodiscard]] std::string diagnosticsOf( const AgentRun& run, bool coloured );

} // namespace Corvid::Cli
