// conformance_case COMMAND FOLDER: runs the command on the case in a folder and compares what it answers,
// byte by byte.
//
//   agent            the file given to the command, which runs in the folder; include files lie beside it
//   args             further arguments of `show`, one a line (may be missing)
//   env              NAME=value, one a line (may be missing)
//   expected.json    standard output of `show --json`
//   expected.tree    standard output of `show --tree`
//   expected.origin  standard output of `show --origin`
//   expected.tokens  standard output of `tokens`
//   expected.stderr  standard error of `show` (not compared when missing)
//   expected.exit    the exit status of `show`; when missing, the one that follows from the expected output
//
// A case without an expected output fails. MOUNTPROFILE_ACCEPT=1 rewrites the expectations that are there, or
// makes expected.json when there is none.

#include "cli/RunProgram.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using namespace Corvid::Testing;

/// A way to run the command on a case.
struct Form {
    std::string expectation; ///< name of the file with the standard output
    std::vector<std::string> arguments;
};

const std::array forms = {
    Form{ "expected.json", { "show", "--json" } }, Form{ "expected.tree", { "show", "--tree" } },
    Form{ "expected.origin", { "show", "--origin" } }, Form{ "expected.tokens", { "tokens" } } };

class Case {
  public:
    Case( std::string command, fs::path folder )
        : command_( std::move( command ) ), folder_( std::move( folder ) ) {}

    /// Runs the case in every form that it has an expectation for. @return whether all was as expected.
    bool run();

  private:
    void checkFiles() const;
    void runForm( const Form& form );
    void compare( const std::string& file, const std::string& actual );
    [[nodiscard]] ProgramCall callFor( const Form& form ) const;
    [[nodiscard]] int expectedExit( const Form& form ) const;
    [[nodiscard]] bool has( const std::string& file ) const { return fs::exists( folder_ / file ); }
    [[nodiscard]] std::vector<std::string> lines( const std::string& file ) const;
    void fail( const std::string& text ) {
        std::cout << folder_.string() << ": " << text << "\n";
        passed_ = false;
    }

    std::string command_;
    fs::path folder_;
    bool accept_ = std::getenv( "MOUNTPROFILE_ACCEPT" ) != nullptr;
    bool passed_ = true;
};

std::vector<std::string> Case::lines( const std::string& file ) const {
    std::vector<std::string> all;
    if ( !has( file ) )
        return all;
    std::istringstream stream( readFile( folder_ / file ) );
    for ( std::string line; std::getline( stream, line ); )
        all.push_back( line );
    return all;
}

/// A misspelt expectation would be compared with nothing.
void Case::checkFiles() const {
    if ( !has( "agent" ) )
        throw std::runtime_error( "there is no file named agent" );
    for ( const auto& entry : fs::directory_iterator( folder_ ) ) {
        const std::string name = entry.path().filename();
        const bool known = name == "expected.stderr" || name == "expected.exit" ||
                           std::ranges::find( forms, name, &Form::expectation ) != forms.end();
        if ( name.starts_with( "expected" ) && !known )
            throw std::runtime_error( "an expectation cannot be named " + name );
    }
}

ProgramCall Case::callFor( const Form& form ) const {
    ProgramCall call{ { command_ } };
    call.directory = folder_;
    call.command.insert( call.command.end(), form.arguments.begin(), form.arguments.end() );
    if ( form.arguments.front() == "show" )
        std::ranges::copy( lines( "args" ), std::back_inserter( call.command ) );
    call.command.emplace_back( "agent" );
    for ( const std::string& line : lines( "env" ) ) {
        const auto equals = line.find( '=' );
        if ( equals == std::string::npos )
            throw std::runtime_error( "env: expected NAME=value, found '" + line + "'" );
        call.environment.emplace_back( line.substr( 0, equals ), line.substr( equals + 1 ) );
    }
    return call;
}

int Case::expectedExit( const Form& form ) const {
    if ( form.arguments.front() == "tokens" ) {
        const auto all = lines( form.expectation );
        return !all.empty() && all.back().starts_with( "ERROR " ) ? 1 : 0;
    }
    if ( has( "expected.exit" ) )
        return std::stoi( readFile( folder_ / "expected.exit" ) );
    if ( !has( "expected.json" ) )
        throw std::runtime_error( "without expected.json there must be expected.exit" );
    static const std::map<std::string, int> statusOf = {
        { "valid", 0 }, { "invalid", 1 }, { "notAgentFile", 1 }, { "unreadable", 2 } };
    return statusOf.at( nlohmann::json::parse( readFile( folder_ / "expected.json" ) ).at( "outcome" ) );
}

void Case::compare( const std::string& file, const std::string& actual ) {
    if ( accept_ )
        writeFile( folder_ / file, actual );
    if ( const std::string expected = readFile( folder_ / file ); actual != expected )
        fail( file + " differs\n--- expected\n" + expected + "--- actual\n" + actual + "---" );
}

void Case::runForm( const Form& form ) {
    const ProgramResult result = runProgram( callFor( form ) );
    compare( form.expectation, result.out );
    if ( form.arguments.front() == "show" ) {
        if ( has( "expected.stderr" ) )
            compare( "expected.stderr", result.err );
        if ( has( "expected.exit" ) )
            compare( "expected.exit", std::to_string( result.exitStatus ) + "\n" );
    }
    if ( const int expected = expectedExit( form ); result.exitStatus != expected )
        fail( form.expectation + ": exit status " + std::to_string( result.exitStatus ) + ", expected " +
              std::to_string( expected ) );
    if ( !passed_ )
        std::cout << "--- standard error\n" << result.err << "---\n";
}

bool Case::run() {
    try {
        checkFiles();
        if ( accept_ &&
             std::ranges::none_of( forms, [&]( const Form& form ) { return has( form.expectation ); } ) )
            writeFile( folder_ / forms.front().expectation, "" );
        bool expectsSomething = false;
        for ( const Form& form : forms ) {
            if ( !has( form.expectation ) )
                continue;
            expectsSomething = true;
            runForm( form );
        }
        if ( !expectsSomething )
            fail( "there is no expected.json, expected.tree, expected.origin or expected.tokens" );
    } catch ( const std::exception& exception ) {
        fail( exception.what() );
    }
    return passed_;
}

} // namespace

int main( int argc, char** argv ) {
    if ( argc != 3 ) {
        std::cerr << "usage: conformance_case COMMAND FOLDER\n";
        return 2;
    }
    return Case( argv[1], argv[2] ).run() ? 0 : 1;
}
