#pragma once

#include <string>
#include <vector>

namespace Corvid::Cli {

// The command-line library takes `[a,b]` for a list of two values, in every option, and the argument behind
// `--option=` for the value of that option. In arguments that are to be taken as they are, a byte that no
// argument can hold stands behind the closing bracket, or the sign, until the option gets its value.

/// The arguments without the program's name, as `CLI::App::parse` wants them: the last one first.
[[nodiscard]] std::vector<std::string> literalArguments( int argc, const char* const* argv );
/// A text of the library's, such as that of an error, without the mark.
[[nodiscard]] std::string withoutMarks( std::string text );

} // namespace Corvid::Cli
