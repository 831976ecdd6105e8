#include "Cli/JsonOrigins.h"

#include <array>

namespace Corvid::Cli {

namespace {

using Statements = OriginRecord::Statements;

const char* nameOf( Origin::Kind kind ) {
    switch ( kind ) {
    case Origin::Kind::line:
        return "line";
    case Origin::Kind::configuredPath:
        return "configuredPath";
    case Origin::Kind::implicit:
        break;
    }
    return "default";
}

class Writer {
  public:
    explicit Writer( JsonWriter& json ) : json_( json ) {}

    void record( const OriginRecord& record );

  private:
    /// The key "origin" and its place, which end an object.
    void origin( std::string_view before, const OriginRecord::Place& place );
    /// An object for each: its text under that key, if there is one, and its place.
    void statements( std::string_view before, const char* name, const char* key, const Statements& items );
    void filter( const OriginRecord::Filter& filter );
    void group( const OriginRecord::Group& group );
    void mountStep( const OriginRecord::MountStep& step );

    JsonWriter& json_;
};

void Writer::origin( std::string_view before, const OriginRecord::Place& place ) {
    json_.key( before, "origin" );
    json_.key( "{", "kind" );
    json_.text( nameOf( place.kind ) );
    if ( place.file ) {
        json_.key( ", ", "file" );
        json_.text( *place.file );
        json_.key( ", ", "line" );
        json_.number( place.line );
    }
    if ( const OriginRecord::Include* include = place.include ) {
        json_.key( ", ", "includedFrom" );
        json_.key( "{", "file" );
        json_.text( *include->agentFile );
        json_.key( ", ", "line" );
        json_.number( include->line );
        json_.key( ", ", "pattern" );
        json_.text( include->pattern );
        json_.append( '}' );
    }
    json_.append( "}}" );
}

void Writer::statements( std::string_view before, const char* name, const char* key,
                         const Statements& items ) {
    json_.key( before, name );
    json_.list( '[', ']', ",", items, [this, key]( const OriginRecord::Statement& statement ) {
        json_.append( "\n     {" );
        if ( key ) {
            json_.key( "", key );
            json_.text( statement.text );
        }
        origin( key ? ", " : "", statement.place );
    } );
}

void Writer::filter( const OriginRecord::Filter& filter ) {
    json_.key( "{", "attrFilter" );
    json_.list( '{', '}', ",", filter.attributes, [this]( const auto& item ) {
        statements( "\n     ", item.first.c_str(), "filterKey", item.second );
    } );
    origin( ", ", filter.place );
}

void Writer::mountStep( const OriginRecord::MountStep& step ) {
    json_.key( "\n         {", "flags" );
    json_.text( step.flags );
    json_.key( ", ", "added" );
    json_.text( step.added );
    json_.key( ", ", "mountFilter" );
    json_.text( step.filter );
    origin( ", ", step.place );
}

void Writer::group( const OriginRecord::Group& group ) {
    json_.key( "{", "opened" );
    json_.list( '[', ']', ",", group.openings, [this]( const OriginRecord::Opening& opening ) {
        json_.key( "\n     {", "priority" );
        json_.number( opening.priority );
        origin( ", ", opening.place );
    } );
    statements( ",\n    ", "blockingConditional", nullptr, group.blocking );
    statements( ",\n    ", "entireCondition", "text", group.wholeConditions );
    statements( ",\n    ", "conditionCol", "text", group.conditions );
    Statements templateConditions;
    for ( const auto& [text, place] : group.templateConditions )
        templateConditions.push_back( { text, place } );
    statements( ",\n    ", "templateConditionCol", "text", templateConditions );
    json_.key( ",\n    ", "mountProfile" );
    json_.list( '{', '}', ",", group.mounts, [this]( const auto& item ) {
        json_.key( "\n      ", item.first );
        json_.list( '[', ']', ",", item.second, [this]( const auto& step ) { mountStep( step ); } );
    } );
    json_.append( '}' );
}

void Writer::record( const OriginRecord& record ) {
    struct Kind {
        const char* name;
        AgentStatement statement;
        const char* key;
    };
    static constexpr std::array kinds = {
        Kind{ "agentName", AgentStatement::agentName, "text" },
        Kind{ "templateKey", AgentStatement::templateKey, "text" },
        Kind{ "aliasKey", AgentStatement::alias, "text" },
        Kind{ "hybridMount", AgentStatement::hybridMount, nullptr },
        Kind{ "lowMountPrio", AgentStatement::lowMountPrio, nullptr },
        Kind{ "noDefaultMountGroup", AgentStatement::noDefaultMountGroup, nullptr },
        Kind{ "rootFlags", AgentStatement::rootFlags, "text" },
        Kind{ "subAgents", AgentStatement::subAgent, "text" } };
    const char* before = "{";
    for ( const Kind& kind : kinds ) {
        statements( before, kind.name, kind.key, record.statements( kind.statement ) );
        before = ",\n   ";
    }
    json_.key( before, "mountFilter" );
    json_.list( '{', '}', ",", record.filters(), [this]( const auto& item ) {
        json_.key( "\n    ", item.first );
        filter( item.second );
    } );
    json_.key( before, "mountGroup" );
    json_.list( '{', '}', ",", record.groups(), [this]( const auto& item ) {
        json_.key( "\n    ", item.first );
        group( item.second );
    } );
    json_.append( '}' );
}

} // namespace

void writeJsonOrigins( JsonWriter& json, const OriginRecord& record ) {
    Writer( json ).record( record );
}

} // namespace Corvid::Cli
