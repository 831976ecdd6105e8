// generate KIND COUNT DIRECTORY: writes a generated profile, and for the plain kinds the same mounts in other
// formats.
//
//     generate plain 100000 DIR --format profile --format json     DIR/plain-100000.profile,
//     DIR/plain-100000.json generate fleet 2000 DIR --mounts 40 DIR/fleet-0000.profile … generate realistic
//     1000 DIR                                  DIR/realistic-1000.profile and its include file
#include "ProfileGenerator.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <fstream>
#include <map>

namespace {

using namespace Bench;

void appendJson( std::string& text, const MountLine& mount ) {
    text.append( text.ends_with( '[' ) ? R"({"path":")" : R"(,{"path":")" ).append( mount.path );
    text.append( R"(","type":")" ).append( mount.type ).append( R"(","flags":")" ).append( mount.flags ) +=
        "\"}";
}

void appendYaml( std::string& text, const MountLine& mount ) {
    text.append( "- path: " ).append( mount.path ).append( "\n  type: " ).append( mount.type );
    text.append( "\n  flags: " ).append( mount.flags ) += '\n';
}

void appendToml( std::string& text, const MountLine& mount ) {
    text.append( "[[mounts]]\npath = \"" )
        .append( mount.path )
        .append( "\"\ntype = \"" )
        .append( mount.type );
    text.append( "\"\nflags = \"" ).append( mount.flags ) += "\"\n";
}

void appendFstab( std::string& text, const MountLine& mount ) {
    text.append( "none " ).append( mount.path ).append( " " ).append( mount.type ).append( " " );
    text.append( mount.flags ) += " 0 0\n";
}

/// One way to write mounts down.
struct Format {
    const char* before;
    void ( *append )( std::string&, const MountLine& );
    const char* after;
};

const std::map<std::string, Format> otherFormats{ { "json", { R"({"mounts":[)", appendJson, "]}\n" } },
                                                  { "yaml", { "mounts:\n", appendYaml, "" } },
                                                  { "toml", { "", appendToml, "" } },
                                                  { "fstab", { "", appendFstab, "" } } };

std::string inFormat( const std::string& name, const std::vector<MountLine>& mounts ) {
    if ( name == "profile" )
        return plainProfile( mounts );
    const Format& format = otherFormats.at( name );
    std::string text = format.before;
    for ( const MountLine& mount : mounts )
        format.append( text, mount );
    return text + format.after;
}

const std::map<std::string, std::string ( * )( std::size_t )> growthKinds{
    { "groups", manyGroups },
    { "filters", manyFilters },
    { "aliases", manyAliases },
    { "sub-agents", manySubAgents },
    { "merged-flags", manyMergedFlags } };

struct Options {
    std::string kind;
    std::size_t count = 0;
    std::string directory;
    std::vector<std::string> formats{ "profile" };
    std::size_t mounts = 40;
    std::uint64_t seed = 1;
};

void write( const std::string& fileName, const std::string& text ) {
    std::ofstream file( fileName, std::ios::binary );
    if ( !( file << text << std::flush ) )
        throw std::runtime_error( "cannot write " + fileName );
}

void writeFormats( const Options& options, const std::string& base, const std::vector<MountLine>& mounts ) {
    for ( const std::string& format : options.formats )
        write( std::string( options.directory ).append( "/" ).append( base ).append( "." ).append( format ),
               inFormat( format, mounts ) );
}

/// A profile without mounts of its own, and its mounts in include files.
void writeIncluded( const Options& options, const std::string& base ) {
    constexpr std::size_t largestFile = 100'000;
    write( options.directory + "/" + base + ".profile", "agentName: Bench\ninclude: " + base + "-part*\n" );
    const std::vector<MountLine> mounts = plainMounts( options.count, Order::sorted, options.seed );
    const std::string part = options.directory + "/" + base + "-part";
    for ( std::size_t first = 0; first < mounts.size(); first += largestFile ) {
        const std::size_t last = std::min( first + largestFile, mounts.size() );
        const std::string number = std::to_string( mounts.size() + first ); // names in the order of numbers
        write( part + number, mountLines( { mounts.begin() + static_cast<std::ptrdiff_t>( first ),
                                            mounts.begin() + static_cast<std::ptrdiff_t>( last ) } ) );
    }
}

void generate( const Options& options ) {
    const std::string base = options.kind + "-" + std::to_string( options.count );
    if ( options.kind == "plain" || options.kind == "shuffled" ) {
        const Order order = options.kind == "plain" ? Order::sorted : Order::shuffled;
        writeFormats( options, base, plainMounts( options.count, order, options.seed ) );
    } else if ( options.kind == "fleet" ) {
        for ( std::size_t i = 0; i < options.count; ++i )
            writeFormats( options, "fleet-" + std::to_string( i ),
                          plainMounts( options.mounts, Order::sorted, options.seed + i ) );
    } else if ( options.kind == "included" ) {
        writeIncluded( options, base );
    } else if ( options.kind == "realistic" ) {
        for ( const GeneratedFile& file : realisticProfile( base, options.count, options.seed ) )
            write( options.directory + "/" + file.name, file.text );
    } else {
        write( options.directory + "/" + base + ".profile", growthKinds.at( options.kind )( options.count ) );
    }
}

} // namespace

int main( int argc, char** argv ) {
    CLI::App app( "Writes generated profiles" );
    Options options;
    app.add_option( "KIND", options.kind )
        ->required()
        ->check( CLI::IsMember( { "plain", "shuffled", "fleet", "included", "realistic", "groups", "filters",
                                  "aliases", "sub-agents", "merged-flags" } ) );
    app.add_option( "COUNT", options.count )->required();
    app.add_option( "DIRECTORY", options.directory )->required()->check( CLI::ExistingDirectory );
    app.add_option( "--format", options.formats )
        ->check( CLI::IsMember( { "profile", "json", "yaml", "toml", "fstab" } ) );
    app.add_option( "--mounts", options.mounts, "mounts of each file of a fleet" );
    app.add_option( "--seed", options.seed );
    CLI11_PARSE( app, argc, argv );
    try {
        generate( options );
    } catch ( const std::exception& error ) {
        std::cerr << "generate: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
