#pragma once

#include "Cli/CheckCommand.h"
#include "Cli/ExplainCommand.h"
#include "Cli/ShowCommand.h"
#include "Cli/TokensCommand.h"
#include "Cli/WhyCommand.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Corvid::Cli {

/// The whole command line: the program and its commands.
class Program {
  public:
    Program();
    ~Program();
    Program( const Program& ) = delete;
    Program& operator=( const Program& ) = delete;

    /// Does what the command line asks for; what is wrong with it is told on the console.
    ExitStatus run( int argc, char** argv, Console& console );

    /// All commands and options, for who describes them.
    [[nodiscard]] CLI::App& app() noexcept { return *app_; }

  private:
    ExitStatus runChosen( Console& console );
    [[nodiscard]] std::string unexpectedArguments() const;
    [[nodiscard]] std::string hintForCommandLine() const;
    void complain( Console& console, const std::string& text, const std::vector<std::string>& arguments );

    std::unique_ptr<CLI::App> app_;
    ShowCommand show_;
    CheckCommand check_;
    WhyCommand why_;
    TokensCommand tokens_;
    ExplainCommand explain_;
};

} // namespace Corvid::Cli
