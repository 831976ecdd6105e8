#include "Cli/AgentFileList.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <iterator>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace Corvid::Cli {

namespace {

struct CloseDirectory {
    void operator()( DIR* stream ) const noexcept { ::closedir( stream ); }
};

/// What an entry of a directory is, a DT_ number; links and what cannot be told are looked at.
unsigned char typeOf( const dirent& entry, const std::string& path ) {
    if ( entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN )
        return entry.d_type;
    struct stat status {};
    if ( ::lstat( path.c_str(), &status ) == 0 && S_ISDIR( status.st_mode ) )
        return DT_DIR;
    return ::stat( path.c_str(), &status ) == 0 && S_ISREG( status.st_mode ) ? DT_REG : DT_UNKNOWN;
}

/// Lists one directory; the directories in it are left to the caller, who goes on with them.
/// (The standard library's iterators end the process when they have no memory for an entry's name.)
void listDirectory( const std::string& directory, std::vector<ListedFile>& files,
                    std::vector<std::string>& pending ) {
    const std::unique_ptr<DIR, CloseDirectory> stream( ::opendir( directory.c_str() ) );
    if ( !stream ) {
        files.push_back( { directory, true, std::strerror( errno ) } );
        return;
    }
    const std::string prefix = directory.ends_with( '/' ) ? directory : directory + "/";
    const dirent* entry = nullptr;
    while ( errno = 0, entry = ::readdir( stream.get() ) ) {
        const std::string_view name = entry->d_name;
        if ( name == "." || name == ".." )
            continue;
        const std::string path = prefix + entry->d_name;
        const unsigned char type = typeOf( *entry, path );
        if ( type == DT_REG )
            files.push_back( { path, true, {} } );
        else if ( type == DT_DIR )
            pending.push_back( path );
    }
    if ( errno != 0 )
        files.push_back( { directory, true, std::strerror( errno ) } );
}

bool isDirectory( const std::string& path ) {
    struct stat status {};
    return ::stat( path.c_str(), &status ) == 0 && S_ISDIR( status.st_mode );
}

std::vector<ListedFile> filesBelow( const std::string& path ) {
    std::vector<ListedFile> files;
    std::vector<std::string> pending{ path };
    while ( !pending.empty() ) {
        const std::string directory = std::move( pending.back() );
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
        if ( isDirectory( path ) )
            std::ranges::move( filesBelow( path ), std::back_inserter( files ) );
        else
            files.push_back( { path, false, {} } );
    }
    return files;
}

} // namespace Corvid::Cli
