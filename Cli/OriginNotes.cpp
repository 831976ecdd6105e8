#include "Cli/OriginNotes.h"

#include "ProfileParser/FlagSet.h"

namespace Corvid::Cli {

namespace {

using Statements = OriginRecord::Statements;

/// A note of several items; empty without any.
std::string note( const std::vector<std::string>& items ) {
    std::string text;
    for ( const std::string& item : items )
        text.append( text.empty() ? "[" : ", " ).append( item );
    return text.empty() ? text : text + "]";
}

std::vector<std::string> placesOf( const Statements& statements ) {
    std::vector<std::string> places;
    for ( const auto& statement : statements )
        places.push_back( textOf( statement.place ) );
    return places;
}

/// For something that a later statement replaces: the one that counts comes first.
std::string noteOfLast( const Statements& statements ) {
    std::vector<std::string> items = placesOf( statements );
    if ( items.empty() )
        return {};
    std::vector<std::string> ordered{ items.back() };
    for ( auto earlier = items.rbegin() + 1; earlier != items.rend(); ++earlier )
        ordered.push_back( "in place of " + *earlier );
    return note( ordered );
}

/// A place, and which of the flags come from there; these are left out when there is no other place.
std::string flagsItem( const OriginRecord::Place& place, std::string_view flags, bool isOnlyOne ) {
    if ( isOnlyOne )
        return textOf( place );
    return textOf( place ) + ( flags.empty() ? " nothing new" : " " + std::string( flags ) );
}

} // namespace

std::string textOf( const OriginRecord::Place& place ) {
    if ( place.kind == Origin::Kind::implicit )
        return "default";
    return *place.file + ":" + std::to_string( place.line ) +
           ( place.kind == Origin::Kind::configuredPath ? " (configured path)" : "" );
}

const OriginRecord::Group* OriginNotes::find( std::string_view group ) const {
    return record_ ? &record_->groups().find( group )->second : nullptr;
}

const std::vector<OriginRecord::MountStep>* OriginNotes::find( std::string_view group,
                                                               std::string_view path ) const {
    const OriginRecord::Group* noted = find( group );
    return noted ? &noted->mounts.find( path )->second : nullptr;
}

std::string OriginNotes::agentStatement( AgentStatement kind ) const {
    return record_ ? note( placesOf( record_->statements( kind ) ) ) : std::string();
}

std::string OriginNotes::templateKeys() const {
    if ( !record_ )
        return {};
    const Statements& keys = record_->statements( AgentStatement::templateKey );
    return keys.empty() ? std::string() : note( { textOf( keys.front().place ) } );
}

std::string OriginNotes::rootFlags() const {
    if ( !record_ )
        return {};
    const Statements& lines = record_->statements( AgentStatement::rootFlags );
    std::vector<std::string> items;
    std::string flags;
    for ( const auto& line : lines ) {
        const std::string merged = mergedFlags( flags, line.text );
        items.push_back( flagsItem( line.place, merged.substr( flags.size() ), lines.size() == 1 ) );
        flags = merged;
    }
    return note( items );
}

std::string OriginNotes::alias( std::string_view name ) const {
    return record_ ? noteOfLast( record_->aliasDeclarations( name ) ) : std::string();
}

std::string OriginNotes::subAgent( std::size_t index ) const {
    return record_ ? note( { textOf( record_->statements( AgentStatement::subAgent ).at( index ).place ) } )
                   : std::string();
}

std::string OriginNotes::group( std::string_view name ) const {
    const OriginRecord::Group* noted = find( name );
    if ( !noted )
        return {};
    std::vector<std::string> items;
    for ( const auto& opening : noted->openings ) {
        std::string item = items.empty() ? "" : "again ";
        item += textOf( opening.place );
        // 99 is what is asked for when the line names no priority.
        if ( opening.priority != noted->openings.front().priority && opening.priority != 99 )
            item += " with priority " + std::to_string( opening.priority ) + ", which changes nothing";
        items.push_back( item );
    }
    return note( items );
}

std::string OriginNotes::wholeCondition( std::string_view group ) const {
    const OriginRecord::Group* noted = find( group );
    return noted ? noteOfLast( noted->wholeConditions ) : std::string();
}

std::string OriginNotes::condition( std::string_view group, std::size_t index ) const {
    const OriginRecord::Group* noted = find( group );
    return noted ? note( { textOf( noted->conditions.at( index ).place ) } ) : std::string();
}

std::string OriginNotes::templateCondition( std::string_view group, std::string_view text ) const {
    const OriginRecord::Group* noted = find( group );
    return noted ? note( { textOf( noted->templateConditions.find( text )->second ) } ) : std::string();
}

std::string OriginNotes::mount( std::string_view group, std::string_view path ) const {
    const auto* steps = find( group, path );
    if ( !steps )
        return {};
    std::vector<std::string> items;
    for ( const auto& step : *steps )
        items.push_back( flagsItem( step.place, step.added, steps->size() == 1 ) );
    return note( items );
}

std::string OriginNotes::filter( std::string_view group, std::string_view path ) const {
    const std::string& name = find( group, path )->back().filter;
    return note( { "filter " + name, textOf( record_->filters().find( name )->second.place ) } );
}

std::string OriginNotes::attribute( std::string_view group, std::string_view path,
                                    std::string_view attribute ) const {
    const auto* steps = find( group, path );
    if ( !steps )
        return {};
    const OriginRecord::Filter& filter = record_->filters().find( steps->back().filter )->second;
    return noteOfLast( filter.attributes.find( attribute )->second );
}

} // namespace Corvid::Cli
