#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Profiles for measurements: made from a seed, the same ones on every machine.
namespace Bench {

/// One mount line's content.
struct MountLine {
    std::string path; ///< without a leading "/", as it is stored
    std::string type;
    std::string flags;
};

/// A file to be written, its name relative to the directory of its profile.
struct GeneratedFile {
    std::string name;
    std::string text;
};

/// Numbers from a seed. Not the standard distributions: those differ between standard libraries.
class Random {
  public:
    explicit Random( std::uint64_t seed ) noexcept : state_( seed ) {}
    /// A number of 0 to bound − 1. @param bound not 0.
    std::size_t below( std::size_t bound ) noexcept { return static_cast<std::size_t>( next() % bound ); }
    bool oneIn( std::size_t n ) noexcept { return below( n ) == 0; }
    template <class Container>
    const auto& of( const Container& choices ) noexcept {
        return choices[below( choices.size() )];
    }

  private:
    std::uint64_t next() noexcept;
    std::uint64_t state_;
};

enum class Order { sorted, shuffled };

/// Distinct mounts whose lines "path, type, flags" are 56 bytes each with their line end; paths are 30 bytes.
/// @param count at most 10,000,000.
[[nodiscard]] std::vector<MountLine> plainMounts( std::size_t count, Order order, std::uint64_t seed );
/// The mounts, one a line.
[[nodiscard]] std::string mountLines( const std::vector<MountLine>& mounts );
/// A title line, and then the mounts.
[[nodiscard]] std::string plainProfile( const std::vector<MountLine>& mounts );

/// A profile as people write them: template keys, aliases, filters, groups with conditions, comments, and an
/// include file with a tenth of the mounts. The first file is the agent file.
[[nodiscard]] std::vector<GeneratedFile> realisticProfile( const std::string& name, std::size_t mounts,
                                                           std::uint64_t seed );

// Profiles with many of one thing, to see how the time grows with it.
[[nodiscard]] std::string manyGroups( std::size_t count ); ///< each with a condition and one mount
[[nodiscard]] std::string
manyFilters( std::size_t count ); ///< each with two attributes, and a mount that uses it
[[nodiscard]] std::string manyAliases( std::size_t count );
[[nodiscard]] std::string manySubAgents( std::size_t count );
[[nodiscard]] std::string manyMergedFlags( std::size_t count ); ///< one path, given again and again

} // namespace Bench
