#pragma once

#include "Corvid/EntityManager.h"
#include "Kiv/Ptr.h"

#include <optional>
#include <string>
#include <vector>

namespace Corvid::Cli {

/// What surrounds a handler: the arguments of its constructor that do not name the file.
struct Stage {
    Kiv::Ptr<const EntityManager> entityManager; ///< null without `--system`
    bool addDefaults = true;
};

/// What sets up the platform for the files of one command.
struct StageOptions {
    bool noDefaults = false; ///< leaves out the mounts that every agent gets
    bool redundancy = false; ///< only with a system
    std::optional<std::string> system;
    unsigned cell = 1;                         ///< 0 to 2
    std::optional<std::string> configRootFile; ///< only with a system

    /// Sets up the embedded platform as the options ask. Once, before any handler runs.
    /// @throws std::runtime_error when the file of `--config-root` cannot be used.
    [[nodiscard]] Stage setUp() const;
    /// The files that setting up reads.
    [[nodiscard]] std::vector<std::string> filesRead() const;
};

} // namespace Corvid::Cli
