#include "Cli/CheckCommand.h"

#include "Cli/AgentFileList.h"
#include "Cli/OrderedWork.h"
#include "Cli/ProgressBar.h"
#include "Cli/StandardInput.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace Corvid::Cli {

namespace {

/// What a check keeps of a file; the profile itself is dropped by the thread that made it.
struct CheckedFile {
    Outcome outcome = Outcome::unreadable;
    bool passedOver = false;
    std::string description;
    std::vector<std::string> filesRead; ///< if they were asked for
};

/// The beginning of a file that is too large to be read as a whole; nothing for any other.
std::optional<std::string> beginningOfLargeFile( const std::string& path ) {
    std::error_code error;
    const auto size = std::filesystem::file_size( path, error );
    if ( error || size <= MountProfileHdlr::defaultMaxFileSize )
        return std::nullopt;
    std::string text( std::size_t{ 1 } << 20, '\0' );
    std::ifstream stream( path, std::ios::binary );
    // GCOVR_EXCL_BR_START: to root, whom tests may run as, every file is open
    if ( !stream.read( text.data(), std::ssize( text ) ) )
        return std::nullopt; // GCOVR_EXCL_LINE
    // GCOVR_EXCL_BR_STOP
    return text;
}

/// Whether a run is that of a file that begins unlike an agent file, as far as a large one is looked at.
bool isOfOtherFile( const AgentRun& run, const Stage& stage ) {
    if ( run.outcome != Outcome::unreadable )
        return run.handler->maybeIncludeFile();
    const auto beginning = beginningOfLargeFile( run.agentFile );
    return beginning && runAgentFile( stage, run.agentFile, nullptr, beginning ).handler->maybeIncludeFile();
}

CheckedFile check( const ListedFile& file, const Stage& stage, const CheckReport& report, bool noteFiles ) {
    FilesRead filesRead;
    const AgentRun run = runListedFile( stage, file, noteFiles ? &filesRead : nullptr );
    // Directories hold more than agent files. What is wrong in an include file shows in the files that
    // include it.
    if ( file.fromDirectory && isOfOtherFile( run, stage ) )
        return { run.outcome, true, {}, filesRead.take() };
    return { run.outcome, false, report.describe( run ), filesRead.take() };
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

/// Several threads share the stage and the store's texts; that needs counts that are atomic.
std::size_t threadsFor( std::size_t jobs ) {
    return KIV_THREAD_SAFE_POINTERS ? jobs : 1;
}

} // namespace

std::vector<ListedFile> CheckCommand::filesToCheck() {
    std::vector<ListedFile> files;
    for ( const std::string& path : paths_ ) {
        if ( path == standardInputPath )
            files.push_back( readingOptions_.named( path ) );
        else
            std::ranges::move( listFiles( { path } ), std::back_inserter( files ) );
    }
    readingOptions_.check();
    return files;
}

ExitStatus CheckCommand::run( Console& console ) {
    const Stage stage = stageOptions_.setUp();
    readingOptions_.add( stageOptions_.filesRead() );
    const auto report = reportFormat( format_ )->newReport( console );
    const auto files = filesToCheck();
    ProgressBar progress( console.err, isCapableTerminal( console.err ), files.size(),
                          ProgressBar::Clock::now() );
    OrderedWork<CheckedFile> work( files.size(), threadsFor( jobs_ ), [&]( std::size_t number ) {
        return check( files[number], stage, *report, readingOptions_.asksForFiles() );
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
        readingOptions_.add( file->filesRead );
        if ( !file->passedOver )
            status = std::max( status, exitStatusFor( file->outcome ) );
        if ( file->description.empty() )
            continue;
        progress.erase();
        report->file( file->description );
    }
    progress.erase();
    return finish( console, *report, counts, status );
}

ExitStatus CheckCommand::finish( Console& console, CheckReport& report, const CheckCounts& counts,
                                 ExitStatus status ) const {
    const auto problem = readingOptions_.finish( console.out, status );
    if ( problem )
        status = ExitStatus::trouble;
    if ( !readingOptions_.asksForList() )
        report.end( counts, status, problem );
    else if ( problem )
        report.usageError( *problem );
    return status;
}

} // namespace Corvid::Cli
