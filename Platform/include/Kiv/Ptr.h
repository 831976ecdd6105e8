#pragma once

#include <compare>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace Kiv {

/// Intrusive reference-counted pointer: the object is deleted when its last Ptr goes. T offers `addRef()` and
/// `release()`, as every Kiv::Entity does.
template <class T>
class Ptr {
  public:
    Ptr() noexcept = default;
    /// Holds nothing.
    Ptr( std::nullptr_t ) noexcept {}
    /// Shares an object; one just made with `new` is owned from here on.
    Ptr( T* object ) noexcept : object_( object ) { addRef(); }
    Ptr( const Ptr& other ) noexcept : Ptr( other.object_ ) {}
    Ptr( Ptr&& other ) noexcept : object_( std::exchange( other.object_, nullptr ) ) {}
    /// From a pointer to a derived object, or to one that is not const.
    template <class U>
    requires std::is_convertible_v<U*, T*> Ptr( const Ptr<U>& other )
    noexcept : Ptr( other.get() ) {}
    /// The same; the other one then holds nothing.
    template <class U>
    requires std::is_convertible_v<U*, T*> Ptr( Ptr<U>&& other )
    noexcept : object_( std::exchange( other.object_, nullptr ) ) {}
    Ptr& operator=( Ptr other ) noexcept {
        std::swap( object_, other.object_ );
        return *this;
    }
    ~Ptr() {
        if ( object_ )
            object_->release();
    }

    /// The object, or null. Not owned.
    [[nodiscard]] T* get() const noexcept { return object_; }
    /// Not for null.
    T* operator->() const noexcept { return object_; }
    /// Not for null.
    T& operator*() const noexcept { return *object_; }
    /// Whether there is an object.
    explicit operator bool() const noexcept { return object_ != nullptr; }

    friend bool operator==( const Ptr& a, const Ptr& b ) noexcept { return a.object_ == b.object_; }
    friend bool operator==( const Ptr& a, std::nullptr_t ) noexcept { return a.object_ == nullptr; }

  private:
    template <class U>
    friend class Ptr;

    void addRef() const noexcept {
        if ( object_ )
            object_->addRef();
    }

    T* object_ = nullptr;
};

/// The object as a T when it is one (run-time type test), else null.
template <class T, class U>
[[nodiscard]] Ptr<T> dynamicCast( const Ptr<U>& object ) noexcept {
    return Ptr<T>( dynamic_cast<T*>( object.get() ) );
}

} // namespace Kiv
