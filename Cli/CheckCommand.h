#pragma once

#include "Cli/CheckReport.h"
#include "Cli/ReadingOptions.h"
#include "Cli/StageOptions.h"

#include <string>
#include <vector>

namespace Corvid::Cli {

/// `check PATH...`: whether files, and the agent files in directories, are valid.
class CheckCommand final : public Command {
  public:
    explicit CheckCommand( CLI::App& program );
    ExitStatus run( Console& console ) override;

  private:
    void addOptions( CLI::App& app );

    [[nodiscard]] std::vector<ListedFile> filesToCheck();
    /// Says what is to be said after all files. @return the status in the end.
    ExitStatus finish( Console& console, CheckReport& report, const CheckCounts& counts,
                       ExitStatus status ) const;

    StageOptions stageOptions_;
    ReadingOptions readingOptions_;
    std::string format_ = "text";
    unsigned jobs_;
    std::vector<std::string> paths_;
};

} // namespace Corvid::Cli
