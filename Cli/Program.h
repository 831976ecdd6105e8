#pragma once

#include "Cli/CheckCommand.h"
#include "Cli/ExplainCommand.h"
#include "Cli/ShowCommand.h"
#include "Cli/TokensCommand.h"
#include "Cli/WhyCommand.h"

#include <CLI/CLI.hpp>

namespace Corvid::Cli {

/// The whole command line: the program and its commands.
class Program {
  public:
    Program();

    /// Does what the command line asks for; what is wrong with it is told on the console.
    ExitStatus run( int argc, char** argv, Console& console );

    /// All commands and options, for who describes them.
    [[nodiscard]] CLI::App& app() noexcept { return app_; }

  private:
    ExitStatus runChosen( Console& console );
    [[nodiscard]] std::string unexpectedArguments() const;
    [[nodiscard]] std::string hintForCommandLine() const;
    void complain( Console& console, const std::string& text, const std::vector<std::string>& arguments );

    CLI::App app_{ "Turns the mount-profile files of agents into mount-profile records.", "mountprofile" };
    ShowCommand show_{ app_ };
    CheckCommand check_{ app_ };
    WhyCommand why_{ app_ };
    TokensCommand tokens_{ app_ };
    ExplainCommand explain_{ app_ };
};

} // namespace Corvid::Cli
