#pragma once

#include "Corvid/EntityManager.h"
#include "Kiv/Ptr.h"
#include "ProfileParser/AntlrParserCtx.h"
#include "ProfileParser/ErrorDetails.h"
#include "ProfileParser/RunObserver.h"
#include "ProfileParser/SharedTexts.h"
#include "ProfileStore/Export.h"
#include "ProfileStore/PassiveAgentProfileDir.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

/// Turns one agent's mount-profile file into that agent's record in the directory of profiles.
///
/// A handler serves one agent file and one `run()`, on one thread; different handlers with different
/// directories may run at the same time. What is wrong in a file is not thrown: the first error is recorded
/// in `errorDesc()` and in the profile, and printed on standard error.
///
/// The operations below `run()` are called by the grammar while a file is parsed, in the order in which a
/// profile is read. A check that fails reports through `constructHdlrException` and returns; it never throws.
class CORVID_API MountProfileHdlr {
  public:
    /// The largest file that is read unless the host says otherwise: 16 MiB.
    static constexpr std::size_t defaultMaxFileSize = std::size_t{ 16 } << 20;
    /// How many include files a run reads unless the host says otherwise.
    static constexpr std::size_t defaultMaxIncludedFiles = 10'000;
    /// The parser library counts a file's bytes in 32 bits.
    static constexpr std::size_t highestMaxFileSize = std::numeric_limits<std::uint32_t>::max();

    /// @param agentFile path of the agent file. Include patterns are taken relative to its directory.
    /// @param root receives the profile. Not null.
    /// @param entityManager may be null: then no mounts of a peer are added.
    /// @param addDefaults whether the profile gets the mounts that every agent needs.
    MountProfileHdlr( const std::string& agentFile, Kiv::Ptr<PassiveAgentProfileDir> root,
                      Kiv::Ptr<const EntityManager> entityManager, bool addDefaults );
    MountProfileHdlr( const MountProfileHdlr& ) = delete;
    MountProfileHdlr& operator=( const MountProfileHdlr& ) = delete;
    ~MountProfileHdlr();

    /// The whole job: parses the agent file and all that it includes, adds the default profiles, and marks
    /// the profile invalid when there was an error. A file without an agent title line leaves `root`
    /// unchanged.
    /// @throws std::runtime_error when a file cannot be opened, when there are too many of them, or see
    /// `missingDatabaseThrowsIs`; the profile then stays as it was at that point.
    void run();

    /// The largest file that is opened, in bytes; `defaultMaxFileSize` unless set. More than
    /// `highestMaxFileSize` counts as that.
    void maxFileSizeIs( std::size_t bytes ) noexcept { maxFileSize_ = std::min( bytes, highestMaxFileSize ); }
    /// In bytes.
    [[nodiscard]] std::size_t maxFileSize() const noexcept { return maxFileSize_; }

    /// How many include files a run may read, each counted as often as it is read; `defaultMaxIncludedFiles`
    /// unless set. One line of a file can ask for many files, and many lines for the same ones.
    void maxIncludedFilesIs( std::size_t files ) noexcept { maxIncludedFiles_ = files; }
    /// That number.
    [[nodiscard]] std::size_t maxIncludedFiles() const noexcept { return maxIncludedFiles_; }
    /// How many were asked for so far; more than `maxIncludedFiles()` when it was given up for that.
    [[nodiscard]] std::size_t includedFiles() const noexcept { return includedFiles_; }

    /// Whether `run()` also prints an error on standard error; it does unless this is set to false.
    void errorPrintedIs( bool printed ) noexcept { errorPrinted_ = printed; }

    /// Has `run()` throw when a file asks for the configured paths of a state database that is not there, or
    /// not complete; unless this is set to true, an assertion stops the process. For hosts that run without
    /// that database.
    void missingDatabaseThrowsIs( bool throws ) noexcept { missingDatabaseThrows_ = throws; }

    /// Has the files read by the generated lexer and the parser library's token stream alone: the same
    /// results, many times slower. For comparisons.
    void plainTokensIs( bool plain ) noexcept { plainTokens_ = plain; }

    /// Who is told what the handler reads and what comes of it; nobody unless set. Not owned: it lives as
    /// long as the handler is used, or until another one, or null, is set.
    void observerIs( RunObserver* observer ) noexcept { observer_ = observer; }

