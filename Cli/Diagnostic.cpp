#include "Cli/Diagnostic.h"

#include "Cli/CommandCodes.h"
#include "Cli/Hints.h"
#include "Cli/PrintableText.h"
#include "Cli/SourceExcerpt.h"

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
    return Inclusion{ handler.errorDesc().fileName().str(), details.includeLine, details.includePattern,
                      details.includeMatch, details.includeMatches };
}

/// What the source tells about an error's place. The file may have changed, or gone, since it was parsed.
void lookAtSource( Diagnostic& diagnostic, const AgentRun& run, bool coloured ) {
    const MountProfileHdlr& handler = *run.handler;
    const ErrorDetails& details = handler.errorDetails();
    const bool isGiven = run.text && handler.errorDesc().includeFileName().empty();
    const auto content = isGiven ? run.text : readSource( diagnostic.file );
    if ( !content )
        return;
    diagnostic.place = textPlace( *content, details.place );
    diagnostic.begin = textPlace( *content, details.begin );
    diagnostic.end = textPlace( *content, details.end );
    diagnostic.excerpt = sourceExcerpt( *content, { details.place, details.begin, details.end }, coloured );
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
        diagnostic.hint = hintForNoAgentFile(
            ( run.text ? run.text : readSource( run.agentFile ) ).value_or( std::string() ) );
        break;
    case Outcome::unreadable:
        diagnostic.code = unreadableCode;
        diagnostic.message = printable( run.reason );
        break;
    }
    return diagnostic;
}

Diagnostic usageError( std::string_view text ) {
    Diagnostic diagnostic;
    diagnostic.code = usageCode;
    diagnostic.message = printable( text );
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
