#include "EmbeddedPlatform.h"

#include <map>
#include <string_view>
#include <utility>

namespace Brae {
PathTrie::~PathTrie() = default;
} // namespace Brae
namespace Redundancy {
RedundancyStatus::~RedundancyStatus() = default;
} // namespace Redundancy
namespace Corvid {
EntityManager::~EntityManager() = default;
ConfigRoot::~ConfigRoot() = default;
} // namespace Corvid

namespace Kiv::Embedded {

namespace {

class EmbeddedEntityManager final : public Corvid::EntityManager {
  public:
    EmbeddedEntityManager( String8 systemName, bool standalone )
        : systemName_( std::move( systemName ) ), standalone_( standalone ) {}
    [[nodiscard]] Name name() const override { return Name( systemName_ ); }
    [[nodiscard]] String8 systemName() const override { return systemName_; }
    [[nodiscard]] bool standalone() const override { return standalone_; }

  private:
    String8 systemName_;
    bool standalone_;
};

class EmbeddedRedundancyStatus final : public Redundancy::RedundancyStatus {
  public:
    EmbeddedRedundancyStatus( Redundancy::Mode configured, Redundancy::Mode operational )
        : configured_( configured ), operational_( operational ) {}
    [[nodiscard]] Name name() const override { return Name( "status" ); }
    [[nodiscard]] Redundancy::Mode configuredMode() const override { return configured_; }
    [[nodiscard]] Redundancy::Mode operationalMode() const override { return operational_; }

  private:
    Redundancy::Mode configured_;
    Redundancy::Mode operational_;
};

/// Longest recorded ancestor by whole path components.
class EmbeddedPathTrie final : public Brae::PathTrie {
  public:
    explicit EmbeddedPathTrie( const std::vector<ConfiguredPath>& paths ) {
        for ( const auto& configured : paths )
            records_.insert_or_assign( configured.path, configured );
    }
    [[nodiscard]] String8 prefixTypename( const String8& path ) const override {
        const ConfiguredPath* record = longestPrefix( path );
        return record ? record->type : String8();
    }
    [[nodiscard]] String8 prefixFlags( const String8& path ) const override {
        const ConfiguredPath* record = longestPrefix( path );
        return record ? record->flags : String8();
    }

  private:
    [[nodiscard]] const ConfiguredPath* longestPrefix( std::string_view path ) const {
        for ( ;; ) {
            if ( const auto found = records_.find( path ); found != records_.end() )
                return &found->second;
            if ( path.empty() )
                return nullptr;
            const auto slash = path.rfind( '/' );
            path = path.substr( 0, slash == std::string_view::npos ? 0 : slash );
        }
    }

    std::map<String8, ConfiguredPath, std::less<>> records_;
};

class EmbeddedConfigRoot final : public Corvid::ConfigRoot {
  public:
    EmbeddedConfigRoot( const std::vector<ConfiguredPath>& paths, bool complete )
        : trie_( paths ), complete_( complete ) {
        paths_.reserve( paths.size() );
        for ( const auto& configured : paths )
            paths_.push_back( configured.path );
    }
    [[nodiscard]] Name name() const override { return Name( "configRoot" ); }
    [[nodiscard]] bool rootsComplete() const override { return complete_; }
    [[nodiscard]] const std::vector<String8>& configuredPaths() const override { return paths_; }
    [[nodiscard]] const Brae::PathTrie& pathTrie() const override { return trie_; }

  private:
    std::vector<String8> paths_;
    EmbeddedPathTrie trie_;
    bool complete_;
};

} // namespace

Ptr<const Corvid::EntityManager> newEntityManager( const String8& systemName, bool standalone ) {
    return new EmbeddedEntityManager( systemName, standalone );
}

Ptr<Redundancy::RedundancyStatus> newRedundancyStatus( Redundancy::Mode configured,
                                                       Redundancy::Mode operational ) {
    return new EmbeddedRedundancyStatus( configured, operational );
}

Ptr<Corvid::ConfigRoot> newConfigRoot( const std::vector<ConfiguredPath>& paths, bool complete ) {
    return new EmbeddedConfigRoot( paths, complete );
}

} // namespace Kiv::Embedded
