#pragma once

#include "Cli/AgentFileList.h"
#include "Cli/AgentRun.h"
#include "Cli/Diagnostic.h"
#include "Cli/FilesRead.h"

#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace Corvid::Cli {

/// The options about what is read: the agent file on standard input, and the files that a run reads.
class ReadingOptions {
  public:
    /// Those that others may not go with.
    struct Added {
        CLI::Option& listFiles; ///< replaces the command's own output
        CLI::Option& depfile;
    };
    /// Adds the options to a command. This object outlives the command's parsing.
    Added addTo( CLI::App& command );

    /// A file that the user names. For `-` standard input is read.
    [[nodiscard]] ListedFile named( const std::string& path );
    /// Whether a run has to be observed.
    [[nodiscard]] bool asksForFiles() const { return listFiles_ || depfile_; }
    /// Whether the list of files takes the place of the command's own output.
    [[nodiscard]] bool asksForList() const { return listFiles_; }
    /// Notes the files of a run, those of all runs in their order.
    void add( const std::vector<std::string>& filesRead ) { files_.add( filesRead ); }
    /// Writes the list, and the depfile unless files are missing in it because they could not be read.
    /// @return why the depfile could not be written, if so.
    [[nodiscard]] std::optional<Diagnostic> finish( Output& out, ExitStatus status ) const;
    /// @throws std::runtime_error when an option is given that the arguments leave without a meaning.
    void check() const;

  private:
    std::optional<std::string> stdinPath_;
    bool listFiles_ = false;
    std::optional<std::string> depfile_;
    bool hasReadStandardInput_ = false;
    FileList files_;
};

/// Runs an agent file that the user named, or one of a directory.
[[nodiscard]] AgentRun runListedFile( const Stage& stage, const ListedFile& file, RunObserver* observer );

} // namespace Corvid::Cli