    /// Has this text read in place of what the agent file holds, which need not exist then: as in an editor,
    /// before it is saved. The limit of sizes holds for it, too. Observers are not told that it is read.
    void agentTextIs( std::string text ) { agentText_ = std::move( text ); }

    /// False once an error has been recorded.
    [[nodiscard]] bool validProfileFile() const noexcept { return validProfileFile_; }
    void validProfileFileIs( bool valid );
    /// True when the agent file has no agent title line.
    [[nodiscard]] bool maybeIncludeFile() const noexcept { return maybeIncludeFile_; }
    void maybeIncludeFileIs( bool maybe ) noexcept { maybeIncludeFile_ = maybe; }

    /// The profile being filled; null until the agent title line has been read.
    [[nodiscard]] const Kiv::Ptr<PassiveAgentProfile>& agentProfile() const noexcept { return agentProfile_; }
    /// The error that made the file invalid.
    [[nodiscard]] const RecognitionError& errorDesc() const noexcept { return errorDesc_; }
    /// What is known of it beside.
    [[nodiscard]] const ErrorDetails& errorDetails() const noexcept { return errorDetails_; }
    /// The template keys that can be referred to: those that are always known and those declared so far, in
    /// byte-wise order.
    [[nodiscard]] std::vector<std::string> knownTemplateKeys() const;
    [[nodiscard]] std::vector<std::string> knownMountFilters() const; ///< names, in that order
    /// Sub-agent names in the order given.
    [[nodiscard]] const std::vector<std::string>& subAgents() const noexcept { return subAgents_; }
    /// The path that the handler was made with.
    [[nodiscard]] const std::string& agentFile() const noexcept { return agentFile_; }
    /// Agent name from the title line.
    [[nodiscard]] const std::string& agentName() const noexcept { return agentName_; }
    /// The mount group now open; null before the first.
    [[nodiscard]] const Kiv::Ptr<PassiveMountGroup>& currMg() const noexcept { return currMg_; }
    /// The name of that group.
    [[nodiscard]] const std::string& currMgName() const noexcept { return currMgName_; }

    /// Parses one file. Syntax errors do not throw.
    /// @throws std::runtime_error when the file cannot be opened (it is not a regular file, cannot be read,
    /// is
    ///     larger than `maxFileSize()`, or changes while it is read), or when that happens to a file it
    ///     includes.
    void parseFile( const std::string& fileName, bool isInclude );
    /// Reports a semantic error: the running parser stops as at a syntax error and describes it with this
    /// message.
    void constructHdlrException( const std::string& msg );
    /// @param about the part of the statement, read just before, that the message is about: its range will be
    ///     in `errorDetails`.
    void constructHdlrException( const std::string& msg, std::string_view about );
    /// Prints `errorDesc` as one line on standard error.
    void displayError();

    // The title line.
    /// Makes the profile of that name in the directory, or takes the one that is there.
    void agentProfileIs( const std::string& name );
    /// Numbers the keys in the profile, from 0.
    void addTemplateKeys( const std::vector<std::string>& keys );
    /// From now on, the key may be referred to.
    void registerTemplateKeyDecl( const std::string& key );
    /// Fails for a key that is neither declared nor one of those that every agent has. Keys begin with a "%".
    /// @return whether it passed.
    bool validateTemplateKey( const std::string& key );

    // Agent-level statements.
    void setHybridMount( bool flag );            ///< sets the switch in the profile
    void setLowMountPrio( bool flag );           ///< sets the switch in the profile
    void setNoDefaultMountGroup( bool flag );    ///< sets the switch in the profile
    void addSubAgent( const std::string& name ); ///< names may repeat
    /// @param targets joined by ", ". Of two aliases with one key the later one holds.
    void addAlias( const std::string& key, const std::string& targets );
    /// Adds to the flags that earlier lines gave. Fails as `validateFlags` does.
    void setRootFlags( const std::string& flags );
    /// Fails for a character that is no mount flag. @return whether it passed.
    bool validateFlags( const std::string& flags );

