#pragma once

#include "Cli/Command.h"
#include "Cli/OriginRecord.h"
#include "Cli/ReadingOptions.h"
#include "Cli/StageOptions.h"

#include <string>

namespace Corvid::Cli {

/// `show FILE`: the profile record that an agent file yields.
class ShowCommand final : public Command {
  public:
    explicit ShowCommand( CLI::App& program );
    ExitStatus run( Console& console ) override;

  private:
    void addOptions( CLI::App& app );
    void print( Console& console, const AgentRun& run, const OriginRecord* origins ) const;

    StageOptions stageOptions_;
    ReadingOptions readingOptions_;
    bool json_ = false;
    bool origin_ = false;
    bool tree_ = false; ///< only excludes the other form
    std::string file_;
};

} // namespace Corvid::Cli
