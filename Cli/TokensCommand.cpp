#include "Cli/TokensCommand.h"

#include "Cli/AgentRun.h"
#include "Cli/CommandCodes.h"
#include "Cli/PrintableText.h"
#include "ProfileParser/TokenListing.h"

#include <stdexcept>

namespace Corvid::Cli {

namespace {

void writeToken( Output& out, const ListedToken& token ) {
    out.appendNumber( token.type );
    out.append( ' ' );
    out.append( token.name );
    out.append( ' ' );
    out.appendNumber( token.line );
    out.append( ':' );
    out.appendNumber( token.charPositionInLine );
    out.append( ' ' );
    std::string text;
    appendEscaped( text, token.text );
    out.append( text );
    out.append( '\n' );
}

void writeError( Output& out, const RecognitionError& error ) {
    out.append( "ERROR " );
    out.appendNumber( error.exceptionType() );
    out.append( ' ' );
    std::string text;
    appendEscaped( text, error.description() );
    out.append( text );
    out.append( '\n' );
}

} // namespace

ExitStatus TokensCommand::run( Console& console ) {
    RecognitionError error;
    try {
        error =
            listTokens( file_, [&console]( const ListedToken& token ) { writeToken( console.out, token ); } );
    } catch ( const std::runtime_error& exception ) {
        console.complain( file_ + ": " + whyUnreadable( file_, exception.what() ), unreadableCode );
        return ExitStatus::trouble;
    }
    console.out.append( "EOF\n" );
    if ( error.description().empty() )
        return ExitStatus::valid;
    writeError( console.out, error );
    return ExitStatus::invalid;
}

} // namespace Corvid::Cli
