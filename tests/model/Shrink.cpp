#include "model/Shrink.h"

#include <algorithm>

namespace Model {

namespace {

using Shows = std::function<bool( const Case& )>;

/// Takes a change over if the case still shows what it should.
bool tryChange( Case& current, Case changed, const Shows& shows ) {
    if ( !shows( changed ) )
        return false;
    current = std::move( changed );
    return true;
}

bool dropOthers( Case& current, const Shows& shows ) {
    bool changed = false;
    const auto files = current.otherFiles;
    for ( const auto& [name, text] : files ) {
        Case without = current;
        without.otherFiles.erase( name );
        changed |= tryChange( current, without, shows );
    }
    if ( Case without = current; !without.directories.empty() ) {
        without.directories.clear();
        changed |= tryChange( current, without, shows );
    }
    for ( std::size_t index = current.configRoot.size(); index-- > 0; ) {
        Case without = current;
        without.configRoot.erase( without.configRoot.begin() + static_cast<std::ptrdiff_t>( index ) );
        changed |= tryChange( current, without, shows );
    }
    return changed;
}

bool resetStage( Case& current, const Shows& shows ) {
    Case plain;
    plain.agentText = current.agentText;
    plain.otherFiles = current.otherFiles;
    plain.directories = current.directories;
    return caseText( plain ) != caseText( current ) && tryChange( current, plain, shows );
}

std::string& fileOf( Case& input, const std::string& name ) {
    return name.empty() ? input.agentText : input.otherFiles.at( name );
}

bool shortenFile( Case& current, const std::string& name, const Shows& shows ) {
    bool changed = false;
    for ( std::size_t size = fileOf( current, name ).size(); size > 0; size /= 2 )
        for ( std::size_t start = 0; start < fileOf( current, name ).size(); ) {
            Case without = current;
            fileOf( without, name ).erase( start, size );
            if ( tryChange( current, without, shows ) )
                changed = true;
            else
                start += std::max<std::size_t>( size / 2, 1 );
        }
    return changed;
}

} // namespace

Case shrunk( Case input, const Shows& shows ) {
    bool changed = true;
    while ( changed ) {
        changed = dropOthers( input, shows );
        changed |= resetStage( input, shows );
        changed |= shortenFile( input, "", shows );
        const auto files = input.otherFiles;
        for ( const auto& [name, text] : files )
            changed |= shortenFile( input, name, shows );
    }
    return input;
}

} // namespace Model
