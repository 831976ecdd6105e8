// load LOADER FILE...: how long one loader takes from a file on disk to records in memory, as a line of JSON.
//
//     generate plain 100000 --format profile --format json DIR
//     load ours DIR/plain-100000.profile                          a fresh process: one load
//     load-counted ours DIR/plain-100000.profile                  the same, allocated bytes in place of times
//     to trust load --repeat 1000 rapidjson DIR/plain-10.json              warm: the median of loads in one
//     process load --threads 2 ours DIR/fleet/*.profile                   every file once, over threads load
//     --list                                                 the loaders and the formats that they read
//     valgrind --tool=callgrind --toggle-collect='Bench::measuredLoad*' build/bench/bin/load ours FILE
//
// "cpu_ns" is the processor time of the whole process, "wall_ns" the time that passes; starting the process
// and dropping the records are not part of either. "digest" is equal for equal mounts.
#include "AllocationCounter.h"
#include "Loaders.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace Bench {

/// Named, to be found by a profiler: what is inside is what is measured.
[[gnu::noinline]] Loaded measuredLoad( const Loader& loader, const std::string& file ) {
    return loader.load( file );
}

namespace {

std::int64_t now( clockid_t clock ) {
    timespec time{};
    clock_gettime( clock, &time );
    return static_cast<std::int64_t>( time.tv_sec ) * 1'000'000'000 + time.tv_nsec;
}

struct Measured {
    std::int64_t cpu;
    std::int64_t wall;
};

/// From construction to stopped().
class StopWatch {
  public:
    [[nodiscard]] Measured stopped() const {
        return { now( CLOCK_PROCESS_CPUTIME_ID ) - start_.cpu, now( CLOCK_MONOTONIC ) - start_.wall };
    }

  private:
    Measured start_{ now( CLOCK_PROCESS_CPUTIME_ID ), now( CLOCK_MONOTONIC ) };
};

/// What was loaded, in numbers that are the same for every loader of the same mounts.
struct Digest {
    std::uint64_t hash = 0xcbf29ce484222325U;
    std::size_t records = 0;

    void add( std::string_view text ) {
        for ( const char byte : text )
            hash = ( hash ^ static_cast<unsigned char>( byte ) ) * 0x100000001b3U;
        hash = ( hash ^ 0x100U ) * 0x100000001b3U;
    }
    void add( const LoadedMounts& mounts ) {
        mounts.visit( [this]( std::string_view path, std::string_view type, std::string_view flags ) {
            add( path );
            add( type );
            add( flags );
            ++records;
        } );
    }
};

Measured median( std::vector<Measured> all, std::int64_t Measured::*member ) {
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>( all.size() / 2 );
    std::ranges::nth_element( all, middle, {}, member );
    return *middle;
}

struct Options {
    std::string loader;
    std::vector<std::string> files;
    std::size_t repeat = 1;
    unsigned threads = 1;
};

/// The median over repeated loads of one file.
Measured loadRepeatedly( const Loader& loader, const Options& options, std::vector<Loaded>& loaded ) {
    std::vector<Measured> times;
    times.reserve( options.repeat );
    Loaded& last = loaded.emplace_back();
    for ( std::size_t i = 0; i < options.repeat; ++i ) {
        last.reset();
        const StopWatch watch;
        last = measuredLoad( loader, options.files.front() );
        times.push_back( watch.stopped() );
    }
    return { median( times, &Measured::cpu ).cpu, median( times, &Measured::wall ).wall };
}

/// All files once, each kept; a thread takes the next file when it has done one.
Measured loadFleet( const Loader& loader, const Options& options, std::vector<Loaded>& loaded ) {
    loaded.resize( options.files.size() );
    std::atomic<std::size_t> next{ 0 };
    const auto work = [&] {
        for ( std::size_t i = next++; i < loaded.size(); i = next++ )
            loaded[i] = measuredLoad( loader, options.files[i] );
    };
    const StopWatch watch;
    {
        std::vector<std::jthread> others;
        for ( unsigned i = 1; i < options.threads; ++i )
            others.emplace_back( work );
        work();
    }
    return watch.stopped();
}

/// The most memory that the process has had resident at once, in KiB. Not getrusage(): its maximum begins
/// with that of the process that started this one.
long peakResident() {
    std::ifstream status( "/proc/self/status" );
    for ( std::string line; std::getline( status, line ); )
        if ( line.starts_with( "VmHWM:" ) )
            return std::stol( line.substr( line.find( ':' ) + 1 ) );
    throw std::runtime_error( "the system does not tell the resident memory" );
}

struct Memory {
    long residentKib;
    std::optional<AllocationCounts> allocated;
};

void print( const Options& options, const Measured& measured, const Digest& digest, const Memory& memory ) {
    std::printf(
        R"({"loader":"%s","files":%zu,"records":%zu,"cpu_ns":%lld,"wall_ns":%lld,"resident_kib":%ld)",
        options.loader.c_str(), options.files.size(), digest.records, static_cast<long long>( measured.cpu ),
        static_cast<long long>( measured.wall ), memory.residentKib );
    if ( memory.allocated )
        std::printf( R"(,"peak_bytes":%td,"kept_bytes":%td,"total_bytes":%td,"allocations":%td)",
                     memory.allocated->peakBytes, memory.allocated->liveBytes, memory.allocated->totalBytes,
                     memory.allocated->allocations );
    std::printf( ",\"digest\":\"%016llx\"}\n", static_cast<unsigned long long>( digest.hash ) );
}

void measure( const Options& options ) {
    const Loader* loader = loaderOf( options.loader );
    if ( !loader )
        throw CLI::ValidationError( "LOADER", "no loader " + options.loader );
    const bool fleet = options.files.size() > 1;
    const long residentBefore = peakResident();
    std::vector<Loaded> loaded;
    startCountingAllocations();
    const Measured measured = ( fleet ? loadFleet : loadRepeatedly )( *loader, options, loaded );
    const Memory memory{ peakResident() - residentBefore, stopCountingAllocations() };
    Digest digest;
    for ( const Loaded& mounts : loaded )
        digest.add( *mounts );
    print( options, measured, digest, memory );
}

} // namespace

} // namespace Bench

int main( int argc, char** argv ) {
    CLI::App app( "Measures a loader of mounts" );
    Bench::Options options;
    app.add_option( "LOADER", options.loader );
    app.add_option( "FILE", options.files );
    app.add_option( "--repeat", options.repeat )->check( CLI::PositiveNumber );
    app.add_option( "--threads", options.threads )->check( CLI::Range( 1, 64 ) );
    bool list = false;
    app.add_flag( "--list", list );
    try {
        app.parse( argc, argv );
        if ( list )
            for ( const Bench::Loader& loader : Bench::loaders() )
                std::printf( "%s %s\n", std::string( loader.name ).c_str(),
                             std::string( loader.format ).c_str() );
        else if ( options.files.empty() )
            throw CLI::RequiredError( "FILE" );
        else
            Bench::measure( options );
    } catch ( const CLI::Error& error ) {
        return app.exit( error );
    } catch ( const std::exception& error ) {
        std::fprintf( stderr, "load: %s: %s\n", options.loader.c_str(), error.what() );
        return 1;
    }
    return 0;
}
