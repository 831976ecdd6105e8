#include "EmbeddedPlatform.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace Kiv {

namespace {

/// What all facilities share: which are there, what is switched on, where the lines go.
struct TraceRegistry {
    std::mutex mutex;
    std::set<TraceHandle*> handles;
    std::string switches;
    Embedded::TraceSink sink;
};

/// Outlives every facility of static storage duration.
TraceRegistry* newRegistry() {
    auto* made = new TraceRegistry;
    if ( const char* environment = std::getenv( "KIV_TRACE" ) )
        made->switches = environment;
    return made;
}

TraceRegistry& registry() {
    static TraceRegistry* const instance = newRegistry();
    return *instance;
}

/// The bits of "3" or "0-8"; none for anything else.
std::uint32_t levelBits( std::string_view range ) {
    unsigned first = 0;
    const char* end = range.data() + range.size();
    auto [at, error] = std::from_chars( range.data(), end, first );
    if ( error != std::errc() )
        return 0;
    unsigned last = first;
    if ( at != end && *at == '-' ) {
        const auto second = std::from_chars( at + 1, end, last );
        error = second.ec;
        at = second.ptr;
    }
    if ( error != std::errc() || at != end || first > last || last > TraceHandle::maxLevel )
        return 0;
    std::uint32_t bits = 0;
    for ( unsigned level = first; level <= last; ++level )
        bits |= 1U << level;
    return bits;
}

std::uint32_t levelsFor( std::string_view name, std::string_view switches ) {
    std::uint32_t levels = 0;
    while ( !switches.empty() ) {
        const auto comma = std::min( switches.find( ',' ), switches.size() );
        const auto item = switches.substr( 0, comma );
        switches.remove_prefix( std::min( comma + 1, switches.size() ) );
        const auto slash = item.find( '/' );
        if ( item.substr( 0, slash ) == name )
            levels |= slash == std::string_view::npos ? ~0U : levelBits( item.substr( slash + 1 ) );
    }
    return levels;
}

} // namespace

TraceHandle::TraceHandle( const char* name ) : name_( name ) {
    auto& shared = registry();
    const std::lock_guard lock( shared.mutex );
    shared.handles.insert( this );
    levelsAre( levelsFor( name, shared.switches ) );
}

TraceHandle::~TraceHandle() {
    auto& shared = registry();
    const std::lock_guard lock( shared.mutex );
    shared.handles.erase( this );
}

void TraceHandle::trace( unsigned level, const char* function, unsigned line, std::string_view text ) const {
    auto& shared = registry();
    const std::lock_guard lock( shared.mutex );
    if ( shared.sink ) {
        shared.sink( *this, level, function, line, text );
        return;
    }
    std::ostringstream out;
    out << name_ << '/' << level << ' ' << function << ':' << line << ' ' << text << '\n';
    const std::string whole = out.str();
    std::fwrite( whole.data(), 1, whole.size(), stderr );
}

void Embedded::traceSinkIs( TraceSink sink ) {
    auto& shared = registry();
    const std::lock_guard lock( shared.mutex );
    shared.sink = std::move( sink );
}

void Embedded::traceLevelsAre( const std::string& switches ) {
    auto& shared = registry();
    const std::lock_guard lock( shared.mutex );
    shared.switches = switches;
    for ( TraceHandle* handle : shared.handles )
        handle->levelsAre( levelsFor( handle->name(), switches ) );
}

} // namespace Kiv
