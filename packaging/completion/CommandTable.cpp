#include "packaging/completion/CommandTable.h"

#include <CLI/CLI.hpp>
#include <cctype>
#include <map>
#include <stdexcept>

namespace Corvid::Completion {

namespace {

/// What completes a value, by the name that --help has for it.
const std::map<std::string, Value::Kind>& valueKinds() {
    static const std::map<std::string, Value::Kind> kinds{
        { "FILE", Value::Kind::file }, { "PATH", Value::Kind::file }, { "CODE", Value::Kind::text },
        { "N", Value::Kind::text },    { "NAME", Value::Kind::text },
    };
    return kinds;
}

bool namesItsWords( const std::string& name ) {
    return !name.empty() && !std::isupper( static_cast<unsigned char>( name.front() ) );
}

/// @param owner whose value it is, for the complaint.
Value valueCalled( const std::string& name, const std::string& owner ) {
    if ( namesItsWords( name ) )
        return { Value::Kind::word, name, CLI::detail::split( name, '|' ) };
    if ( const auto kind = valueKinds().find( name ); kind != valueKinds().end() )
        return { kind->second, name, {} };
    throw std::runtime_error(
        owner + ": the value is called '" + name +
        "', which does not tell shells what completes it. Give the option another type_name(): the words "
        "that it can be, in lower case with | between them, or a name that stands in valueKinds() of "
        "packaging/completion/CommandTable.cpp; or add it there." );
}

std::vector<std::string> spellingsOf( const CLI::Option& option ) {
    std::vector<std::string> spellings;
    for ( const auto& name : option.get_snames() )
        spellings.push_back( "-" + name );
    for ( const auto& name : option.get_lnames() )
        spellings.push_back( "--" + name );
    return spellings;
}

OptionEntry entryOf( const CLI::Option& option, const std::string& command ) {
    OptionEntry entry;
    entry.spellings = spellingsOf( option );
    entry.help = option.get_description();
    for ( const CLI::Option* other : option.get_excludes() )
        for ( const auto& spelling : spellingsOf( *other ) )
            entry.excluded.push_back( spelling );
    if ( option.get_items_expected_max() > 0 )
        entry.value = valueCalled( option.get_type_name(), command + " " + option.get_name() );
    return entry;
}

/// Options without a group are not told in --help, and so not offered.
bool isShown( const CLI::Option* option ) {
    return !option->get_group().empty();
}

std::vector<OptionEntry> optionsOf( const CLI::App& app ) {
    std::vector<OptionEntry> entries;
    for ( const CLI::Option* option : app.get_options( isShown ) )
        if ( option->nonpositional() )
            entries.push_back( entryOf( *option, app.get_name() ) );
    return entries;
}

/// What all positional arguments of a command are; its commands take one of a kind, or several of the same.
Value argumentOf( const CLI::App& app ) {
    Value argument;
    for ( const CLI::Option* option : app.get_options( isShown ) ) {
        if ( !option->get_positional() )
            continue;
        const Value value =
            valueCalled( option->get_type_name().empty() ? option->get_name( true ) : option->get_type_name(),
                         app.get_name() );
        // Where one is a word and the other a file, files can still be typed for what they are.
        if ( argument.kind == Value::Kind::none || value.kind == Value::Kind::file )
            argument = value;
    }
    return argument;
}

} // namespace

CommandTable tableOf( const CLI::App& program ) {
    CommandTable table;
    table.options = optionsOf( program );
    for ( const CLI::App* command : program.get_subcommands( []( const CLI::App* ) { return true; } ) )
        table.commands.push_back( { command->get_name(), command->get_description(), optionsOf( *command ),
                                    argumentOf( *command ) } );
    return table;
}

} // namespace Corvid::Completion
