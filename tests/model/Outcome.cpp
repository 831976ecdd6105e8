#include "model/Outcome.h"
#include "model/Bytes.h"

namespace Model {

namespace {

class Listing {
  public:
    void line( const std::string& name, const std::string& value ) {
        text_ += std::string( indent_, ' ' ) + name + ' ' + value + '\n';
    }
    void text( const std::string& name, const std::string& value ) { line( name, escaped( value ) ); }
    void flag( const std::string& name, bool value ) { line( name, value ? "yes" : "no" ); }
    void open( const std::string& name, const std::string& key ) {
        text( name, key );
        indent_ += 2;
    }
    void close() { indent_ -= 2; }
    [[nodiscard]] std::string take() { return std::move( text_ ); }

  private:
    std::string text_;
    std::size_t indent_ = 0;
};

void list( Listing& out, const ErrorRecord& error ) {
    out.open( "error", error.description );
    out.text( "file", error.fileName );
    out.text( "include", error.includeFileName );
    out.line( "place", std::to_string( error.line ) + ':' + std::to_string( error.position ) );
    out.line( "kind", std::to_string( error.kind ) );
    out.text( "recognizer", error.recognizer );
    out.text( "source", error.sourceLine );
    out.close();
}

void list( Listing& out, const std::string& path, const MountRecord& mount ) {
    out.open( "mount", path );
    out.text( "type", mount.type );
    out.text( "flags", mount.flags );
    out.flag( "filtered", mount.filter.enabled );
    for ( const auto& [attribute, key] : mount.filter.keys )
        out.line( "filter", escaped( attribute ) + ' ' + escaped( key ) );
    out.close();
}

void list( Listing& out, const std::string& name, const GroupRecord& group ) {
    out.open( "group", name );
    out.line( "priority", std::to_string( group.priority ) );
    out.flag( "blocking", group.blocking );
    out.text( "entireCondition", group.entireCondition );
    for ( const auto& condition : group.conditions )
        out.text( "condition", condition );
    for ( const auto& [condition, value] : group.templateConditions )
        out.line( "templateCondition", escaped( condition ) + ( value ? " yes" : " no" ) );
    for ( const auto& [path, mount] : group.mounts )
        list( out, path, mount );
    out.close();
}

void list( Listing& out, const std::string& name, const ProfileRecord& profile ) {
    out.open( "profile", name );
    out.flag( "valid", profile.valid );
    list( out, profile.error );
    out.flag( "hybridMount", profile.hybridMount );
    out.flag( "lowMountPrio", profile.lowMountPrio );
    out.flag( "noDefaultMountGroup", profile.noDefaultMountGroup );
    out.text( "rootFlags", profile.rootFlags );
    for ( const auto& [index, key] : profile.templateKeys )
        out.text( "templateKey " + std::to_string( index ), key );
    for ( const auto& [alias, targets] : profile.aliases )
        out.line( "alias", escaped( alias ) + ' ' + escaped( targets ) );
    for ( const auto& [groupName, group] : profile.groups )
        list( out, groupName, group );
    out.close();
}

} // namespace

std::string outcomeText( const Outcome& outcome ) {
    Listing out;
    out.line( "outcome", outcome.kind );
    out.text( "exception", outcome.exception );
    for ( const auto& [name, profile] : outcome.profiles )
        list( out, name, profile );
    list( out, outcome.error );
    for ( const auto& subAgent : outcome.subAgents )
        out.text( "subAgent", subAgent );
    for ( const auto& trace : outcome.traces )
        out.text( "trace", trace );
    out.text( "printed", outcome.printed );
    return out.take();
}

} // namespace Model
