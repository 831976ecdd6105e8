#include "cli/RunProgram.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace Corvid::Testing {

namespace {

using File = std::unique_ptr<std::FILE, int ( * )( std::FILE* )>;

constexpr int notStarted = 127;
constexpr unsigned patienceInSeconds = 60;

int checked( int result, const char* what ) {
    if ( result < 0 )
        throw std::system_error( errno, std::generic_category(), what );
    return result;
}

File newTemporaryFile() {
    File file( std::tmpfile(), &std::fclose );
    if ( !file )
        throw std::system_error( errno, std::generic_category(), "tmpfile" );
    return file;
}

std::string contentOf( const File& file ) {
    std::string content;
    std::rewind( file.get() );
    std::array<char, 4096> part;
    while ( const std::size_t count = std::fread( part.data(), 1, part.size(), file.get() ) )
        content.append( part.data(), count );
    return content;
}

/// In the child: becomes the program.
[[noreturn]] void become( const ProgramCall& call ) {
    for ( const char* name :
          { "K7_CHROOT", "AGENT_WAIT_FOR_READY", "ACTIVE_CELLID", "KIV_TRACE", "NO_COLOR" } )
        ::unsetenv( name );
    // A finding of a sanitizer must not look like an answer of the command.
    ::setenv( "ASAN_OPTIONS", "exitcode=99", 0 );
    ::setenv( "UBSAN_OPTIONS", "exitcode=99", 0 );
    ::setenv( "TERM", "xterm", 1 );
    for ( const auto& [name, value] : call.environment )
        ::setenv( name.c_str(), value.c_str(), 1 );
    std::vector<char*> arguments;
    for ( const std::string& argument : call.command )
        arguments.push_back( const_cast<char*>( argument.c_str() ) );
    arguments.push_back( nullptr );
    ::alarm( patienceInSeconds );
    if ( ::chdir( call.directory.c_str() ) == 0 )
        ::execv( arguments.front(), arguments.data() );
    std::perror( arguments.front() );
    ::_exit( notStarted );
}

/// In the child: puts standard output where the call wants it.
void redirectOutput( OutputTo output, const File& out ) {
    int descriptor = -1;
    if ( output == OutputTo::text ) {
        descriptor = ::fileno( out.get() );
    } else if ( output == OutputTo::fullDevice ) {
        descriptor = ::open( "/dev/full", O_WRONLY );
    } else if ( output == OutputTo::closedPipe ) {
        int ends[2];
        if ( ::pipe( ends ) != 0 )
            ::_exit( notStarted );
        ::close( ends[0] );
        descriptor = ends[1];
    }
    if ( output == OutputTo::nowhere )
        ::close( STDOUT_FILENO );
    else if ( ::dup2( descriptor, STDOUT_FILENO ) < 0 )
        ::_exit( notStarted );
}

/// A file to be read from its beginning.
File inputFileOf( const std::string& text ) {
    File file = newTemporaryFile();
    std::fwrite( text.data(), 1, text.size(), file.get() );
    std::rewind( file.get() );
    return file;
}

int exitStatusOf( pid_t child ) {
    int status = 0;
    while ( ::waitpid( child, &status, 0 ) < 0 )
        if ( errno != EINTR )
            throw std::system_error( errno, std::generic_category(), "waitpid" );
    if ( WIFSIGNALED( status ) )
        return 128 + WTERMSIG( status );
    if ( WEXITSTATUS( status ) == notStarted )
        throw std::runtime_error( "the program could not be started" );
    return WEXITSTATUS( status );
}

ProgramResult runOnTerminal( const ProgramCall& call ) {
    int terminal = -1;
    const pid_t child = checked( ::forkpty( &terminal, nullptr, nullptr, nullptr ), "forkpty" );
    if ( child == 0 )
        become( call );
    ProgramResult result;
    std::array<char, 4096> part;
    ssize_t count = 0;
    while ( ( count = ::read( terminal, part.data(), part.size() ) ) > 0 )
        result.out.append( part.data(), static_cast<std::size_t>( count ) );
    ::close( terminal );
    result.exitStatus = exitStatusOf( child );
    return result;
}

} // namespace

ProgramResult runProgram( const ProgramCall& call ) {
    if ( call.output == OutputTo::terminal )
        return runOnTerminal( call );
    const File out = newTemporaryFile();
    const File err = newTemporaryFile();
    const File in = inputFileOf( call.input.value_or( "" ) );
    const pid_t child = checked( ::fork(), "fork" );
    if ( child == 0 ) {
        redirectOutput( call.output, out );
        ::dup2( ::fileno( err.get() ), STDERR_FILENO );
        if ( call.input )
            ::dup2( ::fileno( in.get() ), STDIN_FILENO );
        become( call );
    }
    ProgramResult result;
    result.exitStatus = exitStatusOf( child );
    result.out = contentOf( out );
    result.err = contentOf( err );
    return result;
}

std::string readFile( const std::filesystem::path& file ) {
    std::ifstream stream( file, std::ios::binary );
    std::string content{ std::istreambuf_iterator<char>( stream ), {} };
    if ( !stream.is_open() || stream.bad() )
        throw std::runtime_error( "cannot read " + file.string() );
    return content;
}

void writeFile( const std::filesystem::path& file, std::string_view content ) {
    std::ofstream stream( file, std::ios::binary );
    stream << content << std::flush;
    if ( !stream )
        throw std::runtime_error( "cannot write " + file.string() );
}

} // namespace Corvid::Testing
