// A host that loads the profiles of all agents below a directory and prints, for each, its mount groups in
// the order of their priorities, with what they wait for.
#include "ProfileParser/MountProfileHdlr.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <vector>

namespace {

void print( const Corvid::PassiveAgentProfile& profile ) {
    std::cout << profile.name() << ( profile.validProfile() ? "\n" : " (invalid)\n" );
    std::vector<Kiv::Ptr<Corvid::PassiveMountGroup>> groups;
    for ( const auto& [name, group] : profile.mountGroup() )
        groups.push_back( group );
    std::ranges::stable_sort( groups, {}, []( const auto& group ) { return group->priority(); } );
    for ( const auto& group : groups ) {
        std::cout << "  " << group->priority() << ' ' << group->name() << ": " << group->mountProfile().size()
                  << " mounts";
        if ( !group->entireCondition().empty() )
            std::cout << ( group->blockingConditional() ? ", blocks until " : ", when " )
                      << group->entireCondition();
        std::cout << '\n';
    }
}

} // namespace

int main( int argc, char** argv ) try {
    const Kiv::Ptr<Corvid::PassiveAgentProfileDir> profiles( new Corvid::PassiveAgentProfileDir );
    for ( const auto& entry : std::filesystem::recursive_directory_iterator( argc > 1 ? argv[1] : "." ) )
        if ( entry.is_regular_file() && entry.path().filename() == "agent" )
            Corvid::MountProfileHdlr( entry.path(), profiles, nullptr, true )
                .run(); // an error goes to std::cerr
    for ( const auto& [name, profile] : profiles->agentProfile() )
        print( *profile );
} catch ( const std::exception& exception ) {
    std::cerr << exception.what() << '\n'; // a file that cannot be opened; all else is in the profiles
    return 1;
}
