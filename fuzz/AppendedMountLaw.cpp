#include "AppendedMountLaw.h"

#include "Laws.h"

#include <map>

namespace CorvidFuzz {

using Corvid::PassiveAgentProfile;
using Corvid::PassiveMountGroup;

namespace {

constexpr std::string_view appendedLine = "\n/zz/appended, Zz::Appended, r\n";

void append( std::string& out, std::string_view text ) {
    out.append( text ).append( 1, '\n' );
}

std::string textOf( const PassiveMountGroup& group ) {
    std::string out =
        std::to_string( group.priority() ) + ( group.blockingConditional() ? " blocking\n" : "\n" );
    append( out, group.entireCondition() );
    for ( const auto& condition : group.conditionCol() )
        append( out, condition );
    for ( const auto& [condition, value] : group.templateConditionCol() )
        append( out, condition );
    for ( const auto& mount : group.mountProfile() ) {
        append( out, mount.path() );
        append( out, mount.type() );
        append( out, mount.flags() );
        std::map<std::string_view, std::string_view> attributes;
        for ( const auto& [name, filter] : mount.mountFilter().attrFilter() )
            attributes.emplace( name, filter.filterKey() );
        for ( const auto& [name, key] : attributes ) {
            append( out, name );
            append( out, key );
        }
    }
    return out;
}

/// The profile less one of its groups.
std::string textWithout( const PassiveAgentProfile& profile, const std::string& leftOutGroup ) {
    std::string out = profile.name().str() + ( profile.hybridMount() ? " hybrid" : "" ) +
                      ( profile.lowMountPrio() ? " low" : "" ) +
                      ( profile.noDefaultMountGroup() ? " bare\n" : "\n" );
    append( out, profile.rootFlags() );
    for ( const auto& [number, key] : profile.templateKey() )
        append( out, key );
    for ( const auto& [key, targets] : profile.aliasKey() )
        append( out, key.str() + '=' + targets.str() );
    for ( const auto& [name, group] : profile.mountGroup() )
        if ( name.str() != leftOutGroup )
            append( out, name.str() + ' ' + textOf( *group ) );
    return out;
}

} // namespace

void checkAppendedMount( InputDirectory& directory, std::string_view name, std::string_view text ) {
    RunOptions options;
    options.addDefaults = false; // they come last, and would be the open group
    const auto before = run( directory.pathOf( name ), options );
    const auto after =
        run( directory.write( name, std::string( text ) + std::string( appendedLine ) ), options );
    require( after.handler->agentProfile().get() != nullptr,
             "a file stays an agent file when a line is appended", after.printed );
    const std::string open = before.handler->currMgName();
    require( textWithout( *before.handler->agentProfile(), open ) ==
                 textWithout( *after.handler->agentProfile(), open ),
             "an appended mount line changes its own group only", after.printed );
    const auto& subAgents = before.handler->subAgents();
    require( subAgents == after.handler->subAgents(), "an appended mount line makes no sub-agent",
             after.printed );
}

} // namespace CorvidFuzz
