// [[mounts]]
// path = "…"
// type = "…"
// flags = "…"
#include "Loaders.h"

#include <toml++/toml.h>

namespace Bench {

Loaded loadWithTomlPlusPlus( const std::string& fileName ) {
    const toml::table document = toml::parse_file( fileName );
    RecordMap records;
    for ( const toml::node& node : *document["mounts"].as_array() ) {
        const toml::table& mount = *node.as_table();
        addRecord( records, mount["path"].as_string()->get(), mount["type"].as_string()->get(),
                   mount["flags"].as_string()->get() );
    }
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

} // namespace Bench
