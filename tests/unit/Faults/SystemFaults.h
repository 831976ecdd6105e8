#pragma once

namespace CorvidTest {

/// One function that the library calls, of the system or of the parser library. In the program that links
/// SystemFaults.cpp one of its calls can be made to fail, without the function itself being called.
struct FaultyFunction {
    const char* name = "";
    int error = 0;    ///< what `errno` is then
    long calls = 0;   ///< since the last call of `failAt`
    long failing = 0; ///< the call that fails, counted from 1; 0 for none

    void failAt( long call, int errorNumber = 0 ) noexcept {
        calls = 0;
        failing = call;
        error = errorNumber;
    }
    [[nodiscard]] bool hasFailed() const noexcept { return failing != 0 && calls >= failing; }
    /// For the wrapper: counts a call. @return whether it is the one that fails.
    bool fails() noexcept;
};

// Of the parser library; they answer null for a failure.
extern FaultyFunction newStringStream;
extern FaultyFunction newLexer;
extern FaultyFunction newTokenStream;
extern FaultyFunction newParser;
// Of the system.
extern FaultyFunction systemOpen;
extern FaultyFunction systemFstat;
extern FaultyFunction systemRead;

/// Lets every read yield at most so many bytes; 0 for no such limit.
void readsAtMost( unsigned long bytes ) noexcept;

} // namespace CorvidTest
