// Many handlers at once, and all that they share.

#include "CInterface/corvid_mount_profile.h"
#include "EmbeddedPlatform.h"
#include "ProfileParser/RunObserver.h"
#include "support/ParsedProfile.h"
#include "threads/InThreads.h"

#include <atomic>
#include <memory>
#include <thread>

using namespace CorvidTest;

namespace {

constexpr std::size_t fileCount = 20;
constexpr std::size_t threadCount = 8;
/// How often each file is read: by the threads, and by one alone before.
constexpr std::size_t readings = threadCount + 1;

/// What comes of an agent file.
using ResultOf = std::function<std::string( const std::string& agentFile )>;

/// What comes of many files is the same when threads read all of them at once.
void expectNoDisturbance( const ResultOf& resultOf ) {
    const TempDir directory;
    directory.file( "a.inc", "/included/%peer, Some::Type, r, f\n" );
    std::vector<std::string> files;
    std::vector<std::string> expected;
    for ( std::size_t number = 0; number < fileCount; ++number ) {
        files.push_back( directory.file( "Agent" + std::to_string( number ), agentText( number ) ) );
        expected.push_back( resultOf( files.back() ) );
    }
    std::vector<std::string> found( threadCount * fileCount );
    inThreads( threadCount, [&]( std::size_t thread ) {
        for ( std::size_t step = 0; step < fileCount; ++step ) {
            const std::size_t number = ( step + thread ) % fileCount;
            found[thread * fileCount + number] = resultOf( files[number] );
        }
    } );
    for ( std::size_t i = 0; i < found.size(); ++i )
        EXPECT_EQ( found[i], expected[i % fileCount] );
}

/// A handler of its own for a file. @param prepare is given the handler before it runs.
std::string resultOf( const std::string& agentFile, const Kiv::Ptr<const Corvid::EntityManager>& manager,
                      const std::function<void( Corvid::MountProfileHdlr& )>& prepare ) {
    const Kiv::Ptr<Corvid::PassiveAgentProfileDir> directory( new Corvid::PassiveAgentProfileDir );
    Corvid::MountProfileHdlr handler( agentFile, directory, manager, true );
    handler.errorPrintedIs( false );
    prepare( handler );
    handler.run();
    return dumped( *handler.agentProfile() ) + handler.errorDesc().composeErrorDescMessage().str();
}

/// A system with a peer, so that handlers also read what they share.
Kiv::Ptr<const Corvid::EntityManager> redundantSystem() {
    using Redundancy::Mode;
    Kiv::Embedded::entityIs( "/sys/Corvid/cell/1/redundancy/status",
                             Kiv::Embedded::newRedundancyStatus( Mode::hotStandby, Mode::hotStandby ) );
    return Kiv::Embedded::newEntityManager( "sys", false );
}

TEST( ThreadsOfHandlers, DoNotDisturbEachOther ) {
    const auto manager = redundantSystem();
    expectNoDisturbance( [&manager]( const std::string& agentFile ) {
        return resultOf( agentFile, manager, []( const Corvid::MountProfileHdlr& ) {} );
    } );
    Kiv::Embedded::entitiesDel();
}

/// Lists the mounts that it is told of.
class MountListing final : public Corvid::RunObserver {
  public:
    [[nodiscard]] const std::string& text() const { return text_; }
    void mountAdded( const Corvid::MountAddition& addition ) override {
        EXPECT_EQ( std::this_thread::get_id(), thread_ );
        text_ += std::to_string( addition.origin.line ) + ": " + dumped( addition.after ) + "\n";
    }

  private:
    std::string text_;
    std::thread::id thread_ = std::this_thread::get_id();
};

TEST( ThreadsOfHandlers, EachTellItsOwnObserverOnItsThread ) {
    expectNoDisturbance( []( const std::string& agentFile ) {
        MountListing listing;
        const std::string result =
            resultOf( agentFile, nullptr,
                      [&listing]( Corvid::MountProfileHdlr& hdlr ) { hdlr.observerIs( &listing ); } );
        EXPECT_NE( listing.text(), "" );
        return result + listing.text();
    } );
}

TEST( ThreadsOfHandlers, TraceLineByLine ) {
    std::map<std::string, std::size_t> lines; // no lock of its own: the trace facility has one
    Kiv::Embedded::traceLevelsAre( "MountProfileHdlr" );
    Kiv::Embedded::traceSinkIs( [&lines]( const Kiv::TraceHandle&, unsigned, const char*, unsigned,
                                          std::string_view text ) { ++lines[std::string( text )]; } );
    expectNoDisturbance( []( const std::string& agentFile ) {
        return resultOf( agentFile, nullptr, []( const Corvid::MountProfileHdlr& ) {} );
    } );
    Kiv::Embedded::traceSinkIs( {} );
    Kiv::Embedded::traceLevelsAre( "" );
    EXPECT_GE( lines.size(), fileCount );
    for ( const auto& [line, count] : lines )
        EXPECT_EQ( count % readings, 0U ) << line;
}

TEST( ThreadsOfHandlers, PrintErrorsAndLoseNothingOfThem ) {
    std::atomic<std::size_t> size = 0; // of all that should be printed; lines may mix
    testing::internal::CaptureStderr();
    expectNoDisturbance( [&size]( const std::string& agentFile ) {
        const auto print = []( Corvid::MountProfileHdlr& hdlr ) { hdlr.errorPrintedIs( true ); };
        std::string result = resultOf( agentFile, nullptr, print );
        const auto error = result.find( agentFile );
        if ( error != std::string::npos )
            size.fetch_add( result.size() - error + 1, std::memory_order_relaxed );
        return result;
    } );
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_EQ( printed.size(), size.load() );
    EXPECT_EQ( static_cast<std::size_t>( std::ranges::count( printed, '\n' ) ),
               readings * fileCount * 2 / 5 );
}

TEST( ThreadsOfHandlers, ParseThroughTheCInterface ) {
    expectNoDisturbance( []( const std::string& agentFile ) -> std::string {
        corvid_mount_profile* profile = nullptr;
        EXPECT_EQ( corvid_mount_profile_parse( agentFile.c_str(), nullptr, &profile ),
                   CORVID_MOUNT_PROFILE_OK );
        const std::unique_ptr<corvid_mount_profile, decltype( &corvid_mount_profile_free )> owned(
            profile, corvid_mount_profile_free );
        return std::string( corvid_mount_profile_json( profile, nullptr ) ) +
               corvid_mount_profile_error_text( profile, CORVID_MOUNT_PROFILE_MESSAGE, nullptr );
    } );
}

} // namespace
