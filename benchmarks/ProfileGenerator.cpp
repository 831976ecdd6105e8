#include "ProfileGenerator.h"

#include <array>
#include <string_view>
#include <utility>

namespace Bench {

namespace {

// All of one length, so that every line has 56 bytes.
constexpr std::array<std::string_view, 4> plainTypes{ "Agent::StatusRecord", "Agent::ConfigRecord",
                                                      "Kiv::PortController", "Fan::TrayController" };
constexpr std::array<std::string_view, 4> plainFlags{ "rw", "ri", "wc", "wf" };
constexpr int plainDigits = 7;

std::string padded( std::size_t number, std::size_t digits ) {
    const std::string text = std::to_string( number );
    return text.size() < digits ? std::string( digits - text.size(), '0' ) + text : text;
}

template <class Element>
void shuffle( std::vector<Element>& elements, Random& random ) {
    for ( std::size_t left = elements.size(); left > 1; --left )
        std::swap( elements[left - 1], elements[random.below( left )] );
}

std::string numbered( std::string_view text, std::size_t number ) {
    return std::string( text ) + std::to_string( number );
}

} // namespace

std::uint64_t Random::next() noexcept { // splitmix64
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15U;
    z = ( z ^ ( z >> 30 ) ) * 0xbf58476d1ce4e5b9U;
    z = ( z ^ ( z >> 27 ) ) * 0x94d049bb133111ebU;
    return z ^ ( z >> 31 );
}

std::vector<MountLine> plainMounts( std::size_t count, Order order, std::uint64_t seed ) {
    Random random( seed );
    std::vector<MountLine> mounts;
    mounts.reserve( count );
    for ( std::size_t i = 0; i < count; ++i )
        mounts.push_back( { "agent/status/slot" + padded( i, plainDigits ) + "/state",
                            std::string( random.of( plainTypes ) ),
                            std::string( random.of( plainFlags ) ) } );
    if ( order == Order::shuffled )
        shuffle( mounts, random );
    return mounts;
}

std::string mountLines( const std::vector<MountLine>& mounts ) {
    std::string text;
    text.reserve( mounts.size() * 56 );
    for ( const MountLine& mount : mounts )
        text.append( mount.path ).append( ", " ).append( mount.type ).append( ", " ).append( mount.flags ) +=
            '\n';
    return text;
}

std::string plainProfile( const std::vector<MountLine>& mounts ) {
    return "agentName: Bench\n" + mountLines( mounts );
}

std::string manyGroups( std::size_t count ) {
    std::string text = "agentName: Bench\n";
    for ( std::size_t i = 0; i < count; ++i ) {
        text.append( numbered( "mountGroup: group", i ) ).append( numbered( ", ", i % 99 + 1 ) );
        text.append( numbered( "\ncondition: on == /power/unit", i ) ).append( ".state\n" );
        text.append( numbered( "agent/status/", i ) ).append( ", Kiv::Entity, rw\n" );
    }
    return text;
}

std::string manyFilters( std::size_t count ) {
    std::string text = "agentName: Bench\n";
    for ( std::size_t i = 0; i < count; ++i )
        text.append( numbered( "mountFilter: filter", i ) ).append( "\nname\nstate, \"up\"\n" );
    for ( std::size_t i = 0; i < count; ++i )
        text.append( numbered( "agent/status/", i ) ).append( numbered( ", Kiv::Entity, rw, filter", i ) ) +=
            '\n';
    return text;
}

std::string manyAliases( std::size_t count ) {
    std::string text = "agentName: Bench-%slot\n";
    for ( std::size_t i = 0; i < count; ++i )
        text.append( numbered( "alias: %key", i ) )
            .append( i == 0 ? " = %slot" : numbered( " = %key", i - 1 ) ) += '\n';
    return text;
}

std::string manySubAgents( std::size_t count ) {
    std::string text = "agentName: Bench\n";
    for ( std::size_t i = 0; i < count; ++i )
        text += numbered( "subAgent: Worker", i ) + "\n";
    return text;
}

std::string manyMergedFlags( std::size_t count ) {
    constexpr std::array<std::string_view, 4> flags{ "rwicfCDSBNO", "ONBSDCfciwr", "r", "wicf" };
    std::string text = "agentName: Bench\n";
    for ( std::size_t i = 0; i < count; ++i )
        text.append( "agent/status, Kiv::Entity, " ).append( flags[i % flags.size()] ) += '\n';
    return text;
}

} // namespace Bench
