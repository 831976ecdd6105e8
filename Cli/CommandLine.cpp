// What users can write on the command line: all commands and options, with what --help tells of them; and how
// it is read. All of it stands together because the command line library's header takes longer to compile
// than the rest of the command's files.

#include "Cli/CommandCodes.h"
#include "Cli/LiteralArguments.h"
#include "Cli/Program.h"
#include "Cli/Spelling.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <new>
#include <stdexcept>
#include <thread>

namespace Corvid::Cli {

namespace {

/// Takes the mark away from what an option is given.
void takeLiterally( CLI::Option& option ) {
    option.transform( []( const std::string& value ) { return withoutMarks( value ); }, "" );
}

/// The same for an option whose value names a file: it is refused when it is empty, as a variable that is not
/// set leaves it.
void takeAsFileName( CLI::Option& option ) {
    takeLiterally( option );
    option.check( []( const std::string& value ) { return value.empty() ? "is empty" : ""; }, "" );
}

unsigned processors() {
    return std::max( 1U, std::thread::hardware_concurrency() );
}

std::vector<std::string> formatNames() {
    std::vector<std::string> names;
    for ( const ReportFormat& format : reportFormats() )
        names.emplace_back( format.name );
    return names;
}

void addStageOptions( CLI::App& command, StageOptions& options ) {
    constexpr auto group = "Stage options (what surrounds the agent: its mounts may depend on it)";
    command.add_flag( "--no-defaults", options.noDefaults, "Leave out the mounts that every agent gets" )
        ->group( group );
    auto* system =
        command.add_option( "--system", options.system, "Run with an entity manager of that system name" )
            ->type_name( "NAME" )
            ->group( group );
    command.add_flag( "--redundancy", options.redundancy, "The system is one of a redundant pair" )
        ->needs( system )
        ->group( group );
    auto* cell =
        command
            .add_option( "--cell", options.cell, "The cell that this machine is: 0, 1 or 2; 1 if not given" )
            ->type_name( "N" )
            ->check( CLI::Range( 0, 2 ).description( "" ) )
            ->group( group );
    auto* configRoot =
        command
            .add_option( "--config-root", options.configRootFile,
                         "The configured paths, one 'path type flags' a line; flags may be missing" )
            ->type_name( "FILE" )
            ->needs( system )
            ->group( group );
    takeLiterally( *system );
    takeLiterally( *cell );
    takeAsFileName( *configRoot );
}

} // namespace

bool Command::chosen() const {
    return app_.parsed();
}

ReadingOptions::Added ReadingOptions::addTo( CLI::App& command ) {
    constexpr auto group = "Input options";
    takeAsFileName( *command
                         .add_option( "--stdin-path", stdinPath_,
                                      "Where the file that is read from standard input, as -, would lie" )
                         ->type_name( "PATH" )
                         ->group( group ) );
    auto* depfile = command
                        .add_option( "--depfile", depfile_,
                                     "Write the files that are read to FILE, as a rule for make or ninja" )
                        ->type_name( "FILE" )
                        ->group( group );
    takeAsFileName( *depfile );
    auto* listFiles = command
                          .add_flag( "--list-files", listFiles_,
                                     "Print the files that are read, one a line, and nothing else" )
                          ->group( group );
    return { *listFiles, *depfile };
}

ShowCommand::ShowCommand( CLI::App& program )
    : Command( *program.add_subcommand( "show", "Print the profile record that an agent file yields" ) ) {
    addOptions( *program.get_subcommand( "show" ) );
}

void ShowCommand::addOptions( CLI::App& app ) {
    takeLiterally( *app.add_option( "FILE", file_, "The agent file" )->required()->type_name( "" ) );
    auto* json = app.add_flag( "--json", json_, "Print one JSON object" );
    auto* tree = app.add_flag( "--tree", tree_, "Print for people (the default)" )->excludes( json );
    auto* origin = app.add_flag( "--origin", origin_, "Tell for everything the file and line that gave it" );
    const auto reading = readingOptions_.addTo( app );
    reading.listFiles.excludes( json )->excludes( tree )->excludes( origin );
    reading.depfile.excludes( origin );
    addStageOptions( app, stageOptions_ );
    app.footer(
        "The FILE - stands for a file on standard input.\n\n"
        "Exit status: 0 valid; 1 invalid, or not an agent file; 2 usage error, or a file that cannot be\n"
        "read.\n\n"
        "Examples:\n"
        "  mountprofile show profiles/Fan\n"
        "  mountprofile show --json --system ar --redundancy --cell 2 profiles/Fan" );
}

CheckCommand::CheckCommand( CLI::App& program )
    : Command( *program.add_subcommand( "check", "Check files, and the agent files in directories" ) ),
      jobs_( processors() ) {
    addOptions( *program.get_subcommand( "check" ) );
}

void CheckCommand::addOptions( CLI::App& app ) {
    auto* paths =
        app.add_option( "PATH", paths_, "Agent files, and directories: the agent files in them and below" )
            ->required()
            ->type_name( "" );
    takeLiterally( *paths );
    auto* format = app.add_option( "--format", format_, "How to tell what was found; text if not given" )
                       ->type_name( "text|json|sarif|gcc|github" )
                       ->check( CLI::IsMember( formatNames() ).description( "" ) );
    auto* jobs = app.add_option( "--jobs", jobs_,
                                 "How many files to check at a time; as many as there are processors if "
                                 "not given" )
                     ->type_name( "N" )
                     ->check( CLI::Range( 1, 1024 ).description( "" ) );
    takeLiterally( *format );
    takeLiterally( *jobs );
    readingOptions_.addTo( app ).listFiles.excludes( format );
    addStageOptions( app, stageOptions_ );
    app.footer(
        "The path - stands for a file on standard input.\n\n"
        "Files in a directory that are not agent files, such as include files, are counted and passed "
        "over.\n\n"
        "The formats other than text are for programs: all is told on standard output, and nothing else is\n"
        "there. json is described by mountprofile-check-1.schema.json; sarif is SARIF 2.1.0; gcc is one "
        "line\n"
        "for each error, as compilers print it; github is one command for each error that a workflow shows\n"
        "as an annotation.\n\n"
        "Exit status: 0 all are valid; 1 a file is invalid, or not an agent file; 2 usage error, or a file\n"
        "that cannot be read. The highest of all files counts.\n\n"
        "Examples:\n"
        "  mountprofile check --jobs 4 profiles extra/Fan\n"
        "  mountprofile check --format sarif profiles > findings.sarif" );
}

WhyCommand::WhyCommand( CLI::App& program )
    : Command( *program.add_subcommand( "why", "Tell which lines made a mount what it is" ) ) {
    addOptions( *program.get_subcommand( "why" ) );
}

void WhyCommand::addOptions( CLI::App& app ) {
    takeLiterally( *app.add_option( "FILE", file_, "The agent file" )->required()->type_name( "" ) );
    takeLiterally( *app.add_option( "PATH", path_, "The path, as 'show' prints it or as the file has it" )
                        ->required()
                        ->type_name( "" ) );
    addStageOptions( app, stageOptions_ );
    app.footer( "'default' stands in place of a line for what every agent gets.\n\n"
                "Exit status: 0 the path is mounted; 1 it is not, or the file is invalid, or not an agent\n"
                "file; 2 usage error, or a file that cannot be read.\n\n"
                "Example:\n"
                "  mountprofile why profiles/Fan /hardware/fan/%chassis/%slot" );
}

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

ExplainCommand::ExplainCommand( CLI::App& program )
    : Command( *program.add_subcommand( "explain", "Tell what an error means, with examples" ) ) {
    auto& app = *program.get_subcommand( "explain" );
    takeLiterally( *app.add_option( "CODE", code_, "The code that 'check' shows with an error" )
                        ->required()
                        ->type_name( "" ) );
    app.footer( "Exit status: 0; 2 usage error, or a code that does not exist.\n\n"
                "Example:\n"
                "  mountprofile explain MP042" );
}

Program::Program()
    : app_( std::make_unique<CLI::App>( "Turns the mount-profile files of agents into mount-profile records.",
                                        "mountprofile" ) ),
      show_( *app_ ), check_( *app_ ), why_( *app_ ), tokens_( *app_ ), explain_( *app_ ) {
    app_->set_help_all_flag( "" );
    app_->set_version_flag( "--version", "mountprofile " MOUNTPROFILE_VERSION, "Print the version and exit" );
    app_->require_subcommand( 0, 1 ); // none is told in our own words, see runChosen()
    app_->footer( "Every command has --help.\n\n"
                  "Examples:\n"
                  "  mountprofile show profiles/Fan\n"
                  "  mountprofile check profiles\n"
                  "  mountprofile why profiles/Fan /hardware/fan/%chassis/%slot\n"
                  "  mountprofile tokens profiles/Fan\n"
                  "  mountprofile explain MP042" );
}

Program::~Program() = default;

ExitStatus Program::run( int argc, char** argv, Console& console ) {
    std::vector<std::string> arguments;
    try {
        arguments = literalArguments( argc, argv );
        app_->parse( std::vector<std::string>( arguments ) );
        return runChosen( console );
    } catch ( const CLI::CallForHelp& ) {
        console.out.append( app_->help() );
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

std::string
Program::unexpectedArguments() const { // the library's own text has them from the last to the first
    const auto unexpected = app_->remaining( true );
    std::string text = unexpected.size() == 1 ? "The following argument was not expected:"
                                              : "The following arguments were not expected:";
    for ( const std::string& argument : unexpected )
        text += " " + argument;
    return text;
}

std::string Program::hintForCommandLine() const {
    const auto unexpected = app_->remaining( true );
    if ( unexpected.empty() )
        return {};
    const std::string word = unexpected.front().substr( 0, unexpected.front().find( '=' ) );
    std::vector<std::string> candidates;
    const auto chosen = app_->get_subcommands();
    if ( chosen.empty() )
        for ( const CLI::App* command : app_->get_subcommands( []( const CLI::App* ) { return true; } ) )
            candidates.push_back( command->get_name() );
    for ( const CLI::Option* option : ( chosen.empty() ? app_.get() : chosen.front() )->get_options() )
        for ( const std::string& name : option->get_lnames() )
            candidates.push_back( "--" + name );
    return didYouMean( word, candidates );
}

} // namespace Corvid::Cli
