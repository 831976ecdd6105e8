#include "Cli/TreeWriter.h"

#include "Cli/OriginNotes.h"
#include "Cli/PrintableText.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

namespace {

/// A column is never made wider than this for one long text: that text pushes the rest of its own line only.
constexpr std::size_t widestColumn = 60;

/// The widths of a group's columns.
struct Columns {
    std::size_t path = 0;
    std::size_t type = 0;
    std::size_t flags = 0; ///< where something follows them
};

class Writer {
  public:
    Writer( Output& out, bool coloured, const OriginRecord* origins )
        : out_( out ), coloured_( coloured ), notes_( origins ) {}

    void run( const AgentRun& run );

  private:
    void profile( const PassiveAgentProfile& profile, const std::vector<std::string>& subAgents );
    void mountGroup( const PassiveMountGroup& group );
    void conditions( const PassiveMountGroup& group );
    void mounts( const PassiveMountGroup& group );
    void mount( const PassiveMountGroup& group, const Mount& mount, const Columns& columns );
    /// The switches that are on, with their notes.
    [[nodiscard]] std::string switchesOf( const PassiveAgentProfile& profile ) const;
    /// "name = "fan-1", state", or "(no attribute)" for a filter that was declared without any.
    [[nodiscard]] std::string filterOf( const PassiveMountGroup& group, const Mount& mount ) const;

    void headline( std::string_view kind, std::string_view name, std::string_view remarks,
                   std::string_view note );
    /// A line "label  text" below a headline; none for an empty text.
    void attribute( std::string_view label, std::string_view text, std::string_view note = {} );
    void appendNote( std::string_view note );
    /// A text, filled up with blanks.
    void cell( std::string_view text, std::size_t width );
    void strong( std::string_view text );

