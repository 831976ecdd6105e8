#pragma once

#include "Kiv/Export.h"
#include "Kiv/RefCount.h"

#include <compare>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace Kiv {

/// This platform's text: a counted `std::string`, and nothing at all for an empty one.
class KIV_API String8 {
  public:
    static constexpr std::size_t maxSize = 0xFFFFFFEF;

    String8() noexcept = default;
    explicit String8( std::string_view text ) : text_( text.empty() ? nullptr : counted( text ) ) {}
    String8( const std::string& text ) : String8( std::string_view( text ) ) {}
    String8( const char* text ) : String8( std::string_view( text ) ) {}
    String8( const String8& other ) noexcept : text_( other.text_ ) {
        if ( text_ )
            text_->count.increment();
    }
    String8( String8&& other ) noexcept : text_( std::exchange( other.text_, nullptr ) ) {}
    String8& operator=( String8 other ) noexcept {
        swap( other );
        return *this;
    }
    ~String8() {
        if ( text_ && text_->count.decrement() )
            delete text_;
    }
    void swap( String8& other ) noexcept { std::swap( text_, other.text_ ); }

    [[nodiscard]] const char* data() const noexcept { return text_ ? text_->bytes.c_str() : ""; }
    [[nodiscard]] std::size_t size() const noexcept { return view().size(); }
    [[nodiscard]] bool empty() const noexcept { return !text_; }
    [[nodiscard]] std::string_view view() const noexcept {
        return text_ ? std::string_view( text_->bytes ) : std::string_view();
    }
    [[nodiscard]] std::string str() const { return std::string( view() ); }
    operator std::string_view() const noexcept { return view(); }
    [[nodiscard]] bool sharesDatumWith( const String8& other ) const noexcept { return text_ == other.text_; }

    friend bool operator==( const String8& a, const String8& b ) noexcept { return a.view() == b.view(); }
    friend bool operator==( const String8& a, std::string_view b ) noexcept { return a.view() == b; }
    friend bool operator==( const String8& a, const std::string& b ) noexcept { return a.view() == b; }
    friend bool operator==( const String8& a, const char* b ) noexcept { return a.view() == b; }
    friend std::strong_ordering operator<=>( const String8& a, const String8& b ) noexcept {
        return a.view() <=> b.view();
    }
    friend std::strong_ordering operator<=>( const String8& a, std::string_view b ) noexcept {
        return a.view() <=> b;
    }

  private:
    struct Counted {
        RefCount count;
        std::string bytes;
    };
    static Counted* counted( std::string_view text );

    Counted* text_ = nullptr;
};

KIV_API std::ostream& operator<<( std::ostream& out, const String8& text );

} // namespace Kiv

template <>
struct std::hash<Kiv::String8> {
    std::size_t operator()( const Kiv::String8& text ) const noexcept {
        return std::hash<std::string_view>()( text.view() );
    }
};