    // Mount filters.
    /// Declares a filter; `addAttrFilter` adds to the one declared last.
    void registerMountFilterDecl( const std::string& name );
    /// @param filterKey may be empty. Of two with one attribute the later one holds.
    void addAttrFilter( const std::string& attrName, const std::string& filterKey );

    // Mount groups and their conditions.
    /// Fails for a name that only the handler gives. @return whether it passed.
    bool validateMountGroupName( const std::string& name );
    void addMountGroup(); ///< the group "all", for mounts outside any named group
    /// Opens a group at the lowest priority, 99.
    void addMountGroup( const std::string& name );
    /// Opens a group; one that is there keeps its priority. Fails for a priority that is not 1 to 99.
    void addMountGroup( const std::string& name, unsigned priority );
    /// Fails when the open group has a condition. @return whether it passed.
    bool validateMgConditionNotSet();
    /// Whether the agent is held up until the open group's condition holds.
    void setBlockingConditional( bool flag );
    /// Adds a comparison, in its normal form, to those of the open group.
    void addCondition( const std::string& text );
    /// The same for a comparison with a template key.
    void addTemplateCondition( const std::string& text );
    /// Fails for a function that conditions do not have. @return whether it passed.
    bool validateCondPathFunc( const std::string& name );
    /// Sets the open group's whole condition: its comparisons, joined.
    void setEntireCondition( const std::string& text );

    // Mounts.
    /// Adds a mount to the group now open. One leading and one trailing "/" of the path are dropped. A path
    /// that the group already holds with the same type gets the flags of both; the filter is the one of this
    /// line.
    /// @param mountFilter name of a declared filter, or empty.
    void addMount( const std::string& path, const std::string& type, const std::string& flags,
                   const std::string& mountFilter );
    /// Parses every file that matches a pattern, as an include file.
    void parseIncludes( const std::string& pattern );

    // Default profiles.
    /// Adds the mounts that every agent needs, for this agent and its sub-agents.
    void addDefaultProfiles();
    /// Mounts the status of an agent's peer in the other cell, if there is one. @param waitForReady whether
    /// the agent is to wait until that one is ready.
    void addPeerReady( const std::string& agent, bool peerRedundancy, bool waitForReady );
    /// Mounts every configured path of the state database into the group now open.
    void addConfigMountProfile();

  private:
    friend class ErrorDescription; // describes errors out of and into the members below

    /// Makes sure that all lexer errors of the file being parsed are known: they come before those of parser
    /// and handler.
    void finishLexing();
    void invalidateAgentProfile();
    void printError();

    // For the observer: where the statement that is being read begins, and where its last token stands.
    [[nodiscard]] Origin statementOrigin() const;
    [[nodiscard]] Origin tokenOrigin() const;

    Kiv::Ptr<PassiveAgentProfileDir> root_;
    Kiv::Ptr<const EntityManager> entityManager_;
    Kiv::Ptr<PassiveAgentProfile> agentProfile_;
    Kiv::Ptr<PassiveMountGroup> currMg_;
    std::string currMountFilterName_;
    std::string agentFile_;
    std::string agentName_;
    std::string currMgName_;
    AntlrParserCtx parserCtx_;
    RecognitionError errorDesc_;
    ErrorDetails errorDetails_;
    std::vector<std::string> subAgents_;
    // Ordered, because whoever writes a file chooses the names, and could choose some that collide in a hash
    // table.
    std::set<std::string> templateKeyDecls_;
    std::map<std::string, MountFilter> mountFilterMap_;
    bool addDefaults_;
    bool validProfileFile_ = true;
    bool maybeIncludeFile_ = false;
    std::size_t maxFileSize_ = defaultMaxFileSize;
    std::size_t maxIncludedFiles_ = defaultMaxIncludedFiles;
    std::size_t includedFiles_ = 0;
    bool plainTokens_ = false;
    bool missingDatabaseThrows_ = false;
    bool errorPrinted_ = true;
    RunObserver* observer_ = nullptr;
    std::optional<std::string> agentText_;
    bool mountingConfiguredPaths_ = false;
    SharedTexts sharedTexts_;
};

/// The id of the active cell: the environment variable ACTIVE_CELLID as a decimal number (0 for text that is
/// none), else the other cell of the pair.
[[nodiscard]] CORVID_API std::uint32_t activeCellId();

} // namespace Corvid
