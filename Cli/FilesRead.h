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
    /// Writes a rule for make and its kin: the target depends on the files. A target is the depfile's name
    /// without ".d" at its end. The file is replaced as a whole, or stays as it was.
    /// @throws std::runtime_error when it cannot be written, or a name cannot be part of a rule.
    void writeDepfile( const std::string& depfile ) const;

  private:
    std::vector<std::string> names_;
    std::unordered_set<std::string> known_;
};

} // namespace Corvid::Cli