    Output& out_;
    bool coloured_;
    OriginNotes notes_;
};

std::string joined( const auto& texts ) {
    std::string all;
    for ( const auto& text : texts )
        all.append( all.empty() ? "" : ", " ).append( std::string_view( text ) );
    return all;
}

std::string withNote( std::string text, std::string_view note ) {
    return note.empty() ? text : text.append( " " ).append( note );
}

std::string Writer::switchesOf( const PassiveAgentProfile& profile ) const {
    std::vector<std::string> names;
    const auto add = [&]( bool isOn, const char* name, AgentStatement statement ) {
        if ( isOn )
            names.push_back( withNote( name, notes_.agentStatement( statement ) ) );
    };
    add( profile.hybridMount(), "hybridMount", AgentStatement::hybridMount );
    add( profile.lowMountPrio(), "lowMountPrio", AgentStatement::lowMountPrio );
    add( profile.noDefaultMountGroup(), "noDefaultMountGroup", AgentStatement::noDefaultMountGroup );
    return joined( names );
}

std::string Writer::filterOf( const PassiveMountGroup& group, const Mount& mount ) const {
    std::vector<std::string> items;
    for ( const auto& [name, attribute] : mount.mountFilter().attrFilter() ) {
        std::string item( name );
        if ( !attribute.filterKey().empty() )
            item.append( " = \"" ).append( attribute.filterKey() ).append( "\"" );
        items.push_back( withNote( item, notes_.attribute( group.name(), mount.path(), name ) ) );
    }
    if ( items.empty() )
        return "(no attribute)";
    return joined( items );
}

void Writer::appendNote( std::string_view note ) {
    if ( note.empty() )
        return;
    out_.append( "  " );
    out_.append( printable( note ) );
}

void Writer::strong( std::string_view text ) {
    if ( coloured_ )
        out_.append( "\033[1m" );
    out_.append( printable( text ) );
    if ( coloured_ )
        out_.append( "\033[0m" );
}

void Writer::headline( std::string_view kind, std::string_view name, std::string_view remarks,
                       std::string_view note ) {
    out_.append( kind );
    out_.append( ' ' );
    strong( name );
    out_.append( "  " );
    out_.append( remarks );
    appendNote( note );
    out_.append( '\n' );
}

void Writer::attribute( std::string_view label, std::string_view text, std::string_view note ) {
    static constexpr std::size_t labelWidth = 22;
    if ( text.empty() )
        return;
    out_.append( "  " );
    cell( label, labelWidth );
    out_.append( printable( text ) );
    appendNote( note );
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

void Writer::mount( const PassiveMountGroup& group, const Mount& mount, const Columns& columns ) {
    out_.append( "    " );
    cell( mount.path(), columns.path );
    out_.append( "  " );
    cell( mount.type(), columns.type );
    out_.append( "  " );
    const std::string note = notes_.mount( group.name(), mount.path() );
    const bool hasFilter = mount.mountFilter().enabled() != 0;
    cell( mount.flags(), hasFilter || !note.empty() ? columns.flags : 0 );
    appendNote( note );
    if ( hasFilter ) {
        out_.append( note.empty() ? "  where " : "\n        where " );
        out_.append( printable( filterOf( group, mount ) ) );
        if ( !note.empty() )
            appendNote( notes_.filter( group.name(), mount.path() ) );
    }
    out_.append( '\n' );
}

void Writer::mounts( const PassiveMountGroup& group ) {
    Columns columns;
    const auto widen = []( std::size_t& column, std::string_view text ) {
        column = std::clamp( printableWidth( text ), column, widestColumn );
    };
    for ( const Mount& mount : group.mountProfile() ) {
        widen( columns.path, mount.path() );
        widen( columns.type, mount.type() );
        if ( mount.mountFilter().enabled() || notes_.areGiven() )
            widen( columns.flags, mount.flags() );
    }
    for ( const Mount& mount : group.mountProfile() )
        this->mount( group, mount, columns );
}

void Writer::conditions( const PassiveMountGroup& group ) {
    const Kiv::Name name = group.name();
    attribute( group.blockingConditional() ? "blocked until" : "when", group.entireCondition(),
               notes_.wholeCondition( name ) );
    if ( group.conditionCol().size() > 1 ) {
        std::size_t index = 0;
        for ( const auto& condition : group.conditionCol() )
            attribute( "  condition", condition, notes_.condition( name, index++ ) );
    }
    for ( const auto& templateCondition : group.templateConditionCol() ) // all are to be true
        attribute( "template condition", templateCondition.first,
                   notes_.templateCondition( name, templateCondition.first ) );
}

void Writer::mountGroup( const PassiveMountGroup& group ) {
    const std::size_t count = group.mountProfile().size();
    headline( "\nmount group", group.name(),
              "priority " + std::to_string( group.priority() ) + ", " + std::to_string( count ) +
                  ( count == 1 ? " mount" : " mounts" ),
              notes_.group( group.name() ) );
    conditions( group );
    mounts( group );
}

void Writer::profile( const PassiveAgentProfile& profile, const std::vector<std::string>& subAgents ) {
    const char* validity =
        coloured_ ? ( profile.validProfile() ? "\033[32mvalid\033[0m" : "\033[31minvalid\033[0m" )
                  : ( profile.validProfile() ? "valid" : "invalid" );
    headline( "agent", profile.name(), validity, notes_.agentStatement( AgentStatement::agentName ) );
    if ( !profile.validProfile() )
        attribute( "error", withoutMiddle( profile.errorDesc().composeErrorDescMessage() ) );
    attribute( "switches", switchesOf( profile ) );
    attribute( "root flags", profile.rootFlags(), notes_.rootFlags() );
    std::vector<std::string_view> keys;
    for ( const auto& [index, key] : profile.templateKey() )
        keys.push_back( key );
    attribute( "template keys", joined( keys ), notes_.templateKeys() );
    for ( const auto& [alias, targets] : profile.aliasKey() )
        attribute( "alias", alias.str() + " = " + targets.str(), notes_.alias( alias ) );
    std::vector<std::string> names;
    names.reserve( subAgents.size() );
    for ( const std::string& name : subAgents )
        names.push_back( withNote( name, notes_.subAgent( names.size() ) ) );
    attribute( "sub-agents", joined( names ) );
    for ( const auto& [name, group] : profile.mountGroup() )
        mountGroup( *group );
}

void Writer::run( const AgentRun& run ) {
    if ( run.handler->agentProfile() )
        profile( *run.handler->agentProfile(), run.handler->subAgents() );
}

} // namespace

void writeTree( Output& out, const AgentRun& run, bool coloured, const OriginRecord* origins ) {
    if ( run.outcome != Outcome::unreadable )
        Writer( out, coloured, origins ).run( run );
}

} // namespace Corvid::Cli
