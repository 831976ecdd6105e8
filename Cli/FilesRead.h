#pragma once

#include "Cli/Output.h"
#include "ProfileParser/RunObserver.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Corvid::Cli {

/// Notes the files that a run reads.
class FilesRead final : public RunObserver {
  public:
    void fileRead( std::string_view fileName, bool isInclude ) override;
    [[nodiscard]] std::vector<std::string> take() { return std::move( names_ ); }

  private:
    std::vector<std::string> names_;
};

/// The files of several runs, each once, in the order in which they were read first.
class FileList {
  public:
    void add( const std::vector<std::string>& names );
    /// One a line; bytes that are not printable as `\xNN`.
    void write( Output& out ) const;
    [[nodiscard]] const std::vector<std::string>& names() const { return names_; }

  private:
    std::vector<std::string> names_;
    std::unordered_set<std::string> known_;
};

} // namespace Corvid::Cli
