#include "ProfileDocument/JsonDocument.h"

#include <map>
#include <string_view>

namespace Corvid {

namespace {

/// Writes straight through: a profile may hold a million mounts.
class Writer : JsonWriter {
  public:
    using JsonWriter::JsonWriter;

    void document( const HandlerRun& run, const std::function<void( JsonWriter& )>& writeOrigins );

  private:
    void profile( const PassiveAgentProfile& profile );
    void mountGroups( const PassiveAgentProfile::MountGroupMap& groups );
    void mountGroup( const PassiveMountGroup& group );
    void mount( const Mount& mount );
    void mountFilter( const MountFilter& filter );
    void error( const RecognitionError& error );
};

void Writer::error( const RecognitionError& error ) {
    key( "{", "fileName" );
    text( error.fileName() );
    key( ", ", "includeFileName" );
    text( error.includeFileName() );
    key( ", ", "line" );
    number( error.line() );
    key( ", ", "charPositionInLine" );
    number( error.charPositionInLine() );
    key( ", ", "exceptionType" );
    number( error.exceptionType() );
    key( ", ", "recognizer" );
    text( error.recognizer() );
    key( ", ", "description" );
    text( error.description() );
    key( ", ", "sourceLine" );
    text( error.sourceLine() );
    append( '}' );
}

void Writer::mountFilter( const MountFilter& filter ) {
    key( "{", "enabled" );
    value( filter.enabled() != 0 );
    key( ", ", "attrFilter" );
    list( '{', '}', ", ", filter.attrFilter(), [this]( const auto& item ) {
        key( "", item.first );
        text( item.second.filterKey() );
    } );
    append( '}' );
}

void Writer::mount( const Mount& mount ) {
    key( "\n         {", "path" );
    text( mount.path() );
    key( ", ", "type" );
    text( mount.type() );
    key( ", ", "flags" );
    text( mount.flags() );
    key( ", ", "mountFilter" );
    mountFilter( mount.mountFilter() );
    append( '}' );
}

void Writer::mountGroup( const PassiveMountGroup& group ) {
    key( "{", "priority" );
    number( group.priority() );
    key( ", ", "blockingConditional" );
    value( group.blockingConditional() );
    key( ", ", "entireCondition" );
    text( group.entireCondition() );
    key( ",\n       ", "conditionCol" );
    texts( group.conditionCol() );
    key( ", ", "templateConditionCol" );
    map( group.templateConditionCol() );
    key( ",\n       ", "mountProfile" );
    list( '[', ']', ",", group.mountProfile(), [this]( const auto& item ) { mount( item ); } );
    append( '}' );
}

void Writer::mountGroups( const PassiveAgentProfile::MountGroupMap& groups ) {
    list( '{', '}', ",", groups, [this]( const auto& item ) {
        key( "\n     ", item.first );
        mountGroup( *item.second );
    } );
}

void Writer::profile( const PassiveAgentProfile& profile ) {
    key( "{", "name" );
    text( profile.name() );
    key( ", ", "validProfile" );
    value( profile.validProfile() );
    key( ",\n   ", "errorDesc" );
    error( profile.errorDesc() );
    key( ",\n   ", "rootFlags" );
    text( profile.rootFlags() );
    key( ", ", "hybridMount" );
    value( profile.hybridMount() );
    key( ", ", "lowMountPrio" );
    value( profile.lowMountPrio() );
    key( ", ", "noDefaultMountGroup" );
    value( profile.noDefaultMountGroup() );
    key( ",\n   ", "templateKey" );
    list( '[', ']', ", ", profile.templateKey(), [this]( const auto& item ) { text( item.second ); } );
    key( ", ", "aliasKey" );
    map( profile.aliasKey() );
    key( ",\n   ", "mountGroup" );
    mountGroups( profile.mountGroup() );
    append( '}' );
}

void Writer::document( const HandlerRun& run, const std::function<void( JsonWriter& )>& writeOrigins ) {
    key( "{", "agentFile" );
    text( run.agentFile );
    key( ",\n ", "outcome" );
    text( nameOf( run.outcome ) );
    if ( run.outcome == Outcome::unreadable ) {
        key( ",\n ", "exception" );
        text( run.exception );
    } else {
        key( ",\n ", "profile" );
        if ( run.handler->agentProfile() )
            profile( *run.handler->agentProfile() );
        else
            append( "null" );
        key( ",\n ", "subAgents" );
        texts( run.handler->subAgents() );
        key( ",\n ", "errorDesc" );
        error( run.handler->errorDesc() );
        if ( writeOrigins ) {
            key( ",\n ", "origin" );
            writeOrigins( *this );
        }
    }
    append( "}\n" );
}

} // namespace

void writeJsonDocument( TextSink& out, const HandlerRun& run,
                        const std::function<void( JsonWriter& )>& writeOrigins ) {
    Writer( out ).document( run, writeOrigins );
}

} // namespace Corvid
