#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

/// Programs' ways to get the same mounts from a file on disk into records in memory.
namespace Bench {

using MountVisitor =
    std::function<void( std::string_view path, std::string_view type, std::string_view flags )>;

/// What a loader has made of a file; owns its records.
class LoadedMounts {
  public:
    virtual ~LoadedMounts() = default;
    /// Shows every mount, in the order of paths.
    virtual void visit( const MountVisitor& visitor ) const = 0;
};

/// The record that the peers fill, keyed by its path.
struct Record {
    std::string type;
    std::string flags;
    std::string filter;
};
using RecordMap = std::map<std::string, Record>;

/// A peer's result.
class LoadedRecords : public LoadedMounts {
  public:
    explicit LoadedRecords( RecordMap records ) : records_( std::move( records ) ) {}
    void visit( const MountVisitor& visitor ) const override;

  private:
    RecordMap records_;
};

/// Adds a record, or replaces the one of that path, as a profile's mounts would.
/// Files are mostly in the order of paths, so every peer gets the benefit of trying the end first.
inline void addRecord( RecordMap& records, std::string_view path, std::string_view type,
                       std::string_view flags ) {
    records.insert_or_assign( records.end(), std::string( path ),
                              Record{ std::string( type ), std::string( flags ), {} } );
}

/// A text and its length, for loaders that read the whole file first.
[[nodiscard]] std::string wholeFile( const std::string& fileName );

/// @throws std::runtime_error when the file cannot be read or is in error.
using LoadFunction = std::unique_ptr<LoadedMounts> ( * )( const std::string& fileName );

struct Loader {
    std::string_view name;
    std::string_view format; ///< of the files that it reads: the extension
    LoadFunction load;
};

/// Every loader of this build; the own one is the first.
[[nodiscard]] std::span<const Loader> loaders();
/// Null when this build has none of that name.
[[nodiscard]] const Loader* loaderOf( std::string_view name );

using Loaded = std::unique_ptr<LoadedMounts>;
Loaded loadWithHandler( const std::string& fileName );
Loaded loadWithPlainTokens( const std::string& fileName ); ///< the handler without its fast path
Loaded loadWithFloor( const std::string& fileName );
Loaded loadWithCheapFloor( const std::string& fileName );
Loaded loadWithRapidJson( const std::string& fileName );
Loaded loadWithSimdjsonDom( const std::string& fileName );
Loaded loadWithSimdjsonOnDemand( const std::string& fileName );
Loaded loadWithFlexBison( const std::string& fileName );
Loaded loadWithNlohmann( const std::string& fileName );
Loaded loadWithYamlCpp( const std::string& fileName );
Loaded loadWithTomlPlusPlus( const std::string& fileName );
Loaded loadWithLibyaml( const std::string& fileName );
Loaded loadWithLibmount( const std::string& fileName );

} // namespace Bench
