#include "Cli/OriginRecord.h"

#include "Cli/PrintableText.h"
#include "ProfileStore/PassiveMountGroup.h"

namespace Corvid::Cli {

namespace {

/// What a map holds for a key; nothing for one that it does not know.
const OriginRecord::Statements& found( const auto& map, const auto& key ) {
    static const OriginRecord::Statements none;
    const auto at = map.find( key );
    return at == map.end() ? none : at->second;
}

} // namespace

const OriginRecord::Statements& OriginRecord::statements( AgentStatement kind ) const {
    return found( statements_, kind );
}

const OriginRecord::Statements& OriginRecord::aliasDeclarations( std::string_view alias ) const {
    return found( aliases_, alias );
}

const std::string* OriginRecord::lasting( std::string_view file ) {
    const auto known = files_.find( file );
    return known != files_.end() ? &*known : &*files_.emplace( file ).first;
}

OriginRecord::Place OriginRecord::placeOf( const Origin& origin ) {
    if ( origin.kind == Origin::Kind::implicit )
        return {};
    return { origin.kind, lasting( origin.file ), origin.line,
             origin.inIncludeFile ? &includes_.back() : nullptr };
}

OriginRecord::Group& OriginRecord::groupOf( const PassiveMountGroup& group ) {
    return groups_[group.name().str()];
}

void OriginRecord::includeEntered( const IncludeEntry& entry ) {
    includes_.push_back( { withoutMiddle( entry.pattern ), entry.number, entry.matches,
                           lasting( entry.origin.file ), entry.origin.line } );
}

void OriginRecord::agentStatement( AgentStatement statement, std::string_view text, const Origin& origin ) {
    const Place place = placeOf( origin );
    const Statement noted{ std::string( text ), place };
    statements_[statement].push_back( noted );
    if ( statement == AgentStatement::alias )
        aliases_[noted.text].push_back( noted );
}

void OriginRecord::mountFilterDeclared( std::string_view name, const Origin& origin ) {
    filters_[std::string( name )].place = placeOf( origin );
}

void OriginRecord::attrFilterAdded( std::string_view mountFilter, const AttrFilter& attrFilter,
                                    const Origin& origin ) {
    filters_[std::string( mountFilter )].attributes[attrFilter.attrName().str()].push_back(
        { attrFilter.filterKey().str(), placeOf( origin ) } );
}

void OriginRecord::mountGroupOpened( const PassiveMountGroup& group, unsigned priority,
                                     const Origin& origin ) {
    groupOf( group ).openings.push_back( { priority, placeOf( origin ) } );
}

void OriginRecord::conditionAdded( const PassiveMountGroup& group, ConditionPart part, std::string_view text,
                                   const Origin& origin ) {
    Group& noted = groupOf( group );
    const Statement statement{ std::string( text ), placeOf( origin ) };
    switch ( part ) {
    case ConditionPart::blocking:
        noted.blocking.push_back( statement );
        break;
    case ConditionPart::single:
        noted.conditions.push_back( statement );
        break;
    case ConditionPart::templateKey:
        noted.templateConditions.emplace( statement.text, statement.place );
        break;
    case ConditionPart::whole:
        noted.wholeConditions.push_back( statement );
        break;
    }
}

void OriginRecord::mountAdded( const MountAddition& addition ) {
    // Merging puts new flags behind those that are there.
    const std::size_t flagsBefore = addition.before ? addition.before->flags().size() : 0;
    groupOf( addition.group )
        .mounts[addition.after.path().str()]
        .push_back( { std::string( addition.flags ), addition.after.flags().str().substr( flagsBefore ),
                      std::string( addition.mountFilter ), placeOf( addition.origin ) } );
}

} // namespace Corvid::Cli
