#include "Kiv/Entity.h"
#include "EmbeddedPlatform.h"

#include <map>
#include <utility>

namespace Kiv {

Entity::Entity() noexcept = default;
Entity::~Entity() = default;

Name Entity::name() const {
    return {};
}

Entity* Entity::parent() const {
    return nullptr;
}

Ptr<Entity> Entity::entity( const String8& ) const {
    return nullptr;
}

namespace {

/// The global tree, kept flat: lookups are by absolute path only.
class GlobalDirectory final : public Entity {
  public:
    [[nodiscard]] Ptr<Entity> entity( const String8& path ) const override {
        const auto found = entities_.find( path );
        return found == entities_.end() ? nullptr : found->second;
    }
    void entityIs( const String8& path, Ptr<Entity> entity ) {
        if ( entity )
            entities_.insert_or_assign( path, std::move( entity ) );
        else
            entities_.erase( path );
    }
    void entitiesDel() { entities_.clear(); }

  private:
    std::map<String8, Ptr<Entity>> entities_;
};

const Ptr<GlobalDirectory>& theGlobalDirectory() {
    static const Ptr<GlobalDirectory> directory( new GlobalDirectory );
    return directory;
}

} // namespace

Ptr<Entity> globalDir() {
    return theGlobalDirectory();
}

void Embedded::entityIs( const String8& path, Ptr<Entity> entity ) {
    theGlobalDirectory()->entityIs( path, std::move( entity ) );
}

void Embedded::entitiesDel() {
    theGlobalDirectory()->entitiesDel();
}

} // namespace Kiv
