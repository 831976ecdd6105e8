#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace Model {

/// The same numbers from the same seed, on every machine.
class Random {
  public:
    explicit Random( std::uint64_t seed ) : state_( seed ) {}

    /// A number from 0 to count - 1.
    std::size_t below( std::size_t count ) { return static_cast<std::size_t>( next() % count ); }
    bool chance( unsigned percent ) { return below( 100 ) < percent; }
    template <std::size_t count>
    std::string pick( const char* const ( &texts )[count] ) {
        return texts[below( count )];
    }

  private:
    std::uint64_t next() { // splitmix64
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = state_;
        mixed = ( mixed ^ ( mixed >> 30 ) ) * 0xBF58476D1CE4E5B9;
        mixed = ( mixed ^ ( mixed >> 27 ) ) * 0x94D049BB133111EB;
        return mixed ^ ( mixed >> 31 );
    }

    std::uint64_t state_;
};

} // namespace Model
