// mounts:
// - path: …
//   type: …
//   flags: …
#include "Loaders.h"

#include <yaml-cpp/yaml.h>
#include <yaml.h>

#include <stdexcept>

namespace Bench {

namespace {

/// One event of libyaml's parser; freed with its content.
class Event {
  public:
    explicit Event( yaml_parser_t& parser ) {
        if ( yaml_parser_parse( &parser, &event_ ) == 0 )
            throw std::runtime_error( parser.problem );
    }
    Event( const Event& ) = delete;
    Event& operator=( const Event& ) = delete;
    ~Event() { yaml_event_delete( &event_ ); }
    [[nodiscard]] yaml_event_type_t type() const { return event_.type; }
    [[nodiscard]] std::string_view scalar() const {
        return { reinterpret_cast<const char*>( event_.data.scalar.value ), event_.data.scalar.length };
    }

  private:
    yaml_event_t event_;
};

struct Parser : yaml_parser_t {
    Parser() {
        if ( yaml_parser_initialize( this ) == 0 )
            throw std::bad_alloc();
    }
    Parser( const Parser& ) = delete;
    Parser& operator=( const Parser& ) = delete;
    ~Parser() { yaml_parser_delete( this ); }
};

/// Reads the pairs of one mapping that has begun.
void readMount( Parser& parser, RecordMap& records ) {
    std::string path;
    std::string type;
    std::string flags;
    for ( ;; ) {
        const Event key( parser );
        if ( key.type() == YAML_MAPPING_END_EVENT )
            break;
        const Event value( parser );
        if ( key.type() != YAML_SCALAR_EVENT || value.type() != YAML_SCALAR_EVENT )
            throw std::runtime_error( "a mount is a mapping of texts" );
        ( key.scalar() == "path" ? path : key.scalar() == "type" ? type : flags ) = value.scalar();
    }
    records.insert_or_assign( records.end(), std::move( path ),
                              Record{ std::move( type ), std::move( flags ), {} } );
}

} // namespace

Loaded loadWithLibyaml( const std::string& fileName ) {
    const std::string text = wholeFile( fileName );
    Parser parser;
    yaml_parser_set_input_string( &parser, reinterpret_cast<const unsigned char*>( text.data() ),
                                  text.size() );
    RecordMap records;
    bool inMounts = false;
    for ( ;; ) {
        const Event event( parser );
        if ( event.type() == YAML_STREAM_END_EVENT )
            break;
        if ( event.type() == YAML_SEQUENCE_START_EVENT )
            inMounts = true;
        else if ( event.type() == YAML_MAPPING_START_EVENT && inMounts )
            readMount( parser, records );
    }
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

Loaded loadWithYamlCpp( const std::string& fileName ) {
    const YAML::Node document = YAML::LoadFile( fileName );
    RecordMap records;
    for ( const YAML::Node& mount : document["mounts"] )
        addRecord( records, mount["path"].Scalar(), mount["type"].Scalar(), mount["flags"].Scalar() );
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

} // namespace Bench
