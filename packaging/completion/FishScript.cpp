#include "packaging/completion/Scripts.h"

namespace Corvid::Completion {

namespace {

std::string fishQuoted( const std::string& text ) {
    return quoted( text, "\\'" );
}

std::string line( const std::string& condition, const std::string& what ) {
    return "complete -c mountprofile -n " + fishQuoted( condition ) + what + "\n";
}

/// How a value is completed; no files unless it says so.
std::string completer( const Value& value ) {
    switch ( value.kind ) {
    case Value::Kind::file:
        return " -r -F";
    case Value::Kind::word:
        return " -x -a " + fishQuoted( joined( value.words ) );
    case Value::Kind::text:
        return " -x";
    case Value::Kind::none:
        break;
    }
    return {};
}

std::string options( const std::vector<OptionEntry>& options, const std::string& condition ) {
    std::string lines;
    for ( const OptionEntry& option : options ) {
        std::string what;
        for ( const std::string& spelling : option.spellings )
            what +=
                spelling.starts_with( "--" ) ? " -l " + spelling.substr( 2 ) : " -s " + spelling.substr( 1 );
        lines += line( condition, what + completer( option.value ) + " -d " + fishQuoted( option.help ) );
    }
    return lines;
}

std::string argument( const Value& value, const std::string& condition ) {
    if ( value.kind == Value::Kind::file )
        return line( condition, " -F" );
    if ( value.kind == Value::Kind::word )
        return line( condition, " -a " + fishQuoted( joined( value.words ) ) );
    return {};
}

} // namespace

std::string fishScript( const CommandTable& table ) {
    static const std::string noCommand = "__fish_use_subcommand";
    std::string script = "# fish completion for mountprofile, made from the command's own options\ncomplete "
                         "-c mountprofile -f\n";
    for ( const CommandEntry& command : table.commands )
        script += line( noCommand, " -a " + command.name + " -d " + fishQuoted( command.help ) );
    script += options( table.options, noCommand );
    for ( const CommandEntry& command : table.commands ) {
        const std::string condition = "__fish_seen_subcommand_from " + command.name;
        script += options( command.options, condition ) + argument( command.argument, condition );
    }
    return script;
}

} // namespace Corvid::Completion
