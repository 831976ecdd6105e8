#pragma once

#include "Cli/Command.h"

#include <string>

namespace Corvid::Cli {

/// `tokens FILE`: what the parser sees of a file, one token a line.
class TokensCommand final : public Command {
  public:
    explicit TokensCommand( CLI::App& program );
    ExitStatus run( Console& console ) override;

  private:
    std::string file_;
};

} // namespace Corvid::Cli
