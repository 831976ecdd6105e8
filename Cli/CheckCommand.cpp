#include "Cli/CheckCommand.h"

#include "Cli/AgentFileList.h"
#include "Cli/CheckReport.h"
#include "Cli/OrderedWork.h"
#include "Cli/ProgressBar.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace Corvid::Cli {

namespace {

/// What a check keeps of a file; the profile itself is dropped by the thread that made it.
struct CheckedFile {
    Outcome outcome = Outcome::unreadable;
    bool passedOver = false;
    std::string description;
};

CheckedFile check( const ListedFile& file, const Stage& stage, const CheckReport& report ) {
    AgentRun run;
    if ( file.problem.empty() ) {
        run = runAgentFile( stage, file.path );
    } else {
        run.agentFile = file.path;
        run.reason = file.problem;
    }
    // Directories hold more than agent files. What is wrong in an include file shows in the files that
    // include it.
    if ( file.fromDirectory && run.handler && run.outcome != Outcome::unreadable &&
         run.handler->maybeIncludeFile() )
        return { run.outcome, true, {} };
    return { run.outcome, false, report.describe( run ) };
}

void count( const CheckedFile& file, CheckCounts& counts ) {
    if ( file.passedOver )
        ++counts.passedOver;
    else if ( file.outcome == Outcome::valid )
        ++counts.valid;
    else if ( file.outcome == Outcome::invalid )
        ++counts.invalid;
    else if ( file.outcome == Outcome::notAgentFile )
        ++counts.notAgentFile;
    else
        ++counts.unreadable;
}

std::size_t processors() {
    return std::max( 1U, std::thread::hardware_concurrency() );
}

/// Several threads share the stage and the store's texts; that needs counts that are atomic.
std::size_t threadsFor( std::size_t jobs ) {
    return KIV_THREAD_SAFE_POINTERS ? jobs : 1;
}

} // namespace

CheckCommand::CheckCommand( CLI::App& program )
    : Command( *program.add_subcommand( "check", "Check files, and the agent files in directories" ) ),
      jobs_( static_cast<unsigned>( processors() ) ) {
    addOptions( *program.get_subcommand( "check" ) );
}

void CheckCommand::addOptions( CLI::App& app ) {
    app.add_option( "PATH", paths_, "Agent files, and directories: the agent files in them and below" )
        ->required()
        ->type_name( "" );
    app.add_option( "--format", format_, "How to tell what was found: text (the default)" )
        ->type_name( "text" )
        ->check( CLI::IsMember( { "text" } ).description( "" ) );
    app.add_option( "--jobs", jobs_,
                    "How many files to check at a time; as many as there are processors if not given" )
        ->type_name( "N" )
        ->check( CLI::Range( 1, 1024 ).description( "" ) );
    stageOptions_.addTo( app );
    app.footer(
        "Files in a directory that are not agent files, such as include files, are counted and passed "
        "over.\n\n"
        "Exit status: 0 all are valid; 1 a file is invalid, or not an agent file; 2 usage error, or a file\n"
        "that cannot be read. The highest of all files counts.\n\n"
        "Example:\n"
        "  mountprofile check --jobs 4 profiles extra/Fan" );
}

ExitStatus CheckCommand::run( Console& console ) {
    const Stage stage = stageOptions_.setUp();
    const auto report = newTextReport( console );
    const auto files = listFiles( paths_ );
    ProgressBar progress( console.err, isCapableTerminal( console.err ), files.size(),
                          ProgressBar::Clock::now() );
    OrderedWork<CheckedFile> work( files.size(), threadsFor( jobs_ ), [&]( std::size_t number ) {
        return check( files[number], stage, *report );
    } );
    CheckCounts counts;
    ExitStatus status = ExitStatus::valid;
    for ( std::size_t taken = 0; taken < files.size(); ) {
        progress.show( work.done(), ProgressBar::Clock::now() );
        const auto file = work.take( std::chrono::milliseconds( 100 ) );
        if ( !file )
            continue;
        ++taken;
        count( *file, counts );
        if ( !file->passedOver )
            status = std::max( status, exitStatusFor( file->outcome ) );
        if ( file->description.empty() )
            continue;
        progress.erase();
        report->file( file->description );
    }
    progress.erase();
    report->end( counts );
    return status;
}

} // namespace Corvid::Cli
