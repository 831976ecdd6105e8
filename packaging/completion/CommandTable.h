#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Corvid::Completion {

/// What stands at the place of an argument.
struct Value {
    enum class Kind {
        none, ///< no argument is expected
        file, ///< a file's or a directory's name
        text, ///< something that only the user knows
        word, ///< one of `words`
    };
    Kind kind = Kind::none;
    std::string name; ///< as --help calls it, for example FILE
    std::vector<std::string> words;
};

struct OptionEntry {
    std::vector<std::string> spellings; ///< for example -h and --help
    std::vector<std::string> excluded;  ///< spellings of the options that it does not go with
    std::string help;
    Value value;
};

struct CommandEntry {
    std::string name;
    std::string help;
    std::vector<OptionEntry> options;
    Value argument; ///< what the command's further arguments are
};

/// All that can be typed behind the program's name.
struct CommandTable {
    std::vector<OptionEntry> options; ///< those in place of a command
    std::vector<CommandEntry> commands;
};

/// Reads the table off a program's own commands and options.
/// @throws std::runtime_error for a value whose name does not tell what completes it, with what to do about
/// it.
[[nodiscard]] CommandTable tableOf( const CLI::App& program );

} // namespace Corvid::Completion
