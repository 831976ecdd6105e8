#include "packaging/completion/Scripts.h"

namespace Corvid::Completion {

namespace {

std::string names( const CommandTable& table, const std::string& separator ) {
    std::vector<std::string> all;
    for ( const CommandEntry& command : table.commands )
        all.push_back( command.name );
    return joined( all, separator );
}

std::string spellings( const std::vector<OptionEntry>& options ) {
    std::vector<std::string> all;
    for ( const OptionEntry& option : options )
        all.insert( all.end(), option.spellings.begin(), option.spellings.end() );
    return joined( all );
}

std::string offer( const std::string& words ) {
    return "mapfile -t COMPREPLY < <( compgen -W " + quoted( words ) + " -- \"$cur\" )";
}

/// The command that completes a value.
std::string completer( const Value& value ) {
    switch ( value.kind ) {
    case Value::Kind::file:
        return "_filedir";
    case Value::Kind::word:
        return offer( joined( value.words ) );
    case Value::Kind::none:
    case Value::Kind::text:
        break;
    }
    return ":";
}

std::string optionValues( const CommandTable& table ) {
    std::string rows;
    for ( const CommandEntry& command : table.commands )
        for ( const OptionEntry& option : command.options )
            if ( option.value.kind != Value::Kind::none )
                for ( const std::string& spelling : option.spellings )
                    rows += "        '" + command.name + " " + spelling + "') " + completer( option.value ) +
                            "; return ;;\n";
    return rows;
}

std::string options( const CommandTable& table ) {
    std::string rows = "            '') " + offer( spellings( table.options ) ) + " ;;\n";
    for ( const CommandEntry& command : table.commands )
        rows += "            " + command.name + ") " + offer( spellings( command.options ) ) + " ;;\n";
    return rows;
}

std::string arguments( const CommandTable& table ) {
    std::string rows = "        '') " + offer( names( table, " " ) ) + " ;;\n";
    for ( const CommandEntry& command : table.commands )
        rows += "        " + command.name + ") " + completer( command.argument ) + " ;;\n";
    return rows;
}

} // namespace

std::string bashScript( const CommandTable& table ) {
    return "# bash completion for mountprofile, made from the command's own options; needs bash-completion\n"
           "_mountprofile() {\n"
           "    local cur prev words cword split\n"
           "    _init_completion -s || return\n"
           "    local command='' filesOnly='' word\n"
           "    for word in \"${words[@]:1:cword-1}\"; do\n"
           "        case $word in\n"
           "            --) filesOnly=yes ;;\n"
           "            " +
           names( table, " | " ) +
           ") command=${command:-$word} ;;\n"
           "        esac\n"
           "    done\n"
           "    [[ -n $filesOnly ]] || case \"$command $prev\" in\n" +
           optionValues( table ) +
           "    esac\n"
           "    if [[ $split == true ]]; then\n"
           "        return\n"
           "    elif [[ $cur == -* && -z $filesOnly ]]; then\n"
           "        case $command in\n" +
           options( table ) +
           "        esac\n"
           "        return\n"
           "    fi\n"
           "    case $command in\n" +
           arguments( table ) +
           "    esac\n"
           "} &&\n"
           "    complete -F _mountprofile mountprofile\n";
}

} // namespace Corvid::Completion
