// Whole runs and storing alone, over generated profiles. "Time" is the processor time up to the filled store;
// dropping the store is not part of it.
//
// "per_entry" is the same for each mount. "peak", "kept" and "total" are allocated bytes for each mount: the
// most at once, those of the filled store, and all together; they are counted in a run of its own.
#include "AllocationCounter.h"
#include "ProfileGenerator.h"

#include "ProfileParser/MountProfileHdlr.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <stdexcept>
#include <unistd.h>

namespace {

using namespace Bench;
using ProfileDir = Kiv::Ptr<Corvid::PassiveAgentProfileDir>;

constexpr std::uint64_t seed = 1;

/// A directory for generated files, removed at the end.
class Files {
  public:
    Files() {
        if ( !mkdtemp( directory_.data() ) )
            throw std::runtime_error( "no temporary directory" );
    }
    Files( const Files& ) = delete;
    Files& operator=( const Files& ) = delete;
    ~Files() { std::filesystem::remove_all( directory_ ); }

    /// Writes files and answers the first one's name.
    std::string written( const std::vector<GeneratedFile>& files ) {
        for ( const GeneratedFile& file : files )
            std::ofstream( directory_ + "/" + file.name, std::ios::binary ) << file.text;
        return directory_ + "/" + files.front().name;
    }

  private:
    std::string directory_ = std::filesystem::temp_directory_path() / "profile-benchmarks-XXXXXX";
};

Files& files() {
    static Files instance;
    return instance;
}

enum class Kind { plain, shuffled, realistic };

std::string profileFile( Kind kind, std::size_t mounts ) {
    if ( kind == Kind::realistic )
        return files().written( realisticProfile( "Bench", mounts, seed ) );
    const Order order = kind == Kind::plain ? Order::sorted : Order::shuffled;
    return files().written( { { "Bench", plainProfile( plainMounts( mounts, order, seed ) ) } } );
}

double processorSeconds() {
    timespec time{};
    clock_gettime( CLOCK_THREAD_CPUTIME_ID, &time );
    return static_cast<double>( time.tv_sec ) + static_cast<double>( time.tv_nsec ) * 1e-9;
}

/// Measures `filled`, which makes a store of so many mounts.
void measure( benchmark::State& state, std::size_t mounts, const std::function<ProfileDir()>& filled ) {
    const auto entries = static_cast<double>( mounts );
    startCountingAllocations();
    const ProfileDir kept = filled();
    if ( const auto counts = stopCountingAllocations() ) {
        state.counters["peak"] = static_cast<double>( counts->peakBytes ) / entries;
        state.counters["kept"] = static_cast<double>( counts->liveBytes ) / entries;
        state.counters["total"] = static_cast<double>( counts->totalBytes ) / entries;
        state.counters["allocations"] = static_cast<double>( counts->allocations ) / entries;
    }
    double seconds = 0;
    for ( auto _ : state ) {
        const double start = processorSeconds();
        const ProfileDir store = filled();
        const double taken = processorSeconds() - start;
        state.SetIterationTime( taken );
        seconds += taken;
    }
    state.counters["per_entry"] = seconds / ( entries * static_cast<double>( state.iterations() ) );
}

void runInto( const ProfileDir& store, const std::string& file, bool plainTokens = false ) {
    Corvid::MountProfileHdlr hdlr( file, store, nullptr, false );
    hdlr.maxFileSizeIs( std::numeric_limits<std::uint32_t>::max() / 2 );
    hdlr.plainTokensIs( plainTokens );
    hdlr.run();
    if ( !hdlr.validProfileFile() )
        throw std::runtime_error( hdlr.errorDesc().description().str() );
}

void runBenchmark( benchmark::State& state, Kind kind, bool plainTokens ) {
    const auto mounts = static_cast<std::size_t>( state.range( 0 ) );
    const std::string file = profileFile( kind, mounts );
    measure( state, mounts, [&] {
        ProfileDir store( new Corvid::PassiveAgentProfileDir );
        runInto( store, file, plainTokens );
        return store;
    } );
}

/// The handler's operations alone, as the parser would call them.
void storeBenchmark( benchmark::State& state, Order order ) {
    const auto mounts = static_cast<std::size_t>( state.range( 0 ) );
    const std::vector<MountLine> lines = plainMounts( mounts, order, seed );
    measure( state, mounts, [&] {
        ProfileDir store( new Corvid::PassiveAgentProfileDir );
        Corvid::MountProfileHdlr hdlr( "Bench", store, nullptr, false );
        hdlr.agentProfileIs( "Bench" );
        hdlr.addMountGroup();
        for ( const MountLine& line : lines )
            hdlr.addMount( line.path, line.type, line.flags, {} );
        return store;
    } );
}

void fleetBenchmark( benchmark::State& state ) {
    const auto fleet = static_cast<std::size_t>( state.range( 0 ) );
    constexpr std::size_t mountsOfEach = 40;
    std::vector<std::string> names;
    for ( std::size_t i = 0; i < fleet; ++i ) {
        const std::string name = "Fleet" + std::to_string( i );
        names.push_back( files().written( realisticProfile( name, mountsOfEach, seed + i ) ) );
    }
    measure( state, fleet * mountsOfEach, [&] {
        ProfileDir store( new Corvid::PassiveAgentProfileDir );
        for ( const std::string& name : names )
            runInto( store, name );
        return store;
    } );
}

constexpr std::int64_t tiny = 10;
constexpr std::int64_t small = 1'000;
constexpr std::int64_t large = 100'000;
constexpr std::int64_t huge = 1'000'000;

BENCHMARK_CAPTURE( runBenchmark, plain, Kind::plain, false )
    ->Arg( tiny )
    ->Arg( small )
    ->Arg( large )
    ->Arg( huge )
    ->UseManualTime();
BENCHMARK_CAPTURE( runBenchmark, shuffled, Kind::shuffled, false )
    ->Arg( small )
    ->Arg( large )
    ->UseManualTime();
BENCHMARK_CAPTURE( runBenchmark, realistic, Kind::realistic, false )
    ->Arg( tiny )
    ->Arg( small )
    ->Arg( large )
    ->UseManualTime();
BENCHMARK_CAPTURE( runBenchmark, plain_without_fast_path, Kind::plain, true )
    ->Arg( tiny )
    ->Arg( small )
    ->Arg( large )
    ->UseManualTime();
BENCHMARK_CAPTURE( storeBenchmark, plain, Order::sorted )
    ->Arg( tiny )
    ->Arg( small )
    ->Arg( large )
    ->Arg( huge )
    ->UseManualTime();
BENCHMARK_CAPTURE( storeBenchmark, shuffled, Order::shuffled )->Arg( small )->Arg( large )->UseManualTime();
BENCHMARK( fleetBenchmark )->Arg( 2'000 )->Unit( benchmark::kMillisecond )->UseManualTime();

} // namespace

BENCHMARK_MAIN();
