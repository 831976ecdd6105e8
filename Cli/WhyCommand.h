#pragma once

#include "Cli/AgentRun.h"
#include "Cli/Command.h"
#include "Cli/OriginRecord.h"
#include "Cli/StageOptions.h"

#include <string>
#include <string_view>

namespace Corvid::Cli {

/// `why FILE PATH`: which lines made a mount what it is.
class WhyCommand final : public Command {
  public:
    explicit WhyCommand( CLI::App& program );
    ExitStatus run( Console& console ) override;

  private:
    void addOptions( CLI::App& app );
    /// @return whether the path is mounted.
    static bool tellMounts( Console& console, const PassiveAgentProfile& profile, const OriginRecord& record,
                            std::string_view path );
    void tellThatItIsNotMounted( Console& console, const PassiveAgentProfile& profile ) const;

    StageOptions stageOptions_;
    std::string file_;
    std::string path_;
};

} // namespace Corvid::Cli
