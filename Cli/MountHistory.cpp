#include "Cli/MountHistory.h"

#include "Cli/Diagnostic.h"
#include "Cli/OriginNotes.h"
#include "Cli/PrintableText.h"

#include <algorithm>

namespace Corvid::Cli {

namespace {

using MountStep = OriginRecord::MountStep;
using Place = OriginRecord::Place;

std::string flagsText( std::string_view flags ) {
    if ( flags.empty() )
        return "no flag";
    return ( flags.size() == 1 ? "the flag " : "the flags " ) + std::string( flags );
}

/// What a line does about the filter that the mount had before.
std::string filterDoing( const std::string& before, const std::string& now ) {
    if ( before == now )
        return {};
    if ( before.empty() )
        return " and sets the filter " + now;
    if ( now.empty() )
        return " and takes the filter " + before + " away";
    return " and puts the filter " + now + " in place of " + before;
}

std::string firstDoing( const MountStep& step ) {
    return ( step.place.kind == Origin::Kind::implicit ? "mounts it for every agent, with "
                                                       : "mounts it with " ) +
           flagsText( step.flags ) +
           ( step.filter.empty() ? std::string() : " and the filter " + step.filter );
}

std::string attributeText( std::string_view name, std::string_view key ) {
    std::string text( name );
    if ( !key.empty() )
        text.append( " = \"" ).append( key ).append( "\"" );
    return text;
}

/// A source line as it is shown: tabs as blanks, and not too much of it.
std::string shown( std::string_view line ) {
    static constexpr std::size_t shownAtMost = 120;
    std::string text( line.substr( 0, shownAtMost ) );
    std::ranges::replace( text, '\t', ' ' );
    return printable( text ) + ( line.size() > shownAtMost ? "..." : "" );
}

} // namespace

void MountHistory::tell( const Place& place, std::string_view doing ) {
    out_.append( "  " + printable( textOf( place ) ) + ": " + printable( doing ) + "\n" );
    if ( !place.file )
        return;
    std::string number = std::to_string( place.line );
    number.insert( 0, 7 - std::min<std::size_t>( number.size(), 7 ), ' ' );
    out_.append( number + " | " + shown( sources_.line( *place.file, place.line ) ) + "\n" );
    if ( const OriginRecord::Include* include = place.include )
        out_.append( "        = " +
                     printable( Inclusion{ *include->agentFile, include->line, include->pattern,
                                           include->number, include->matches } ) +
                     "\n" );
}

void MountHistory::headline( const PassiveMountGroup& group, const Mount& mount ) {
    out_.append( printable( mount.path() ) + " in mount group " + printable( group.name() ) + ": " +
                 printable( mount.type() ) + ", " + printable( mount.flags() ) + "\n" );
}

void MountHistory::steps( const std::vector<MountStep>& steps ) {
    const MountStep* before = nullptr;
    for ( const MountStep& step : steps ) {
        if ( before )
            tell( step.place,
                  "adds " + flagsText( step.added ) + filterDoing( before->filter, step.filter ) );
        else
            tell( step.place, firstDoing( step ) );
        before = &step;
    }
}

void MountHistory::filter( const std::string& name ) {
    if ( name.empty() )
        return;
    const OriginRecord::Filter& filter = record_.filters().find( name )->second;
    tell( filter.place, "declares the filter " + name );
    for ( const auto& [attribute, declarations] : filter.attributes )
        for ( const auto& declaration : declarations ) {
            const bool counts = &declaration == &declarations.back();
            tell( declaration.place, "filters by " + attributeText( attribute, declaration.text ) +
                                         ( counts ? "" : ", which a later line replaces" ) );
        }
}

void MountHistory::condition( const OriginRecord::Group& group ) {
    for ( const auto& whole : group.wholeConditions ) {
        const bool blocks = std::ranges::any_of( group.blocking, [&whole]( const auto& blocking ) {
            return blocking.place.file == whole.place.file && blocking.place.line == whole.place.line;
        } );
        const bool counts = &whole == &group.wholeConditions.back();
        tell( whole.place,
              ( blocks ? "holds the agent up until " : "mounts the group when " ) + whole.text +
                  ( counts ? "" : ", which a later condition replaces as a whole; its comparisons stay" ) );
    }
}

void MountHistory::group( const OriginRecord::Group& group ) {
    const unsigned priority = group.openings.front().priority;
    const std::string withPriority = " with priority ";
    for ( const auto& opening : group.openings )
        if ( &opening == &group.openings.front() )
            tell( opening.place, "makes the group" + withPriority + std::to_string( priority ) );
        else
            tell( opening.place, "opens the group again; its priority stays " + std::to_string( priority ) );
    condition( group );
}

void MountHistory::write( const PassiveMountGroup& group, const Mount& mount ) {
    const OriginRecord::Group& noted = record_.groups().find( group.name().view() )->second;
    const auto& steps = noted.mounts.find( mount.path().view() )->second;
    headline( group, mount );
    this->steps( steps );
    filter( steps.back().filter );
    this->group( noted );
}

} // namespace Corvid::Cli
