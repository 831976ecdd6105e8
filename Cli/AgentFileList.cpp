#include "Cli/AgentFileList.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace Corvid::Cli {

namespace {

namespace fs = std::filesystem;

/// Lists one directory; the directories in it are left to the caller, who goes on with them.
void listDirectory( const fs::path& directory, std::vector<ListedFile>& files,
                    std::vector<fs::path>& pending ) {
    std::error_code error;
    fs::directory_iterator entry( directory, error );
    for ( ; !error && entry != fs::directory_iterator(); entry.increment( error ) ) {
        std::error_code ignored; // what cannot be looked at is neither a directory nor a regular file
        if ( entry->is_regular_file( ignored ) )
            files.push_back( { entry->path().string(), true, {} } );
        else if ( entry->is_directory( ignored ) && !entry->is_symlink( ignored ) )
            pending.push_back( entry->path() );
    }
    if ( error )
        files.push_back( { directory.string(), true, error.message() } );
}

std::vector<ListedFile> filesBelow( const std::string& path ) {
    std::vector<ListedFile> files;
    std::vector<fs::path> pending{ path };
    while ( !pending.empty() ) {
        const fs::path directory = std::move( pending.back() );
        pending.pop_back();
        listDirectory( directory, files, pending );
    }
    std::ranges::sort( files, {}, &ListedFile::path );
    return files;
}

} // namespace

std::vector<ListedFile> listFiles( const std::vector<std::string>& paths ) {
    std::vector<ListedFile> files;
    for ( const std::string& path : paths ) {
        std::error_code ignored;
        if ( fs::is_directory( path, ignored ) )
            std::ranges::move( filesBelow( path ), std::back_inserter( files ) );
        else
            files.push_back( { path, false, {} } );
    }
    return files;
}

} // namespace Corvid::Cli
