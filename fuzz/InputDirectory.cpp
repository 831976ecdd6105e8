#include "InputDirectory.h"

#include "Laws.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace CorvidFuzz {

InputDirectory::InputDirectory()
    : path_( ( std::filesystem::temp_directory_path() / "corvid-fuzz-XXXXXX" ).string() ) {
    require( ::mkdtemp( path_.data() ), "the inputs have a directory", path_ );
    path_ += '/';
}

InputDirectory::~InputDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all( path_, ignored );
}

std::string InputDirectory::write( std::string_view name, std::string_view text ) {
    std::string path = pathOf( name );
    const int descriptor = ::open( path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600 );
    require( descriptor >= 0 &&
                 ::write( descriptor, text.data(), text.size() ) == static_cast<ssize_t>( text.size() ),
             "an input can be written", path );
    ::close( descriptor );
    if ( std::ranges::find( written_, path ) == written_.end() )
        written_.push_back( path );
    return path;
}

void InputDirectory::removeAllBut( std::string_view name ) {
    const std::string kept = pathOf( name );
    std::erase_if( written_, [&kept]( const std::string& path ) {
        return path != kept && ::unlink( path.c_str() ) == 0;
    } );
}

} // namespace CorvidFuzz
