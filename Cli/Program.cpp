#include "Cli/Program.h"

#include "Cli/CheckReport.h"
#include "Cli/CommandCodes.h"
#include "Cli/LiteralArguments.h"
#include "Cli/PrintableText.h"
#include "Cli/Spelling.h"

#include <cerrno>
#include <cstring>
#include <new>
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

Program::Program() {
    app_.set_help_all_flag( "" );
    app_.set_version_flag( "--version", "mountprofile " MOUNTPROFILE_VERSION, "Print the version and exit" );
    app_.require_subcommand( 0, 1 ); // none is told in our own words, see runChosen()
    app_.footer( "Every command has --help.\n\n"
                 "Examples:\n"
                 "  mountprofile show profiles/Fan\n"
                 "  mountprofile check profiles\n"
                 "  mountprofile why profiles/Fan /hardware/fan/%chassis/%slot\n"
                 "  mountprofile tokens profiles/Fan\n"
                 "  mountprofile explain MP042" );
}

ExitStatus Program::run( int argc, char** argv, Console& console ) {
    std::vector<std::string> arguments;
    try {
        arguments = literalArguments( argc, argv );
        app_.parse( std::vector<std::string>( arguments ) );
        return runChosen( console );
    } catch ( const CLI::CallForHelp& ) {
        console.out.append( app_.help() );
        return ExitStatus::valid;
    } catch ( const CLI::CallForVersion& version ) {
        console.out.append( std::string( version.what() ) + "\n" );
        return ExitStatus::valid;
    } catch ( const CLI::ExtrasError& ) {
        complain( console, withoutMarks( unexpectedArguments() ), arguments );
    } catch ( const std::bad_alloc& ) {
        console.out.discard();
        console.complain( std::strerror( ENOMEM ), systemCode );
    } catch ( const std::runtime_error& error ) { // of the command line, or of the command
        console.out.discard();
        complain( console, withoutMarks( error.what() ), arguments );
    }
    return ExitStatus::trouble;
}

void Program::complain( Console& console, const std::string& text,
                        const std::vector<std::string>& arguments ) {
    const ReportFormat* format = formatAskedFor( arguments );
    Diagnostic diagnostic = usageError( text );
    diagnostic.hint = printable( hintForCommandLine() );
    ( format ? format : &reportFormats().front() )->newReport( console )->usageError( diagnostic );
}

std::string
Program::unexpectedArguments() const { // the library's own text has them from the last to the first
    const auto unexpected = app_.remaining( true );
    std::string text = unexpected.size() == 1 ? "The following argument was not expected:"
                                              : "The following arguments were not expected:";
    for ( const std::string& argument : unexpected )
        text += " " + argument;
    return text;
}

std::string Program::hintForCommandLine() const {
    const auto unexpected = app_.remaining( true );
    if ( unexpected.empty() )
        return {};
    const std::string word = unexpected.front().substr( 0, unexpected.front().find( '=' ) );
    std::vector<std::string> candidates;
    const auto chosen = app_.get_subcommands();
    if ( chosen.empty() )
        for ( const CLI::App* command : app_.get_subcommands( []( const CLI::App* ) { return true; } ) )
            candidates.push_back( command->get_name() );
    for ( const CLI::Option* option : ( chosen.empty() ? &app_ : chosen.front() )->get_options() )
        for ( const std::string& name : option->get_lnames() )
            candidates.push_back( "--" + name );
    return didYouMean( word, candidates );
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
