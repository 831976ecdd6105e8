#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Model {

/// Plain records of all that can be seen of a run, filled by the model and, from the library's records, by
/// the test.

struct ErrorRecord {
    std::string fileName;
    std::string includeFileName;
    std::uint32_t line = 0;
    std::int32_t position = 0;
    std::uint32_t kind = 0;
    std::string recognizer;
    std::string description;
    std::string sourceLine;
};

struct FilterRecord {
    bool enabled = false;
    std::map<std::string, std::string> keys; ///< attribute to key
};

struct MountRecord {
    std::string type;
    std::string flags;
    FilterRecord filter;
};

struct GroupRecord {
    unsigned priority = 0;
    bool blocking = false;
    std::string entireCondition;
    std::vector<std::string> conditions;
    std::map<std::string, bool> templateConditions;
    std::map<std::string, MountRecord> mounts;
};

struct ProfileRecord {
    bool valid = true;
    ErrorRecord error;
    bool hybridMount = false;
    bool lowMountPrio = false;
    bool noDefaultMountGroup = false;
    std::string rootFlags;
    std::map<unsigned, std::string> templateKeys;
    std::map<std::string, std::string> aliases;
    std::map<std::string, GroupRecord> groups;
};

struct Outcome {
    std::string kind; ///< "valid", "invalid", "notAgentFile" or "unreadable"
    std::string exception;
    std::map<std::string, ProfileRecord> profiles; ///< the whole directory of profiles
    ErrorRecord error;                             ///< the handler's own
    std::vector<std::string> subAgents;
    std::vector<std::string> traces; ///< levels 0 and 1, "LEVEL TEXT"
    std::string printed;             ///< what went to standard error
};

/// One line for each fact, so that two outcomes can be compared as text.
[[nodiscard]] std::string outcomeText( const Outcome& outcome );

} // namespace Model
