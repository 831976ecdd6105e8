#include "Loaders.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

namespace Bench {

namespace {

constexpr auto allLoaders = std::to_array<Loader>( {
    { "ours", "profile", loadWithHandler },
    { "ours-plain", "profile", loadWithPlainTokens },
    { "floor-map", "profile", loadWithFloor },
    { "floor-cheap", "profile", loadWithCheapFloor },
#ifdef BENCH_PEERS
    { "rapidjson", "json", loadWithRapidJson },
    { "simdjson-dom", "json", loadWithSimdjsonDom },
    { "simdjson-ondemand", "json", loadWithSimdjsonOnDemand },
    { "flex-bison", "profile", loadWithFlexBison },
    { "libmount", "fstab", loadWithLibmount },
    { "libyaml", "yaml", loadWithLibyaml },
    { "nlohmann", "json", loadWithNlohmann },
    { "tomlplusplus", "toml", loadWithTomlPlusPlus },
    { "yaml-cpp", "yaml", loadWithYamlCpp },
#endif
} );

} // namespace

std::span<const Loader> loaders() {
    return allLoaders;
}

const Loader* loaderOf( std::string_view name ) {
    const auto found = std::ranges::find( allLoaders, name, &Loader::name );
    return found == allLoaders.end() ? nullptr : &*found;
}

void LoadedRecords::visit( const MountVisitor& visitor ) const {
    for ( const auto& [path, record] : records_ )
        visitor( path, record.type, record.flags );
}

std::string wholeFile( const std::string& fileName ) {
    std::unique_ptr<std::FILE, int ( * )( std::FILE* )> file( std::fopen( fileName.c_str(), "rb" ),
                                                              std::fclose );
    if ( !file || std::fseek( file.get(), 0, SEEK_END ) != 0 )
        throw std::runtime_error( "cannot read " + fileName );
    std::setvbuf( file.get(), nullptr, _IONBF, 0 );
    std::string text( static_cast<std::size_t>( std::ftell( file.get() ) ), '\0' );
    std::rewind( file.get() );
    if ( std::fread( text.data(), 1, text.size(), file.get() ) != text.size() )
        throw std::runtime_error( "cannot read " + fileName );
    return text;
}

} // namespace Bench
