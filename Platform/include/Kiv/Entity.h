#pragma once

#include "Kiv/Export.h"
#include "Kiv/Name.h"
#include "Kiv/Ptr.h"
#include "Kiv/RefCount.h"

namespace Kiv {

/// A named object of the state database. Held through Kiv::Ptr; made with `new`, never on the stack.
class KIV_API Entity {
  public:
    Entity( const Entity& ) = delete;
    Entity& operator=( const Entity& ) = delete;

    /// The entity's key within its parent; empty for an entity without one.
    [[nodiscard]] virtual Name name() const;
    /// The entity that holds this one, or null: for the root, and for a member removed from its collection.
    /// Not owned; valid as long as this entity stays a member.
    [[nodiscard]] virtual Entity* parent() const;
    /// Looks up the entity at an absolute path ("/system/Corvid/…") in the tree that this entity is the root
    /// of. Null when there is none. Only the global directory is such a root; other entities answer null.
    [[nodiscard]] virtual Ptr<Entity> entity( const String8& path ) const;

    /// For Kiv::Ptr: one more holds the entity.
    void addRef() const noexcept { count_.increment(); }
    /// For Kiv::Ptr: one less; the last one deletes it.
    void release() const noexcept {
        if ( count_.decrement() )
            delete this; // GCOVR_EXCL_BR_LINE: the compiler asks whether it is null
    }

  protected:
    Entity() noexcept;
    virtual ~Entity();

  private:
    RefCount count_{ 0 };
};

/// The root of the global entity tree; never null, the same one at every call.
[[nodiscard]] KIV_API Ptr<Entity> globalDir();

} // namespace Kiv
