#include "Cli/TreeWriter.h"

#include "Cli/PrintableText.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

namespace {

/// A column is never made wider than this for one long text: that text pushes the rest of its own line only.
constexpr std::size_t widestColumn = 60;

class Writer {
  public:
    Writer( Output& out, bool coloured ) : out_( out ), coloured_( coloured ) {}

    void run( const AgentRun& run );

  private:
    void profile( const PassiveAgentProfile& profile, const std::vector<std::string>& subAgents );
    void mountGroup( const PassiveMountGroup& group );
    void mounts( const PassiveMountGroup::MountMap& mounts );

    void headline( std::string_view kind, std::string_view name, std::string_view remarks );
    /// A line "label  text" below a headline; none for an empty text.
    void attribute( std::string_view label, std::string_view text );
    /// A text, filled up with blanks.
    void cell( std::string_view text, std::size_t width );
    void strong( std::string_view text );

    Output& out_;
    bool coloured_;
};

std::string joined( const auto& texts ) {
    std::string all;
    for ( const auto& text : texts )
        all.append( all.empty() ? "" : ", " ).append( std::string_view( text ) );
    return all;
}

std::string switchesOf( const PassiveAgentProfile& profile ) {
    std::vector<std::string_view> names;
    if ( profile.hybridMount() )
        names.push_back( "hybridMount" );
    if ( profile.lowMountPrio() )
        names.push_back( "lowMountPrio" );
    if ( profile.noDefaultMountGroup() )
        names.push_back( "noDefaultMountGroup" );
    return joined( names );
}

/// "name = "fan-1", state", or "(no attribute)" for a filter that was declared without any.
std::string textOf( const MountFilter& filter ) {
    if ( !filter.enabled() )
        return {};
    std::map<std::string_view, std::string_view> ordered;
    for ( const auto& [name, attrFilter] : filter.attrFilter() )
        ordered.emplace( name, attrFilter.filterKey() );
    std::vector<std::string> items;
    for ( const auto& [name, key] : ordered )
        items.push_back( std::string( name ) +
                         ( key.empty() ? std::string() : " = \"" + std::string( key ) + "\"" ) );
    return items.empty() ? "(no attribute)" : joined( items );
}

void Writer::strong( std::string_view text ) {
    if ( coloured_ )
        out_.append( "\033[1m" );
    out_.append( printable( text ) );
    if ( coloured_ )
        out_.append( "\033[0m" );
}

void Writer::headline( std::string_view kind, std::string_view name, std::string_view remarks ) {
    out_.append( kind );
    out_.append( ' ' );
    strong( name );
    out_.append( "  " );
    out_.append( remarks );
    out_.append( '\n' );
}

void Writer::attribute( std::string_view label, std::string_view text ) {
    static constexpr std::size_t labelWidth = 22;
    if ( text.empty() )
        return;
    out_.append( "  " );
    cell( label, labelWidth );
    out_.append( printable( text ) );
    out_.append( '\n' );
}

void Writer::cell( std::string_view text, std::size_t width ) {
    static constexpr std::string_view blanks =
        "                                                                ";
    static_assert( widestColumn <= blanks.size() );
    out_.append( printable( text ) );
    const std::size_t used = printableWidth( text );
    out_.append( blanks.substr( 0, used < width ? width - used : 0 ) );
}

void Writer::mounts( const PassiveMountGroup::MountMap& mounts ) {
    std::size_t pathWidth = 0;
    std::size_t typeWidth = 0;
    std::size_t flagsWidth = 0;
    const auto widen = []( std::size_t& column, std::string_view text ) {
        column = std::clamp( printableWidth( text ), column, widestColumn );
    };
    for ( const auto& [path, mount] : mounts ) {
        widen( pathWidth, path );
        widen( typeWidth, mount.type() );
        if ( mount.mountFilter().enabled() )
            widen( flagsWidth, mount.flags() );
    }
    for ( const auto& [path, mount] : mounts ) {
        out_.append( "    " );
        cell( path, pathWidth );
        out_.append( "  " );
        cell( mount.type(), typeWidth );
        out_.append( "  " );
        if ( mount.mountFilter().enabled() ) {
            cell( mount.flags(), flagsWidth );
            out_.append( "  where " );
            out_.append( printable( textOf( mount.mountFilter() ) ) );
        } else {
            out_.append( printable( mount.flags() ) );
        }
        out_.append( '\n' );
    }
}

void Writer::mountGroup( const PassiveMountGroup& group ) {
    const std::size_t count = group.mountProfile().size();
    headline( "\nmount group", group.name(),
              "priority " + std::to_string( group.priority() ) + ", " + std::to_string( count ) +
                  ( count == 1 ? " mount" : " mounts" ) );
    attribute( group.blockingConditional() ? "blocked until" : "when", group.entireCondition() );
    if ( group.conditionCol().size() > 1 )
        for ( const auto& condition : group.conditionCol() )
            attribute( "  condition", condition );
    for ( const auto& [condition, value] : group.templateConditionCol() )
        attribute( value ? "template condition" : "template condition not", condition );
    mounts( group.mountProfile() );
}

void Writer::profile( const PassiveAgentProfile& profile, const std::vector<std::string>& subAgents ) {
    const char* validity =
        coloured_ ? ( profile.validProfile() ? "\033[32mvalid\033[0m" : "\033[31minvalid\033[0m" )
                  : ( profile.validProfile() ? "valid" : "invalid" );
    headline( "agent", profile.name(), validity );
    if ( !profile.validProfile() )
        attribute( "error", profile.errorDesc().composeErrorDescMessage() );
    attribute( "switches", switchesOf( profile ) );
    attribute( "root flags", profile.rootFlags() );
    std::vector<std::string_view> keys;
    for ( const auto& [index, key] : profile.templateKey() )
        keys.push_back( key );
    attribute( "template keys", joined( keys ) );
    for ( const auto& [alias, targets] : profile.aliasKey() )
        attribute( "alias", alias.str() + " = " + targets.str() );
    attribute( "sub-agents", joined( subAgents ) );
    for ( const auto& [name, group] : profile.mountGroup() )
        mountGroup( *group );
}

void Writer::run( const AgentRun& run ) {
    if ( run.handler->agentProfile() )
        profile( *run.handler->agentProfile(), run.handler->subAgents() );
}

} // namespace

void writeTree( Output& out, const AgentRun& run, bool coloured ) {
    if ( run.outcome != Outcome::unreadable )
        Writer( out, coloured ).run( run );
}

} // namespace Corvid::Cli
