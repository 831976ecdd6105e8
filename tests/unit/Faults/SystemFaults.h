#pragma once

#include <functional>
#include <limits>

namespace CorvidTest {

/// One function that the library or the command calls, of the system or of another library. In the program
/// that links SystemFaults.cpp its calls can be made to fail, without the function itself being called.
struct FaultyFunction {
    const char* name = "";
    int error = 0;        ///< what `errno` is then
    long calls = 0;       ///< since it was last told to fail
    long firstToFail = 0; ///< counted from 1; 0 for none
    long lastToFail = 0;  ///< the calls up to this one fail, too

    void failAt( long call, int errorNumber = 0 ) noexcept { failBetween( call, call, errorNumber ); }
    void failFrom( long call, int errorNumber ) noexcept {
        failBetween( call, std::numeric_limits<long>::max(), errorNumber );
    }
    [[nodiscard]] bool hasFailed() const noexcept { return firstToFail != 0 && calls >= firstToFail; }
    /// For the wrapper: counts a call. @return whether it is one that fails.
    bool fails() noexcept;

  private:
    void failBetween( long first, long last, int errorNumber ) noexcept;
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
extern FaultyFunction systemWrite;
extern FaultyFunction systemReaddir;
extern FaultyFunction systemLstat;
extern FaultyFunction systemFchmod;
extern FaultyFunction systemRename;
extern FaultyFunction systemClose;
extern FaultyFunction systemGlob;
extern FaultyFunction systemNewlocale;
extern FaultyFunction newThread; ///< of the C++ library

/// Lets every read yield at most so many bytes; 0 for no such limit.
void readsAtMost( unsigned long bytes ) noexcept;

/// Called whenever a part of a file has been read, until told otherwise.
void afterEachReadDo( std::function<void()> action );

/// Called whenever a file has been read to its end, until told otherwise.
void atTheEndOfFilesDo( std::function<void()> action );

/// Lets directories keep to themselves what their entries are, as some file systems do.
void entryTypesAreHidden( bool hidden ) noexcept;

} // namespace CorvidTest
