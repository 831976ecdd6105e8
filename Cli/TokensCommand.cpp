#include "Cli/TokensCommand.h"

#include "Cli/AgentRun.h"
#include "Cli/CommandCodes.h"
#include "Cli/LiteralArguments.h"
#include "Cli/PrintableText.h"
#include "ProfileParser/TokenListing.h"

#include <CLI/CLI.hpp>
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

TokensCommand::TokensCommand( CLI::App& program )
    : Command(
          *program.add_subcommand( "tokens", "Print what the parser sees of a file, one token a line" ) ) {
    auto& app = *program.get_subcommand( "tokens" );
    takeLiterally(
        *app.add_option( "FILE", file_, "An agent file or an include file" )->required()->type_name( "" ) );
    app.footer(
        "A line is 'TYPE NAME LINE:COLUMN TEXT'. The parser counts columns from 0, but from -1 on the first\n"
        "line; it sees a line end behind the end of every file. Bytes that are not printable ASCII, and the\n"
        "backslash, are written as \\xNN.\n\n"
        "Exit status: 0; 1 when a token is in error (then the last line is 'ERROR KIND DESCRIPTION'); 2\n"
        "usage error, or a file that cannot be read.\n\n"
        "Example:\n"
        "  mountprofile tokens profiles/Fan" );
}

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
