#pragma once

#include "Kiv/Export.h"

#include <atomic>
#include <cstdint>
#include <string_view>

namespace Kiv {

/// A named trace facility with levels 0 (most important) to 31. Which levels are on is the platform's
/// business; the embedded platform reads the environment variable KIV_TRACE ("MountProfileHdlr/0-8,Other/1").
/// May be used by several threads at once.
class KIV_API TraceHandle {
  public:
    /// The least important level.
    static constexpr unsigned maxLevel = 31;

    /// @param name lives as long as the handle (a literal).
    explicit TraceHandle( const char* name );
    TraceHandle( const TraceHandle& ) = delete;
    TraceHandle& operator=( const TraceHandle& ) = delete;
    ~TraceHandle();

    /// As it was made with.
    [[nodiscard]] const char* name() const noexcept { return name_; }
    /// Whether a line at this level, 0 to `maxLevel`, goes anywhere: test it before composing the text.
    [[nodiscard]] bool enabled( unsigned level ) const noexcept {
        return ( levels_.load( std::memory_order_relaxed ) >> level & 1U ) != 0;
    }
    /// Hands on one line of trace. @param function short name of the tracing function. @param line source
    /// line.
    void trace( unsigned level, const char* function, unsigned line, std::string_view text ) const;

    /// For the platform: switches the levels, bit n for level n.
    void levelsAre( std::uint32_t levels ) noexcept { levels_.store( levels, std::memory_order_relaxed ); }

  private:
    const char* name_;
    std::atomic<std::uint32_t> levels_{ 0 };
};

} // namespace Kiv

/// Traces when the level is on; the text is an expression that is evaluated only then.
#define KIV_TRACE( handle, level, text )                                                                     \
    do {                                                                                                     \
        if ( ( handle ).enabled( level ) ) [[unlikely]]                                                      \
            ( handle ).trace( level, __func__, __LINE__, text );                                             \
    } while ( false )
