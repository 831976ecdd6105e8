#pragma once

#include "ProfileDocument/HandlerRun.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What has to hold for every input, whatever its bytes. A law that does not hold stops the process, so that
/// libFuzzer keeps the input.
namespace CorvidFuzz {

/// Says which law does not hold, and aborts.
[[noreturn]] void lawBroken( std::string_view law, std::string_view found );
inline void require( bool holds, std::string_view law, std::string_view found ) {
    if ( !holds ) [[unlikely]]
        lawBroken( law, found );
}

/// The files of an input, by path.
using Files = std::map<std::string, std::string_view>;

struct RunOptions {
    bool plainTokens = false;
    bool addDefaults = true;
    Kiv::Ptr<const Corvid::EntityManager> entityManager = nullptr;
};

/// A handler after its run.
struct FinishedRun : Corvid::HandlerRun {
    std::string printed; ///< on standard error
};

/// Runs a handler over an agent file. Its directory of profiles holds another profile already; a handler that
/// touches that one breaks a law.
[[nodiscard]] FinishedRun run( const std::string& agentFile, const RunOptions& options = {} );
/// The run's result as the JSON document of the command.
[[nodiscard]] std::string documentOf( const Corvid::HandlerRun& run );

/// What handler, profile, error and output tell of one run is one story: valid and no description, or
/// invalid, the error recorded in both and printed once, or no agent file and nothing done.
void checkOutcome( const FinishedRun& run );
/// The error, if there is one, lies in its file, at the token that it quotes, or at the appended line end;
/// its description is composed of the texts of docs/errors.md. It has a code, and a range in the file that
/// begins at its place.
void checkError( const FinishedRun& run, const Files& files );
/// A second run gives the same document and prints the same.
void checkRepetition( const FinishedRun& run, const RunOptions& options );

/// Whether this input is one of those that a law is checked for that takes long: all of them when files are
/// replayed, else one out of so many, chosen by its bytes.
[[nodiscard]] bool isOneOf( std::size_t many, std::string_view input );
/// To be called before the first input by who replays files.
void checkAllInputs();

/// All of them, for one agent file. @return the first run.
FinishedRun checkedRun( const std::string& agentFile, const Files& files, const RunOptions& options = {} );

/// The parts of an input for a target that takes several texts; a byte that begins no token parts them.
inline constexpr char separator = '\xFE';
[[nodiscard]] std::vector<std::string_view> partsOf( const std::uint8_t* data, std::size_t size );
[[nodiscard]] inline std::string_view textOf( const std::uint8_t* data, std::size_t size ) {
    return { reinterpret_cast<const char*>( data ), size };
}

} // namespace CorvidFuzz
