// {"mounts":[{"path":"…","type":"…","flags":"…"},…]}
#include "Loaders.h"

#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <simdjson.h>

#include <stdexcept>

namespace Bench {

namespace {

std::string_view textOf( const rapidjson::Value& value ) {
    return { value.GetString(), value.GetStringLength() };
}

} // namespace

Loaded loadWithRapidJson( const std::string& fileName ) {
    std::string text = wholeFile( fileName );
    rapidjson::Document document;
    document.ParseInsitu( text.data() );
    if ( document.HasParseError() )
        throw std::runtime_error( rapidjson::GetParseError_En( document.GetParseError() ) );
    RecordMap records;
    for ( const rapidjson::Value& mount : document["mounts"].GetArray() )
        addRecord( records, textOf( mount["path"] ), textOf( mount["type"] ), textOf( mount["flags"] ) );
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

Loaded loadWithSimdjsonDom( const std::string& fileName ) {
    simdjson::dom::parser parser;
    RecordMap records;
    for ( const simdjson::dom::element mount : parser.load( fileName )["mounts"].get_array() )
        addRecord( records, mount["path"], mount["type"], mount["flags"] );
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

Loaded loadWithSimdjsonOnDemand( const std::string& fileName ) {
    const simdjson::padded_string text = simdjson::padded_string::load( fileName );
    simdjson::ondemand::parser parser;
    simdjson::ondemand::document document = parser.iterate( text );
    RecordMap records;
    for ( simdjson::ondemand::object mount : document["mounts"] ) {
        const std::string_view path = mount["path"];
        const std::string_view type = mount["type"];
        const std::string_view flags = mount["flags"];
        addRecord( records, path, type, flags );
    }
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

Loaded loadWithNlohmann( const std::string& fileName ) {
    const nlohmann::json document = nlohmann::json::parse( wholeFile( fileName ) );
    RecordMap records;
    for ( const nlohmann::json& mount : document["mounts"] )
        addRecord( records, mount["path"].get_ref<const std::string&>(),
                   mount["type"].get_ref<const std::string&>(),
                   mount["flags"].get_ref<const std::string&>() );
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

} // namespace Bench
