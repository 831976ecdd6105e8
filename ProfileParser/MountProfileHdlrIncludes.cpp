#include "Brae/Glob.h"
#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <cstdlib>
#include <stdexcept>

namespace Corvid {

void MountProfileHdlr::parseIncludes( const std::string& pattern ) {
    finishLexing(); // an error in this file comes before those of the files that it includes
    // Always beside the agent file, also in front of a pattern that begins with a slash.
    const std::string fullPattern = agentFile_.substr( 0, agentFile_.rfind( '/' ) + 1 ) + pattern;
    std::vector<std::string> matches;
    if ( !Brae::getGlobResult( fullPattern, matches ) || matches.empty() ) {
        if ( pattern == "ConfigMountProfile" && std::getenv( "K7_CHROOT" ) )
            addConfigMountProfile();
        else
            constructHdlrException( "No include file found matching " + fullPattern, pattern );
        return;
    }
    HDLR_TRACE( 1, "Parsing include files matching pattern " + fullPattern );
    std::size_t number = 0;
    for ( const std::string& name : matches ) {
        const bool wasValid = validProfileFile_;
        ++number;
        if ( observer_ )
            observer_->includeEntered( { name, pattern, number, matches.size(), statementOrigin() } );
        const auto noteInclusion = [&] {
            errorDetails_.includeLine = statementOrigin().line;
            errorDetails_.includePattern = pattern;
            errorDetails_.includeMatch = number;
            errorDetails_.includeMatches = matches.size();
        };
        try {
            parseFile( name, true );
        } catch ( const std::runtime_error& ) {
            noteInclusion();
            throw;
        }
        if ( wasValid && !validProfileFile_ ) {
            noteInclusion();
            HDLR_TRACE( 1, "Include file parser found error. "
                           "Constructing handler exception to inform this to agent file parser" );
            constructHdlrException( "Mount profile is invalid due to error in include file: " + name );
            return;
        }
    }
}

} // namespace Corvid
