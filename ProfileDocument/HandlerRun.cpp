#include "ProfileDocument/HandlerRun.h"

#include <exception>
#include <stdexcept>
#include <utility>

namespace Corvid {

namespace {

Outcome outcomeOf( const MountProfileHdlr& handler ) {
    if ( !handler.validProfileFile() )
        return Outcome::invalid;
    return handler.maybeIncludeFile() ? Outcome::notAgentFile : Outcome::valid;
}

} // namespace

const char* nameOf( Outcome outcome ) {
    switch ( outcome ) {
    case Outcome::valid:
        return "valid";
    case Outcome::invalid:
        return "invalid";
    case Outcome::notAgentFile:
        return "notAgentFile";
    case Outcome::unreadable:
        break;
    }
    return "unreadable";
}

HandlerRun::HandlerRun( std::string file, Kiv::Ptr<const EntityManager> entityManager, bool addDefaults )
    : agentFile( std::move( file ) ),
      handler( std::make_unique<MountProfileHdlr>(
          agentFile, Kiv::Ptr<PassiveAgentProfileDir>( new PassiveAgentProfileDir ),
          std::move( entityManager ), addDefaults ) ) {
    handler->missingDatabaseThrowsIs( true );
}

void HandlerRun::run() {
    try {
        handler->run();
        outcome = outcomeOf( *handler );
    } catch ( const std::runtime_error& error ) {
        exception = error.what();
    }
}

} // namespace Corvid
