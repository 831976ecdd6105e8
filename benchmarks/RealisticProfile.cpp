#include "ProfileGenerator.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Bench {

namespace {

constexpr std::array<std::string_view, 12> pathWords{ "agent",   "status", "config", "power",
                                                      "fan",     "tray",   "port",   "sensor",
                                                      "chassis", "link",   "slot",   "temperature" };
constexpr std::array<std::string_view, 8> typeNames{
    "Kiv::Entity", "Agent::Status",     "Agent::Config", "Power::SupplyStatus",
    "Fan::Tray",   "Sensor::Threshold", "Link::PortDir", "Chassis::Inventory::Card" };
constexpr std::array<std::string_view, 6> flagTexts{ "r", "rw", "w", "wfc", "ri", "rD" };
constexpr std::array<std::string_view, 6> comments{ "# read by the fan controller",
                                                    "# written once at start",
                                                    "# the same for every card of the chassis",
                                                    "# needs the power supply's status",
                                                    "#",
                                                    "# thresholds, one entry a sensor" };
constexpr std::array<std::string_view, 3> templateKeys{ "%slot", "%card", "%unit" };
constexpr std::size_t mountsPerGroup = 25;
constexpr std::size_t filterCount = 5;

/// Writes one profile, statement by statement.
class Writer {
  public:
    explicit Writer( std::uint64_t seed ) : random_( seed ) {}

    void title( const std::string& name ) {
        text_ += "# Mount profile of " + name + "\n\nagentName: " + name;
        for ( const std::string_view key : templateKeys )
            text_.append( "-" ).append( key );
        text_ += "\n\nalias: %peer = %slot, %card\nrootFlags: r\nlowMountPrio\n";
    }

    void filter( std::size_t number ) {
        text_ += "\nmountFilter: filter" + std::to_string( number ) + "\n";
        for ( std::size_t attribute = 0; attribute < 1 + number % 3; ++attribute ) {
            text_ += "    attribute" + std::to_string( attribute );
            text_ += random_.oneIn( 2 ) ? ", \"up or down\"\n" : ", key-1\n";
        }
    }

    void groupHeader( std::size_t number ) {
        text_ += "\nmountGroup: group" + std::to_string( number );
        if ( random_.oneIn( 2 ) )
            text_ += ", " + std::to_string( 1 + random_.below( 99 ) );
        text_ += '\n';
        if ( random_.oneIn( 3 ) )
            text_ += random_.oneIn( 2 )
                         ? "condition: 3 <= len( /cell/status.entries ) and true == /power.ready\n"
                         : "conditionBlocker: %slot in /chassis/config.slots and 0x1F == %card\n";
    }

    /// @param number makes the path a new one.
    void mount( std::size_t number, bool filters ) {
        if ( random_.oneIn( 8 ) )
            text_.append( random_.of( comments ) ) += '\n';
        if ( random_.oneIn( 20 ) )
            text_ += '\n';
        path( number );
        text_.append( ", " )
            .append( random_.of( typeNames ) )
            .append( ", " )
            .append( random_.of( flagTexts ) );
        if ( filters && random_.oneIn( 10 ) )
            text_ += ", filter" + std::to_string( random_.below( filterCount ) );
        text_ += '\n';
    }

    void include( const std::string& file ) { text_ += "include: " + file + "\n"; }
    std::string take() { return std::move( text_ ); }

  private:
    void path( std::size_t number ) {
        const bool quoted = random_.oneIn( 15 );
        text_.append( quoted ? "\"" : "" ).append( random_.oneIn( 4 ) ? "/" : "" );
        for ( std::size_t depth = 1 + random_.below( 4 ); depth > 0; --depth )
            text_.append( random_.of( pathWords ) ) += '/';
        if ( random_.oneIn( 3 ) )
            text_.append( random_.of( templateKeys ) ) += '/';
        text_.append( random_.of( pathWords ) ) += '-';
        text_.append( std::to_string( number ) ).append( quoted ? "\"" : "" );
    }

    Random random_;
    std::string text_;
};

} // namespace

std::vector<GeneratedFile> realisticProfile( const std::string& name, std::size_t mounts,
                                             std::uint64_t seed ) {
    const std::size_t included = mounts / 10;
    const std::size_t ungrouped = std::min( mounts - included, mountsPerGroup );
    const std::string includeName = name + "-common";

    Writer agent( seed );
    agent.title( name );
    for ( std::size_t filter = 0; filter < filterCount; ++filter )
        agent.filter( filter );
    agent.include( includeName );
    for ( std::size_t number = 0; number < ungrouped; ++number )
        agent.mount( number, true );
    for ( std::size_t number = ungrouped; number < mounts - included; ++number ) {
        if ( ( number - ungrouped ) % mountsPerGroup == 0 )
            agent.groupHeader( ( number - ungrouped ) / mountsPerGroup );
        agent.mount( number, true );
    }

    Writer common( seed + 1 );
    for ( std::size_t number = 0; number < std::max<std::size_t>( included, 1 ); ++number )
        common.mount( mounts + number, false );
    return { { name, agent.take() }, { includeName, common.take() } };
}

} // namespace Bench
