// In place of libFuzzer: gives a target each file that the arguments name, directories' files included.

#include "Laws.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size );

namespace {

std::vector<std::filesystem::path> filesOf( const std::filesystem::path& path ) {
    if ( !std::filesystem::is_directory( path ) )
        return { path };
    std::vector<std::filesystem::path> files;
    for ( const auto& entry : std::filesystem::directory_iterator( path ) )
        files.push_back( entry.path() );
    std::ranges::sort( files );
    return files;
}

bool replay( const std::filesystem::path& file ) {
    std::ifstream in( file, std::ios::binary );
    const std::string content{ std::istreambuf_iterator<char>( in ), {} };
    if ( !in )
        return false;
    LLVMFuzzerTestOneInput( reinterpret_cast<const std::uint8_t*>( content.data() ), content.size() );
    return true;
}

} // namespace

int main( int argc, char** argv ) {
    CorvidFuzz::checkAllInputs();
    std::size_t replayed = 0;
    for ( int i = 1; i < argc; ++i ) {
        for ( const auto& file : filesOf( argv[i] ) ) {
            if ( !replay( file ) ) {
                std::fprintf( stderr, "cannot read %s\n", file.c_str() );
                return 2;
            }
            ++replayed;
        }
    }
    std::printf( "%zu inputs replayed\n", replayed );
    return replayed == 0 ? 2 : 0;
}
