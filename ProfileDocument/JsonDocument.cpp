#include "ProfileDocument/JsonDocument.h"

#include <array>
#include <map>
#include <string_view>

namespace Corvid {

namespace {

/// Writes straight through: a profile may hold a million mounts.
class Writer {
  public:
    explicit Writer( TextSink& out ) : out_( out ) {}

    void document( const HandlerRun& run );

  private:
    void profile( const PassiveAgentProfile& profile );
    void mountGroups( const PassiveAgentProfile::MountGroupMap& groups );
    void mountGroup( const PassiveMountGroup& group );
    void mount( const Mount& mount );
    void mountFilter( const MountFilter& filter );
    void error( const RecognitionError& error );

    void text( std::string_view text );
    void value( std::string_view value ) { text( value ); }
    void value( bool value ) { out_.append( value ? "true" : "false" ); }

    /// A key, with all that stands before it.
    void key( std::string_view before, std::string_view key ) {
        out_.append( before );
        text( key );
        out_.append( ": " );
    }
    template <class Range, class WriteItem>
    void list( char open, char close, std::string_view separator, const Range& items, WriteItem writeItem ) {
        out_.append( open );
        bool first = true;
        for ( const auto& item : items ) {
            if ( !first )
                out_.append( separator );
            first = false;
            writeItem( item );
        }
        out_.append( close );
    }
    template <class Range>
    void texts( const Range& items ) {
        list( '[', ']', ", ", items, [this]( const auto& item ) { text( item ); } );
    }
    template <class Map>
    void map( const Map& items ) {
        list( '{', '}', ", ", items, [this]( const auto& item ) {
            key( "", item.first );
            value( item.second );
        } );
    }

    TextSink& out_;
};

/// Which bytes cannot stand for themselves inside a JSON text.
constexpr auto mustBeEscaped = [] {
    std::array<bool, 256> table{};
    for ( unsigned byte = 0; byte < table.size(); ++byte )
        table[byte] = byte < 0x20 || byte >= 0x7F || byte == '"' || byte == '\\';
    return table;
}();

void Writer::text( std::string_view text ) {
    static constexpr char digits[] = "0123456789ABCDEF";
    out_.append( '"' );
    std::size_t done = 0;
    for ( std::size_t at = 0; at < text.size(); ++at ) {
        const auto byte = static_cast<unsigned char>( text[at] );
        if ( !mustBeEscaped[byte] )
            continue;
        out_.append( text.substr( done, at - done ) );
        done = at + 1;
        const char simple[] = { '\\', text[at] };
        const char coded[] = { '\\', 'u', '0', '0', digits[byte >> 4], digits[byte & 0xF] };
        const bool isSimple = byte == '"' || byte == '\\';
        out_.append( isSimple ? std::string_view( simple, 2 ) : std::string_view( coded, 6 ) );
    }
    out_.append( text.substr( done ) );
    out_.append( '"' );
}

void Writer::error( const RecognitionError& error ) {
    key( "{", "fileName" );
    text( error.fileName() );
    key( ", ", "includeFileName" );
    text( error.includeFileName() );
    key( ", ", "line" );
    out_.appendNumber( error.line() );
    key( ", ", "charPositionInLine" );
    out_.appendNumber( error.charPositionInLine() );
    key( ", ", "exceptionType" );
    out_.appendNumber( error.exceptionType() );
    key( ", ", "recognizer" );
    text( error.recognizer() );
    key( ", ", "description" );
    text( error.description() );
    key( ", ", "sourceLine" );
    text( error.sourceLine() );
    out_.append( '}' );
}

void Writer::mountFilter( const MountFilter& filter ) {
    key( "{", "enabled" );
    value( filter.enabled() != 0 );
    key( ", ", "attrFilter" );
    std::map<std::string_view, std::string_view> ordered;
    for ( const auto& [name, attrFilter] : filter.attrFilter() )
        ordered.emplace( name, attrFilter.filterKey() );
    map( ordered );
    out_.append( '}' );
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
    out_.append( '}' );
}

void Writer::mountGroup( const PassiveMountGroup& group ) {
    key( "{", "priority" );
    out_.appendNumber( group.priority() );
    key( ", ", "blockingConditional" );
    value( group.blockingConditional() );
    key( ", ", "entireCondition" );
    text( group.entireCondition() );
    key( ",\n       ", "conditionCol" );
    texts( group.conditionCol() );
    key( ", ", "templateConditionCol" );
    map( group.templateConditionCol() );
    key( ",\n       ", "mountProfile" );
    list( '[', ']', ",", group.mountProfile(), [this]( const auto& item ) { mount( item.second ); } );
    out_.append( '}' );
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
    out_.append( '}' );
}

void Writer::document( const HandlerRun& run ) {
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
            out_.append( "null" );
        key( ",\n ", "subAgents" );
        texts( run.handler->subAgents() );
        key( ",\n ", "errorDesc" );
        error( run.handler->errorDesc() );
    }
    out_.append( "}\n" );
}

} // namespace

void writeJsonDocument( TextSink& out, const HandlerRun& run ) {
    Writer( out ).document( run );
}

} // namespace Corvid
