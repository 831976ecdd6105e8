#include "Cli/ReadingOptions.h"

#include "Cli/Depfile.h"
#include "Cli/StandardInput.h"

#include <stdexcept>

namespace Corvid::Cli {

ListedFile ReadingOptions::named( const std::string& path ) {
    if ( path != standardInputPath )
        return { path, false, {}, {} };
    if ( std::exchange( hasReadStandardInput_, true ) )
        throw std::runtime_error( "standard input can be read only once" );
    StandardInput input = readStandardInput();
    return { stdinPath_.value_or( "<stdin>" ), false, input.problem, std::move( input.text ) };
}

void ReadingOptions::check() const {
    if ( stdinPath_ && !hasReadStandardInput_ )
        throw std::runtime_error( "--stdin-path is about a file that is given as -" );
}

std::optional<Diagnostic> ReadingOptions::finish( Output& out, ExitStatus status ) const {
    if ( listFiles_ )
        files_.write( out );
    if ( !depfile_ || status == ExitStatus::trouble )
        return std::nullopt;
    try {
        writeDepfile( *depfile_, files_.names() );
    } catch ( const std::runtime_error& error ) {
        return usageError( error.what() );
    }
    return std::nullopt;
}

AgentRun runListedFile( const Stage& stage, const ListedFile& file, RunObserver* observer ) {
    if ( file.problem.empty() )
        return runAgentFile( stage, file.path, observer, file.text );
    AgentRun run;
    run.agentFile = file.path;
    run.exception = file.problem;
    run.reason = file.problem;
    return run;
}

} // namespace Corvid::Cli
