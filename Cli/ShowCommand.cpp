#include "Cli/ShowCommand.h"

#include "Cli/AgentRun.h"
#include "Cli/Diagnostic.h"
#include "Cli/JsonOrigins.h"
#include "Cli/LiteralArguments.h"
#include "Cli/OriginRecord.h"
#include "Cli/TreeWriter.h"
#include "ProfileDocument/JsonDocument.h"

#include <CLI/CLI.hpp>
#include <stdexcept>

namespace Corvid::Cli {

ShowCommand::ShowCommand( CLI::App& program )
    : Command( *program.add_subcommand( "show", "Print the profile record that an agent file yields" ) ) {
    addOptions( *program.get_subcommand( "show" ) );
}

void ShowCommand::addOptions( CLI::App& app ) {
    takeLiterally( *app.add_option( "FILE", file_, "The agent file" )->required()->type_name( "" ) );
    auto* json = app.add_flag( "--json", json_, "Print one JSON object" );
    auto* tree = app.add_flag( "--tree", tree_, "Print for people (the default)" )->excludes( json );
    app.add_flag( "--origin", origin_, "Tell for everything the file and line that gave it" );
    readingOptions_.addTo( app )->excludes( json )->excludes( tree );
    stageOptions_.addTo( app );
    app.footer(
        "The FILE - stands for a file on standard input.\n\n"
        "Exit status: 0 valid; 1 invalid, or not an agent file; 2 usage error, or a file that cannot be\n"
        "read.\n\n"
        "Examples:\n"
        "  mountprofile show profiles/Fan\n"
        "  mountprofile show --json --system ar --redundancy --cell 2 profiles/Fan" );
}

void ShowCommand::print( Console& console, const AgentRun& run, const OriginRecord* origins ) const {
    if ( json_ && origins )
        writeJsonDocument( console.out, run,
                           [origins]( JsonWriter& json ) { writeJsonOrigins( json, *origins ); } );
    else if ( json_ )
        writeJsonDocument( console.out, run );
    else
        writeTree( console.out, run, mayBeColoured( console.out ), origins );
}

ExitStatus ShowCommand::run( Console& console ) {
    const Stage stage = stageOptions_.setUp();
    const ListedFile file = readingOptions_.named( file_ );
    readingOptions_.check();
    if ( origin_ && readingOptions_.asksForFiles() ) // one observer watches a run
        throw std::runtime_error( "--origin excludes --list-files and --depfile" );
    OriginRecord record;
    OriginRecord* origins = origin_ ? &record : nullptr;
    FilesRead filesRead;
    RunObserver* observer = origins;
    if ( readingOptions_.asksForFiles() )
        observer = &filesRead;
    const AgentRun run = runListedFile( stage, file, observer );
    readingOptions_.add( filesRead.take() );
    const std::string diagnostics = diagnosticsOf( run, mayBeColoured( console.err ) );
    if ( !readingOptions_.asksForList() )
        print( console, run, origins );
    const ExitStatus status = exitStatusFor( run.outcome );
    const auto problem = readingOptions_.finish( console.out, status );
    console.out.flush();
    console.err.append( diagnostics );
    if ( !problem )
        return status;
    console.complain( problem->message, problem->code );
    return ExitStatus::trouble;
}

} // namespace Corvid::Cli
