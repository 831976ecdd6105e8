#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvid::Testing {

/// Where a program's standard output goes; standard error is always collected.
enum class OutputTo {
    text,       ///< into ProgramResult::out
    terminal,   ///< to a terminal of its own, together with standard error: both into ProgramResult::out
    fullDevice, ///< to a device on which there is no space
    closedPipe, ///< to a pipe that nobody reads
    nowhere,    ///< it is not open at all
};

struct ProgramCall {
    std::vector<std::string> command;                               ///< the program and its arguments
    std::vector<std::pair<std::string, std::string>> environment{}; ///< beside what the test itself was given
    std::filesystem::path directory = ".";                          ///< where it runs
    OutputTo output = OutputTo::text;
    std::optional<std::string> input{}; ///< on standard input; what the test itself has there unless given
};

struct ProgramResult {
    int exitStatus = -1; ///< 128 and the signal's number when one ended it
    std::string out;
    std::string err;
};

/// Runs a program to its end; one that takes longer than a minute is ended by SIGALRM. Variables that change
/// what the command does are taken out of its environment, unless the call gives them.
/// @throws std::system_error when it cannot be started.
[[nodiscard]] ProgramResult runProgram( const ProgramCall& call );

/// @throws std::runtime_error when the file cannot be read, or written.
[[nodiscard]] std::string readFile( const std::filesystem::path& file );
void writeFile( const std::filesystem::path& file, std::string_view content );

} // namespace Corvid::Testing
