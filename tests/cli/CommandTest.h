#pragma once

#include "cli/RunProgram.h"

#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

namespace Corvid::Testing {

/// Runs the command in a directory of the test's own, which goes with the test.
class CommandTest : public testing::Test {
  protected:
    CommandTest() {
        std::string name = testing::TempDir() + "mountprofile-XXXXXX";
        if ( !::mkdtemp( name.data() ) )
            throw std::runtime_error( "cannot make a directory like " + name );
        directory_ = name;
    }
    ~CommandTest() override {
        std::error_code ignored;
        std::filesystem::remove_all( directory_, ignored );
    }

    [[nodiscard]] const std::filesystem::path& directory() const { return directory_; }
    /// Makes a file below the directory, and the directories on the way to it.
    void write( const std::string& name, std::string_view content ) const {
        std::filesystem::create_directories( ( directory_ / name ).parent_path() );
        writeFile( directory_ / name, content );
    }
    /// The built command, or one that the environment names in its place.
    [[nodiscard]] static std::string command() {
        const char* other = std::getenv( "MOUNTPROFILE_UNDER_TEST" );
        return other && *other ? other : MOUNTPROFILE_COMMAND;
    }
    /// @param environment beside what the test was given.
    [[nodiscard]] ProgramResult run( std::vector<std::string> arguments,
                                     std::vector<std::pair<std::string, std::string>> environment = {},
                                     OutputTo output = OutputTo::text ) const {
        ProgramCall call{ { command() }, std::move( environment ), directory_, output, {} };
        call.command.insert( call.command.end(), arguments.begin(), arguments.end() );
        return runProgram( call );
    }

    [[nodiscard]] ProgramResult runWithInput( const std::string& input,
                                              std::vector<std::string> arguments ) const {
        ProgramCall call{ { command() }, {}, directory_, OutputTo::text, input };
        call.command.insert( call.command.end(), arguments.begin(), arguments.end() );
        return runProgram( call );
    }

  private:
    std::filesystem::path directory_;
};

inline void PrintTo( const ProgramResult& result, std::ostream* out ) {
    *out << "exit status " << result.exitStatus << "\nstandard output:\n"
         << result.out << "standard error:\n"
         << result.err;
}

/// Everything that a run of the command answers.
MATCHER_P3( Answers, exitStatus, out, err, "" ) {
    return arg.exitStatus == exitStatus &&
           testing::Matches( testing::Matcher<std::string>( out ) )( arg.out ) &&
           testing::Matches( testing::Matcher<std::string>( err ) )( arg.err );
}

/// The number of a text's lines, a last one without a line end included.
inline std::size_t lineCount( std::string_view text ) {
    const auto lineEnds = static_cast<std::size_t>( std::count( text.begin(), text.end(), '\n' ) );
    return lineEnds + ( text.empty() || text.ends_with( '\n' ) ? 0 : 1 );
}

/// The lines of what was said about one file: the first one, which the library prints; the source line and
/// the marks under it; and the notes, which begin with "=".
struct Diagnostics {
    std::string firstLine;
    std::string excerpt; ///< two lines, or empty
    std::string notes;   ///< without their indentation
};
inline Diagnostics diagnosticsIn( const std::string& standardError ) {
    constexpr std::string_view noteMark = "      = ";
    std::istringstream lines( standardError );
    Diagnostics diagnostics;
    std::getline( lines, diagnostics.firstLine );
    for ( std::string line; std::getline( lines, line ); ) {
        if ( line.starts_with( noteMark ) )
            diagnostics.notes += line.substr( noteMark.size() - 2 ) + "\n";
        else
            diagnostics.excerpt += line + "\n";
    }
    return diagnostics;
}

} // namespace Corvid::Testing
