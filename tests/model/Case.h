#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Model {

struct ConfiguredPath {
    std::string path;
    std::string type;
    std::string flags;
};

/// Everything that the outcome of one run depends on.
struct Case {
    std::string agentText;
    std::map<std::string, std::string> otherFiles; ///< beside the agent file: name to text
    std::vector<std::string> directories;          ///< names of empty directories beside the agent file
    bool bareName = false; ///< the handler gets the agent file's name alone, from within its directory
    bool addDefaults = true;
    bool plainTokens = false; ///< the handler reads tokens with the parser library's own streams

    std::optional<std::string> system; ///< name of the entity manager's system; nothing for no entity manager
    bool standalone = false;
    std::uint32_t configuredMode = 3; ///< of the redundancy status, which is there whenever the system is
    std::uint32_t operationalMode = 3;
    std::uint32_t cell = 1;                 ///< 0 to 2
    std::vector<ConfiguredPath> configRoot; ///< there whenever the system is

    std::optional<std::string> chroot; ///< K7_CHROOT; set only together with a system
    std::optional<std::string> waitForReady;
    std::optional<std::string> activeCell;
};

inline constexpr const char* agentFileName = "agent";

/// The case as a text to reproduce it from; one item a line, bytes escaped.
[[nodiscard]] std::string caseText( const Case& input );

} // namespace Model
