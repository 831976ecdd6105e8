#pragma once

#include "Cli/Command.h"

#include <string>

namespace Corvid::Cli {

/// `explain CODE`: what an error means, with a wrong and a right example.
class ExplainCommand final : public Command {
  public:
    explicit ExplainCommand( CLI::App& program );
    ExitStatus run( Console& console ) override;

  private:
    std::string code_;
};

} // namespace Corvid::Cli
