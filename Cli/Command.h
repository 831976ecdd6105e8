#pragma once

#include "Cli/ExitStatus.h"
#include "Cli/Output.h"

#include <string_view>

namespace CLI {
class App;
}

namespace Corvid::Cli {

/// Where a command speaks.
struct Console {
    Output out{ 1 };
    Output err{ 2 };

    /// Tells the user in one line why the command does not do its work, whatever bytes the text holds.
    /// @param code of the error.
    void complain( std::string_view text, std::string_view code );
};

/// One of the program's commands, with its options.
class Command {
  public:
    Command( const Command& ) = delete;
    Command& operator=( const Command& ) = delete;
    virtual ~Command();

    /// Whether the command line names this command.
    [[nodiscard]] bool chosen() const;
    /// Does what the command line asks for. The output need not be flushed.
    /// @throws std::exception for what keeps the whole command from working, with a text for people.
    virtual ExitStatus run( Console& console ) = 0;

  protected:
    /// @param app is this command's part of the command line; it outlives this object.
    explicit Command( CLI::App& app ) : app_( app ) {}

  private:
    CLI::App& app_;
};

} // namespace Corvid::Cli
