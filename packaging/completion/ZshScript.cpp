#include "packaging/completion/Scripts.h"

namespace Corvid::Completion {

namespace {

/// A text inside of an option's description, where some characters mean something.
std::string escaped( const std::string& text ) {
    std::string result;
    for ( const char c : text ) {
        if ( c == '[' || c == ']' || c == ':' || c == '\\' )
            result += '\\';
        result += c;
    }
    return result;
}

std::string completer( const Value& value ) {
    switch ( value.kind ) {
    case Value::Kind::file:
        return ":" + value.name + ":_files";
    case Value::Kind::word:
        return ":" + escaped( value.name ) + ":(" + joined( value.words ) + ")";
    case Value::Kind::text:
        return ":" + value.name + ":( )"; // no words, and no message that would hide options
    case Value::Kind::none:
        break;
    }
    return {};
}

/// One line for each spelling: `'(--tree)--json[Print one JSON object]' \`.
std::string options( const std::vector<OptionEntry>& options, const std::string& indentation ) {
    std::string rows;
    for ( const OptionEntry& option : options ) {
        std::vector<std::string> excluded = option.spellings;
        excluded.insert( excluded.end(), option.excluded.begin(), option.excluded.end() );
        for ( const std::string& spelling : option.spellings ) {
            const bool takesValue = option.value.kind != Value::Kind::none;
            const std::string equals = takesValue && spelling.starts_with( "--" ) ? "=" : "";
            std::string row = "(" + joined( excluded ) + ")";
            row.append( spelling )
                .append( equals )
                .append( "[" )
                .append( escaped( option.help ) )
                .append( "]" );
            row.append( completer( option.value ) );
            rows.append( indentation ).append( quoted( row ) ).append( " \\\n" );
        }
    }
    return rows;
}

std::string commands( const CommandTable& table ) {
    std::string rows;
    for ( const CommandEntry& command : table.commands )
        rows += "                " + quoted( command.name + ":" + escaped( command.help ) ) + "\n";
    return rows;
}

std::string arguments( const CommandTable& table ) {
    static const std::string indentation = "                        ";
    std::string rows;
    for ( const CommandEntry& command : table.commands )
        rows += "                " + command.name + ")\n                    _arguments -s -S : \\\n" +
                options( command.options, indentation ) + indentation +
                quoted( "*" + completer( command.argument ) ) + " ;;\n";
    return rows;
}

} // namespace

std::string zshScript( const CommandTable& table ) {
    return "#compdef mountprofile\n"
           "# zsh completion for mountprofile, made from the command's own options\n"
           "_mountprofile() {\n"
           "    local curcontext=\"$curcontext\" state line\n"
           "    typeset -A opt_args\n"
           "    _arguments -C : \\\n" +
           options( table.options, "        " ) +
           "        '1: :->command' \\\n"
           "        '*:: :->arguments' && return\n"
           "    case $state in\n"
           "        command)\n"
           "            local -a commands=(\n" +
           commands( table ) +
           "            )\n"
           "            _describe -t commands command commands ;;\n"
           "        arguments)\n"
           "            case $words[1] in\n" +
           arguments( table ) +
           "            esac ;;\n"
           "    esac\n"
           "}\n"
           "_mountprofile \"$@\"\n";
}

} // namespace Corvid::Completion
