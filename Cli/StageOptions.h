#pragma once

#include "Corvid/EntityManager.h"
#include "Kiv/Ptr.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace Corvid::Cli {

/// What surrounds a handler: the arguments of its constructor that do not name the file.
struct Stage {
    Kiv::Ptr<const EntityManager> entityManager; ///< null without `--system`
    bool addDefaults = true;
};

/// The options that set up the platform for the files of one command.
class StageOptions {
  public:
    /// Adds the options to a command. This object outlives the command's parsing.
    void addTo( CLI::App& command );

    /// Sets up the embedded platform as the options ask. Once, before any handler runs.
    /// @throws std::runtime_error when the file of `--config-root` cannot be used.
    [[nodiscard]] Stage setUp() const;

  private:
    bool noDefaults_ = false;
    bool redundancy_ = false;
    std::optional<std::string> system_;
    unsigned cell_ = 1;
    std::optional<std::string> configRootFile_;
};

} // namespace Corvid::Cli
