#pragma once

#include "model/Case.h"
#include "model/ModelParser.h"
#include "model/Outcome.h"

#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace Model {

/// Runs a whole case without touching a file: reads the agent file and what it includes, and builds the
/// records.
class Builder {
  public:
    /// @param directory where the files of the case are, with a slash at its end; empty for bare names.
    Builder( const Case& input, std::string directory );

    [[nodiscard]] Outcome run();

    // What the parser calls, in the order in which a profile is read.
    void maybeIncludeFileIs( bool maybe ) { maybeIncludeFile_ = maybe; }
    void agentProfileIs( const std::string& name );
    void addTemplateKeys( const std::vector<std::string>& keys );
    void registerTemplateKey( const std::string& key ) { templateKeys_.insert( key ); }
    void validateTemplateKey( const std::string& key );
    void setProperty( Type type );
    void addSubAgent( const std::string& name ) { out_.subAgents.push_back( name ); }
    void addAlias( const std::string& key, const std::string& targets );
    void setRootFlags( const std::string& flags );
    void registerMountFilter( const std::string& name );
    void addAttrFilter( const std::string& attribute, const std::string& key );
    void validateMountGroupName( const std::string& name );
    void addMountGroup( const std::string& name, std::uint32_t priority );
    void setBlocking() { group_->blocking = true; }
    void validateConditionNotSet();
    void addCondition( const std::string& text ) { group_->conditions.push_back( text ); }
    void addTemplateCondition( const std::string& text ) { group_->templateConditions[text] = true; }
    void validateFunction( const std::string& name );
    void setEntireCondition( const std::string& text ) { group_->entireCondition = text; }
    void addMount( const std::string& path, const std::string& type, const std::string& flags,
                   const std::string& filter );
    void parseIncludes( const std::string& pattern );
    void parserFailed( const Failure& failure, Rule rule, Section section );

    /// The number that an INT token stands for.
    [[nodiscard]] static std::uint32_t priority( const std::string& digits );

  private:
    struct Unreadable : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    // Files.
    void parseFile( const std::string& path, const std::string& text, bool isInclude );
    void parseIncludeFile( const std::string& name );
    [[nodiscard]] std::vector<std::string> matchingNames( const std::string& pattern ) const;
    void finish();
    void invalidate( const std::string& trace );
    ErrorRecord& firstError( std::uint32_t kind, std::uint32_t line, std::int32_t position );
    void trace( const std::string& levelAndText ) { out_.traces.push_back( levelAndText ); }

    void check( bool holds, const std::string& message );
    [[nodiscard]] bool validateFlags( const std::string& flags );

    // Default mounts.
    void addDefaults();
    void addDefaultMount( const std::string& path, const std::string& type, const std::string& flags );
    void addPeer( const std::string& agent, bool waits );
    void addPeerReadyGroup( const std::string& agent, std::uint32_t cell );
    void addConfiguredMounts();
    [[nodiscard]] bool hasPeer() const;
    [[nodiscard]] std::string cellPath( const std::string& relative, std::uint32_t cell ) const;
    [[nodiscard]] std::uint32_t activeCell() const;

    const Case& input_;
    std::string directory_;
    std::string agentFile_;
    Outcome out_;
    ProfileRecord* profile_ = nullptr;
    std::string profileName_;
    GroupRecord* group_ = nullptr;
    std::string groupName_;
    std::set<std::string> templateKeys_;
    std::map<std::string, FilterRecord> filters_;
    std::string lastFilter_;
    bool valid_ = true;
    bool maybeIncludeFile_ = false;
    Parser* parser_ = nullptr;               ///< of the file that is being read
    std::string includeFile_;                ///< its path, when that is an include file
    std::optional<std::string> failedCheck_; ///< message of the last one that has not been described yet
};

} // namespace Model
