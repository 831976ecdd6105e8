#include "Cli/ShowCommand.h"

#include "Cli/AgentRun.h"
#include "Cli/Diagnostic.h"
#include "Cli/JsonOrigins.h"
#include "Cli/OriginRecord.h"
#include "Cli/TreeWriter.h"
#include "ProfileDocument/JsonDocument.h"

namespace Corvid::Cli {

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
    readingOptions_.add( stageOptions_.filesRead() );
    const ListedFile file = readingOptions_.named( file_ );
    readingOptions_.check();
    OriginRecord record;
    OriginRecord* origins = origin_ ? &record : nullptr;
    FilesRead filesRead;
    RunObserver* observer = origins; // one observer watches a run, so the options exclude each other
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
