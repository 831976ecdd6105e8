// Readers beside a writer; the command's threads.

#include "ProfileStore/PublishedProfiles.h"
#include "cli/RunProgram.h"
#include "support/ParsedProfile.h"
#include "threads/InThreads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>

using namespace CorvidTest;
using Corvid::PublishedProfile;
using Corvid::PublishedProfiles;

namespace {

// Readers beside a writer.

const Kiv::Name agentName( "Agent" );
constexpr std::uint64_t lastRevision = 150;

std::string typeOf( std::uint64_t revision ) {
    return "Revision::V" + std::to_string( revision );
}
std::size_t mountCountOf( std::uint64_t revision ) {
    return 20 + revision % 13;
}
bool isInvalid( std::uint64_t revision ) {
    return revision % 3 == 2;
}

/// Every mount tells the revision; an invalid one fails at its last line, and its error tells it.
std::string textOf( std::uint64_t revision ) {
    std::string text = "agentName: Agent\nnoDefaultMountGroup\nmountGroup: late, 7\n";
    for ( std::size_t mount = 0; mount < mountCountOf( revision ); ++mount )
        text += "/m/" + std::to_string( mount ) + ", " + typeOf( revision ) + ", r\n";
    return text + ( isInvalid( revision ) ? "/m/0, Wrong, r\n" : "" );
}

/// The revision that a profile is of; 0 when it is no whole one.
std::uint64_t revisionOf( const Corvid::PassiveAgentProfile& profile ) {
    const auto group = profile.mountGroup().find( Kiv::Name( "late" ) );
    if ( !profile.validProfile() || profile.mountGroup().size() != 2 || group == profile.mountGroup().end() )
        return 0;
    const Corvid::Mount* first = group->second->mountProfile( "m/0" );
    const std::string type = first ? first->type().str() : "";
    const std::string prefix = "Revision::V";
    if ( !type.starts_with( prefix ) )
        return 0;
    const std::uint64_t revision = std::stoull( type.substr( prefix.size() ) );
    for ( const Corvid::Mount& mount : group->second->mountProfile() )
        if ( mount.type() != type || mount.flags() != "r" )
            return 0;
    return group->second->mountProfile().size() == mountCountOf( revision ) ? revision : 0;
}

/// What is wrong with a reading, if anything is.
std::string problemOf( const PublishedProfile& reading ) {
    const std::uint64_t revision = reading.revision;
    const std::uint64_t shown = reading.profile ? revisionOf( *reading.profile ) : 0;
    const std::uint64_t lastValid = isInvalid( revision ) ? revision - 1 : revision;
    const std::string place = "revision " + std::to_string( revision ) + ": ";
    if ( shown != lastValid )
        return place + "shows " + std::to_string( shown );
    if ( reading.valid == isInvalid( revision ) )
        return place + "is not told as what it is";
    const std::string error = reading.error.description().str();
    const std::string expected =
        isInvalid( revision ) ? "present with type: " + typeOf( revision ) + "." : "";
    if ( expected.empty() ? !error.empty() : error.find( expected ) == std::string::npos )
        return place + "has the error '" + error + "'";
    return {};
}

/// How far each reader is. Relaxed: readers and writer must not be put in order by it.
using Progress = std::array<std::atomic<std::uint64_t>, 8>;

/// Reads until the last revision is there. @return the first problem.
std::string readAll( const PublishedProfiles& published, std::atomic<std::uint64_t>& newest ) {
    for ( std::uint64_t before = 0; before < lastRevision; ) {
        const auto reading = published.agent( agentName );
        const std::uint64_t revision = reading ? reading->revision : 0;
        std::string problem = reading ? problemOf( *reading ) : "";
        if ( revision < before )
            problem = "went back from revision " + std::to_string( before );
        if ( !problem.empty() ) {
            newest.store( lastRevision, std::memory_order_relaxed ); // the writer need not wait
            return problem;
        }
        before = revision;
        newest.store( revision, std::memory_order_relaxed );
        std::this_thread::yield(); // the writer is one among many
    }
    return {};
}

/// @param progress of the readers, if there are some: all of them get to see every tenth revision.
void writeAll( PublishedProfiles& published, const TempDir& directory, const Progress* progress ) {
    for ( std::uint64_t revision = 1; revision <= lastRevision; ++revision ) {
        const Kiv::Ptr<Corvid::PassiveAgentProfileDir> apart( new Corvid::PassiveAgentProfileDir );
        Corvid::MountProfileHdlr handler( directory.file( "agent", textOf( revision ) ), apart, nullptr,
                                          true );
        handler.errorPrintedIs( false );
        handler.run();
        published.publish( apart );
        const auto isThere = [revision]( const auto& newest ) {
            return newest.load( std::memory_order_relaxed ) >= revision;
        };
        while ( progress && revision % 10 == 0 && !std::ranges::all_of( *progress, isThere ) )
            std::this_thread::yield();
    }
}

TEST( Threads, NoReaderEverSeesAHalfFilledProfile ) {
    const TempDir directory;
    PublishedProfiles published;
    Progress progress{};
    std::vector<std::string> problems( progress.size() );
    inThreads( progress.size() + 1, [&]( std::size_t number ) {
        if ( number == progress.size() )
            writeAll( published, directory, &progress );
        else
            problems[number] = readAll( published, progress[number] );
    } );
    EXPECT_EQ( problems, std::vector<std::string>( progress.size() ) );
}

TEST( Threads, TheLastReaderOfAProfileMayEndItsLife ) {
    const TempDir directory;
    PublishedProfiles published;
    writeAll( published, directory, nullptr );
    std::vector<PublishedProfiles::Reading> readings( 8, published.agent( agentName ) );
    published.agentDel( agentName );
    std::vector<std::uint64_t> found( readings.size() );
    inThreads( readings.size(), [&]( std::size_t number ) {
        const auto profile = readings[number]->profile;
        readings[number].reset();
        found[number] = profile->parent() ? revisionOf( *profile ) : 0;
    } );
    EXPECT_EQ( found, std::vector<std::uint64_t>( readings.size(), lastRevision ) );
}

// The command.

TEST( Threads, EightJobsCheckAThousandFilesAsOneDoes ) {
    using namespace Corvid::Testing;
    const TempDir directory;
    std::filesystem::create_directory( directory.path() + "/many" );
    directory.file( "many/a.inc", "/included/%peer, Some::Type, r, f\n" );
    for ( std::size_t number = 1; number < 1000; ++number )
        directory.file( "many/Agent" + std::to_string( number ), agentText( number ) );
    const auto check = [&]( const std::string& jobs ) {
        ProgramCall call{
            { MOUNTPROFILE_COMMAND, "check", "--system", "sys", "--redundancy", "--jobs", jobs, "many" } };
        call.directory = directory.path();
        return runProgram( call );
    };
    const ProgramResult one = check( "1" );
    EXPECT_EQ( one.exitStatus, 1 ) << one.err;
    EXPECT_EQ( one.out, "999 files checked: 599 valid, 400 invalid; 1 other file passed over\n" );
    const ProgramResult eight = check( "8" );
    EXPECT_EQ( eight.exitStatus, one.exitStatus );
    EXPECT_EQ( eight.out, one.out );
    EXPECT_EQ( eight.err, one.err );
}

} // namespace
