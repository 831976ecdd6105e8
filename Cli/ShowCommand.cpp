#include "Cli/ShowCommand.h"

#include "Cli/AgentRun.h"
#include "Cli/Diagnostics.h"
#include "Cli/JsonOrigins.h"
#include "Cli/OriginRecord.h"
#include "Cli/TreeWriter.h"
#include "ProfileDocument/JsonDocument.h"

#include <CLI/CLI.hpp>

namespace Corvid::Cli {

ShowCommand::ShowCommand( CLI::App& program )
    : Command( *program.add_subcommand( "show", "Print the profile record that an agent file yields" ) ) {
    addOptions( *program.get_subcommand( "show" ) );
}

void ShowCommand::addOptions( CLI::App& app ) {
    app.add_option( "FILE", file_, "The agent file" )->required()->type_name( "" );
    auto* json = app.add_flag( "--json", json_, "Print one JSON object" );
    app.add_flag( "--tree", tree_, "Print for people (the default)" )->excludes( json );
    app.add_flag( "--origin", origin_, "Tell for everything the file and line that gave it" );
    stageOptions_.addTo( app );
    app.footer(
        "Exit status: 0 valid; 1 invalid, or not an agent file; 2 usage error, or a file that cannot be\n"
        "read.\n\n"
        "Examples:\n"
        "  mountprofile show profiles/Fan\n"
        "  mountprofile show --json --system ar --redundancy --cell 2 profiles/Fan" );
}

ExitStatus ShowCommand::run( Console& console ) {
    OriginRecord record;
    OriginRecord* origins = origin_ ? &record : nullptr;
    const AgentRun run = runAgentFile( stageOptions_.setUp(), file_, origins );
    const std::string diagnostics = diagnosticsOf( run, mayBeColoured( console.err ) );
    if ( json_ && origins )
        writeJsonDocument( console.out, run,
                           [&record]( JsonWriter& json ) { writeJsonOrigins( json, record ); } );
    else if ( json_ )
        writeJsonDocument( console.out, run );
    else
        writeTree( console.out, run, mayBeColoured( console.out ), origins );
    console.out.flush();
    console.err.append( diagnostics );
    return exitStatusFor( run.outcome );
}

} // namespace Corvid::Cli
