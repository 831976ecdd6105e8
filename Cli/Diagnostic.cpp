#include "Cli/Diagnostic.h"

#include "Cli/CommandCodes.h"
#include "Cli/Hints.h"
#include "Cli/PrintableText.h"
#include "Cli/SourceExcerpt.h"

#include <algorithm>

namespace Corvid::Cli {

namespace {

/// The description as the library prints it, without the place.
std::string messageOf( RecognitionError error ) {
    constexpr std::string_view mark = ": error: ";
    error.fileNameIs( "" );
    error.includeFileNameIs( "" );
    error.lineIs( RecognitionError::noLine );
    return error.composeErrorDescMessage().str().substr( mark.size() );
}

std::optional<Inclusion> inclusionOf( const MountProfileHdlr& handler ) {
    const ErrorDetails& details = handler.errorDetails();
    if ( details.includeMatches == 0 )
        return std::nullopt;
    return Inclusion{ handler.errorDesc().fileName().str(), details.includeLine,
                      withoutMiddle( details.includePattern ), details.includeMatch, details.includeMatches };
}

void showPlace( Diagnostic& diagnostic, const std::string& content, const Marks& marks, bool coloured ) {
    diagnostic.place = textPlace( content, marks.place );
    diagnostic.begin = textPlace( content, marks.begin );
    diagnostic.end = textPlace( content, marks.end );
    diagnostic.excerpt = sourceExcerpt( content, marks, coloured );
}

/// What the source tells about an error's place. The file may have changed, or gone, since it was parsed.
void lookAtSource( Diagnostic& diagnostic, const AgentRun& run, bool coloured ) {
    const MountProfileHdlr& handler = *run.handler;
    const ErrorDetails& details = handler.errorDetails();
    const bool isGiven = run.text && handler.errorDesc().includeFileName().empty();
    const auto content = isGiven ? run.text : readSource( diagnostic.file );
    if ( !content )
        return;
    showPlace( diagnostic, *content, { details.place, details.begin, details.end }, coloured );
    diagnostic.hint = withoutMiddle( hintFor( handler, *content ) );
}

Diagnostic invalidFile( const AgentRun& run, bool coloured ) {
    const MountProfileHdlr& handler = *run.handler;
    const RecognitionError& error = handler.errorDesc();
    Diagnostic diagnostic;
    diagnostic.code = handler.errorDetails().code;
    diagnostic.file = error.placeFileName().str();
    diagnostic.message = withoutMiddle( messageOf( error ) );
    diagnostic.includedFrom = inclusionOf( handler );
    // GCOVR_EXCL_BR_START: an error without a place is one that assertions do not let happen
    if ( handler.errorDetails().hasPlace )
        // GCOVR_EXCL_BR_STOP
        lookAtSource( diagnostic, run, coloured );
    return diagnostic;
}

/// Empty when the agent file has gone since it was parsed.
std::string agentTextOf( const AgentRun& run ) {
    return ( run.text ? run.text : readSource( run.agentFile ) ).value_or( "" );
}

/// A line of a text, less the blanks around it; the text's end if it has become shorter since it was parsed.
Marks marksOfLine( std::string_view content, std::uint32_t number ) {
    std::size_t begin = 0;
    for ( std::uint32_t line = 1; line < number; ++line )
        begin = std::min( content.find( '\n', begin ), content.size() - 1 ) + 1;
    const std::string_view line = content.substr( begin, content.find( '\n', begin ) - begin );
    const std::size_t text = begin + std::min( line.find_first_not_of( " \t" ), line.size() );
    return { text, text, std::max( text, begin + line.find_last_not_of( " \t\r" ) + 1 ) };
}

/// What of a file that was read cannot be read: an include file, or the configured paths.
void lookAtInclude( Diagnostic& diagnostic, const AgentRun& run, bool coloured ) {
    const ErrorDetails& details = run.handler->errorDetails();
    const std::string content = agentTextOf( run );
    showPlace( diagnostic, content, marksOfLine( content, details.includeLine ), coloured );
    if ( details.includeMatches == 0 )
        diagnostic.hint = "K7_CHROOT is set: give the configured paths with --system and --config-root";
}

Diagnostic unreadableFile( const AgentRun& run, bool coloured ) {
    Diagnostic diagnostic;
    diagnostic.code = unreadableCode;
    diagnostic.file = run.agentFile;
    diagnostic.message = withoutMiddle( printable( run.reason ) );
    if ( run.handler && run.handler->errorDetails().includeLine )
        lookAtInclude( diagnostic, run, coloured );
    return diagnostic;
}

void appendNote( std::string& text, const std::string& note ) {
    text += "      = " + note + "\n";
}

} // namespace

std::optional<Diagnostic> diagnosticOf( const AgentRun& run, bool coloured ) {
    Diagnostic diagnostic;
    diagnostic.file = run.agentFile;
    switch ( run.outcome ) {
    case Outcome::valid:
        return std::nullopt;
    case Outcome::invalid:
        return invalidFile( run, coloured );
    case Outcome::notAgentFile:
        diagnostic.code = notAgentFileCode;
        diagnostic.message = whyNotAgentFile;
        diagnostic.hint = hintForNoAgentFile( agentTextOf( run ) );
        break;
    case Outcome::unreadable:
        return unreadableFile( run, coloured );
    }
    return diagnostic;
}

Diagnostic usageError( std::string_view text ) {
    Diagnostic diagnostic;
    diagnostic.code = usageCode;
    diagnostic.message = withoutMiddle( printable( text ) );
    return diagnostic;
}

std::string printable( const Inclusion& inclusion ) {
    return "included from " + printable( inclusion.file ) + ":" + std::to_string( inclusion.line ) +
           " (pattern " + printable( inclusion.pattern ) + ", match " + std::to_string( inclusion.match ) +
           " of " + std::to_string( inclusion.matches ) + ")";
}

std::string diagnosticsOf( const AgentRun& run, bool coloured ) {
    const auto diagnostic = diagnosticOf( run, coloured );
    if ( !diagnostic )
        return withoutMiddle( run.printed );
    std::string text = withoutMiddle( run.printed );
    if ( run.outcome != Outcome::invalid )
        text += "mountprofile: " + printable( diagnostic->file ) + ": " + diagnostic->message +
                codeMark( diagnostic->code ) + "\n";
    text += diagnostic->excerpt;
    if ( diagnostic->includedFrom )
        appendNote( text, printable( *diagnostic->includedFrom ) );
    if ( !diagnostic->hint.empty() )
        appendNote( text, "hint: " + diagnostic->hint );
    if ( run.outcome != Outcome::invalid )
        return text;
    const std::string code( diagnostic->code );
    appendNote( text, code + ": 'mountprofile explain " + code + "' tells more" );
    return text;
}

} // namespace Corvid::Cli
