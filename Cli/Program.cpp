#include "Cli/Program.h"

#include "Cli/CheckReport.h"
#include "Cli/PrintableText.h"

#include <stdexcept>

namespace Corvid::Cli {

namespace {

/// The form in which `check` is asked to speak, also by a command line that has other things wrong with it;
/// null when it is not. @param arguments from the last to the first.
const ReportFormat* formatAskedFor( const std::vector<std::string>& arguments ) {
    if ( arguments.empty() || arguments.back() != "check" )
        return nullptr;
    constexpr std::string_view option = "--format";
    const ReportFormat* format = nullptr;
    for ( auto argument = arguments.rbegin(); argument != arguments.rend() && *argument != "--";
          ++argument ) {
        if ( *argument == option && argument + 1 != arguments.rend() )
            format = reportFormat( argument[1] );
        else if ( argument->starts_with( std::string( option ) + "=" ) )
            format = reportFormat( argument->substr( option.size() + 1 ) );
    }
    return format;
}

} // namespace

void Program::complain( Console& console, const std::string& text,
                        const std::vector<std::string>& arguments ) {
    const ReportFormat* format = formatAskedFor( arguments );
    Diagnostic diagnostic = usageError( text );
    diagnostic.hint = printable( hintForCommandLine() );
    ( format ? format : &reportFormats().front() )->newReport( console )->usageError( diagnostic );
}

ExitStatus Program::runChosen( Console& console ) {
    for ( Command* command :
          { static_cast<Command*>( &show_ ), static_cast<Command*>( &check_ ), static_cast<Command*>( &why_ ),
            static_cast<Command*>( &tokens_ ), static_cast<Command*>( &explain_ ) } )
        if ( command->chosen() )
            return command->run( console );
    throw std::runtime_error( "no command given; see mountprofile --help" );
}

} // namespace Corvid::Cli
