#pragma once

#include "Kiv/Export.h"
#include "Kiv/RefCount.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace Kiv {

/// An immutable text of 8-bit characters, of any byte values, NUL included. Copies share one counted datum;
/// all empty texts share one and the same. Compared byte-wise (unsigned).
class KIV_API String8 {
  public:
    /// The longest text, in bytes.
    static constexpr std::size_t maxSize = 0xFFFFFFEF;

    String8() noexcept : datum_( &emptyDatum ) {}
    /// Copies the bytes of text, all of them.
    /// @throws std::length_error above `maxSize` bytes, std::bad_alloc when memory runs out.
    explicit String8( std::string_view text ) : datum_( newDatum( text ) ) {}
    /// All bytes of the text.
    String8( const std::string& text ) : String8( std::string_view( text ) ) {}
    /// Copies the bytes before the first NUL. @param text not null.
    String8( const char* text ) : String8( std::string_view( text ) ) {}

    String8( const String8& other ) noexcept : datum_( other.datum_ ) { share(); }
    String8( String8&& other ) noexcept : datum_( std::exchange( other.datum_, &emptyDatum ) ) {}
    String8& operator=( const String8& other ) noexcept {
        String8( other ).swap( *this );
        return *this;
    }
    String8& operator=( String8&& other ) noexcept {
        String8( std::move( other ) ).swap( *this );
        return *this;
    }
    ~String8() { drop(); }

    void swap( String8& other ) noexcept { std::swap( datum_, other.datum_ ); }

    /// The bytes, followed by a NUL that is not part of the text; valid as long as any copy of this text
    /// lives.
    [[nodiscard]] const char* data() const noexcept { return datum_->text; }
    /// In bytes.
    [[nodiscard]] std::size_t size() const noexcept { return datum_->size; }
    /// Whether there are no bytes.
    [[nodiscard]] bool empty() const noexcept { return datum_->size == 0; }
    /// Valid as `data()` is.
    [[nodiscard]] std::string_view view() const noexcept { return { datum_->text, datum_->size }; }
    /// A copy of all bytes.
    [[nodiscard]] std::string str() const { return std::string( view() ); }
    /// As `view()`.
    operator std::string_view() const noexcept { return view(); }

    /// Whether both are copies of one datum, which makes them equal; equal texts need not share.
    [[nodiscard]] bool sharesDatumWith( const String8& other ) const noexcept {
        return datum_ == other.datum_;
    }

    friend bool operator==( const String8& a, const String8& b ) noexcept {
        return a.datum_ == b.datum_ || a.view() == b.view();
    }
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
    struct Datum {
        RefCount count;
        std::uint32_t size;
        char text[1]; // size bytes and a NUL; the first lies in the padding-free tail of the header
    };

    static Datum* newDatum( std::string_view text );
    static void freeDatum( Datum* datum ) noexcept;
    void share() const noexcept {
        if ( datum_ != &emptyDatum ) // never counted: all threads would fight for its cache line
            datum_->count.increment();
    }
    void drop() const noexcept {
        if ( datum_ != &emptyDatum && datum_->count.decrement() )
            freeDatum( datum_ );
    }

    static Datum emptyDatum;
    Datum* datum_;
};

KIV_API std::ostream& operator<<( std::ostream& out, const String8& text );

} // namespace Kiv

/// Depends on the bytes only.
template <>
struct std::hash<Kiv::String8> {
    /// As that of the same bytes in a `std::string_view`.
    std::size_t operator()( const Kiv::String8& text ) const noexcept {
        return std::hash<std::string_view>()( text.view() );
    }
};
