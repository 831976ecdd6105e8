#include "Brae/Glob.h"
#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <cstdlib>
#include <stdexcept>

namespace Corvid {

namespace {

/// @return false when the file is the first one with an error.
bool parseIncludeFile( MountProfileHdlr& hdlr, const std::string& name ) {
    const bool wasValid = hdlr.validProfileFile();
    hdlr.parseFile( name, true );
    if ( !wasValid || hdlr.validProfileFile() )
        return true;
    HDLR_TRACE( 1, "Include file parser found error. "
                   "Constructing handler exception to inform this to agent file parser" );
    hdlr.constructHdlrException( "Mount profile is invalid due to error in include file: " + name );
    return false;
}

} // namespace

void MountProfileHdlr::parseIncludes( const std::string& pattern ) {
    finishLexing(); // an error in this file comes before those of the files that it includes
    // Always beside the agent file, also in front of a pattern that begins with a slash.
    const std::string fullPattern = agentFile_.substr( 0, agentFile_.rfind( '/' ) + 1 ) + pattern;
    std::vector<std::string> matches;
    if ( !Brae::getGlobResult( fullPattern, matches ) )
        matches.clear();
    std::size_t number = 0;
    const auto noteInclusion = [&] {
        errorDetails_.includeLine = statementOrigin().line;
        errorDetails_.includePattern = pattern;
        errorDetails_.includeMatch = number;
        errorDetails_.includeMatches = matches.size();
    };
    try {
        if ( matches.empty() ) {
            if ( pattern == "ConfigMountProfile" && std::getenv( "K7_CHROOT" ) )
                addConfigMountProfile();
            else
                constructHdlrException( "No include file found matching " + fullPattern, pattern );
            return;
        }
        HDLR_TRACE( 1, "Parsing include files matching pattern " + fullPattern );
        for ( const std::string& name : matches ) {
            ++number;
            if ( observer_ )
                observer_->includeEntered( { name, pattern, number, matches.size(), statementOrigin() } );
            if ( includedFiles_++ == maxIncludedFiles_ )
                throw std::runtime_error( "Too many include files." );
            if ( !parseIncludeFile( *this, name ) )
                return noteInclusion();
        }
    } catch ( const std::runtime_error& ) {
        noteInclusion();
        throw;
    }
}

} // namespace Corvid
