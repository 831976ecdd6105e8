#include "Cli/WhyCommand.h"

#include "Cli/CommandCodes.h"
#include "Cli/Diagnostic.h"
#include "Cli/MountHistory.h"
#include "Cli/MountSearch.h"
#include "Cli/PrintableText.h"
#include "ProfileParser/MountPath.h"

namespace Corvid::Cli {

namespace {

/// What a path of a file's text stands for: quotes go, and so do blanks outside of them.
std::string withoutQuotes( std::string_view text ) {
    std::string path;
    bool inString = false;
    for ( const char c : text ) {
        inString = inString != ( c == '"' );
        if ( c != '"' && ( inString || ( c != ' ' && c != '\t' ) ) )
            path += c;
    }
    return path;
}

} // namespace

bool WhyCommand::tellMounts( Console& console, const PassiveAgentProfile& profile, const OriginRecord& record,
                             std::string_view path ) {
    MountHistory history( console.out, record );
    bool isFirst = true;
    for ( const auto& [name, group] : profile.mountGroup() ) {
        const Mount* mount = group->mountProfile( normalisedPath( path ) );
        if ( !mount )
            continue;
        if ( !isFirst )
            console.out.append( '\n' );
        isFirst = false;
        history.write( *group, *mount );
    }
    return !isFirst;
}

void WhyCommand::tellThatItIsNotMounted( Console& console, const PassiveAgentProfile& profile ) const {
    const bool isQuoted = path_.find( '"' ) != std::string::npos;
    const std::string given = isQuoted ? withoutQuotes( path_ ) : path_;
    const std::string_view path = normalisedPath( given );
    console.complain( file_ + ": nothing is mounted at " + std::string( path ) +
                          ( profile.validProfile() ? "" : " by what stands before the error" ),
                      notMountedCode );
    for ( const std::string& like : pathsLike( profile, path ) )
        console.err.append( "  did you mean '" + printable( like ) + "'?\n" );
}

ExitStatus WhyCommand::run( Console& console ) {
    OriginRecord record;
    const AgentRun run = runAgentFile( stageOptions_.setUp(), file_, &record );
    const bool isRead = run.outcome != Outcome::unreadable && run.handler->agentProfile();
    const auto tell = [&]( std::string_view path ) {
        return tellMounts( console, *run.handler->agentProfile(), record, path );
    };
    bool isMounted = isRead && tell( path_ );
    if ( isRead && !isMounted )
        isMounted = tell( withoutQuotes( path_ ) );
    const std::string diagnostics = diagnosticsOf( run, mayBeColoured( console.err ) );
    console.out.flush();
    console.err.append( diagnostics );
    if ( !isRead || isMounted )
        return exitStatusFor( run.outcome );
    tellThatItIsNotMounted( console, *run.handler->agentProfile() );
    return ExitStatus::invalid;
}

} // namespace Corvid::Cli
