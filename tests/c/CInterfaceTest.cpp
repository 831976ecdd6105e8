// The C interface of the shared library: its answers, who owns what, and what happens when memory runs out.
#include "CInterface/corvid_mount_profile.h"
#include "cli/RunProgram.h"
#include "support/TempDir.h"
#include "unit/Faults/AllocationFaults.h"

#include <gmock/gmock.h>

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace CorvidTest {

namespace {

/// A result that is freed, as C++ has it.
using Profile = std::unique_ptr<corvid_mount_profile, decltype( &corvid_mount_profile_free )>;

Profile parsed( const std::string& file, const corvid_mount_profile_options* options = nullptr ) {
    corvid_mount_profile* profile = nullptr;
    EXPECT_EQ( corvid_mount_profile_parse( file.c_str(), options, &profile ), CORVID_MOUNT_PROFILE_OK );
    return { profile, &corvid_mount_profile_free };
}

/// With a check that the length told is that of the text, which ends in a NUL.
std::string textOf( const Profile& profile, corvid_mount_profile_text which ) {
    std::size_t length = 0;
    const char* text = corvid_mount_profile_error_text( profile.get(), which, &length );
    EXPECT_EQ( text[length], '\0' );
    return { text, length };
}

std::string documentOf( const Profile& profile ) {
    std::size_t length = 0;
    const char* document = corvid_mount_profile_json( profile.get(), &length );
    EXPECT_EQ( std::strlen( document ), length );
    return document;
}

std::string source( const std::string& path ) {
    return CORVID_SOURCE_DIR "/" + path;
}

/// The agent files of examples, and of a topic of the conformance cases.
std::vector<std::string> agentFiles() {
    std::vector<std::string> files;
    for ( const auto* folder : { "examples", "conformance/characters", "conformance/includes" } )
        for ( const auto& entry : std::filesystem::recursive_directory_iterator( source( folder ) ) )
            if ( entry.path().filename() == "agent" )
                files.push_back( entry.path() );
    return files;
}

} // namespace

TEST( CInterface, TheDocumentIsTheCommandsByteForByte ) {
    const auto files = agentFiles();
    ASSERT_GT( files.size(), 20U );
    for ( const auto& file : files )
        EXPECT_EQ( documentOf( parsed( file ) ),
                   Corvid::Testing::runProgram( { { MOUNTPROFILE_PROGRAM, "show", "--json", file } } ).out );
}

TEST( CInterface, EachOutcomeIsToldWithItsCode ) {
    const TempDir files;
    using Told = std::pair<corvid_mount_profile_result, std::string>;
    const auto toldOf = []( const std::string& file ) {
        const auto profile = parsed( file );
        return Told( corvid_mount_profile_outcome( profile.get() ),
                     textOf( profile, CORVID_MOUNT_PROFILE_CODE ) );
    };
    EXPECT_EQ( toldOf( files.file( "valid", "agentName: Fan\n" ) ), Told( CORVID_MOUNT_PROFILE_VALID, "" ) );
    EXPECT_EQ( toldOf( files.file( "invalid", "agentName: Fan\n/a, T, x\n" ) ),
               Told( CORVID_MOUNT_PROFILE_INVALID, "MP042" ) );
    EXPECT_EQ( toldOf( files.file( "other", "/a, T, r\n" ) ),
               Told( CORVID_MOUNT_PROFILE_NOT_AGENT_FILE, "MP091" ) );
    EXPECT_EQ( toldOf( files.path() ), Told( CORVID_MOUNT_PROFILE_UNREADABLE, "MP090" ) );
    EXPECT_EQ( corvid_mount_profile_outcome( nullptr ), CORVID_MOUNT_PROFILE_NONE );
}

TEST( CInterface, AFileThatAsksForConfiguredPathsCannotStopAHostWithoutAnEntityManager ) {
    const TempDir files;
    const auto agent = files.file( "agent", "agentName: Fan\ninclude: ConfigMountProfile\n" );
    ASSERT_EQ( ::setenv( "K7_CHROOT", "/", 1 ), 0 );
    const auto profile = parsed( agent );
    ASSERT_EQ( ::unsetenv( "K7_CHROOT" ), 0 );
    EXPECT_EQ( corvid_mount_profile_outcome( profile.get() ), CORVID_MOUNT_PROFILE_UNREADABLE );
    EXPECT_EQ( textOf( profile, CORVID_MOUNT_PROFILE_MESSAGE ),
               agent +
                   ": error: ConfigMountProfile, included in line 2: The configured paths are not known" );
}

TEST( CInterface, AnErrorIsToldInItsPartsAndPrintedNowhere ) {
    const TempDir files;
    const auto include = files.file( "inc", "/a, T, r\n /b, T, x\n" );
    const auto agent = files.file( "agent", "agentName: Fan\ninclude: inc\n" );
    testing::internal::CaptureStderr();
    const auto profile = parsed( agent );
    EXPECT_EQ( testing::internal::GetCapturedStderr(), "" );
    EXPECT_THAT( textOf( profile, CORVID_MOUNT_PROFILE_DESCRIPTION ),
                 testing::HasSubstr( "illegal flag 'x'" ) );
    EXPECT_EQ( textOf( profile, CORVID_MOUNT_PROFILE_FILE_NAME ), agent );
    EXPECT_EQ( textOf( profile, CORVID_MOUNT_PROFILE_INCLUDE_FILE_NAME ), include );
    EXPECT_EQ( textOf( profile, CORVID_MOUNT_PROFILE_RECOGNIZER ), "parser" );
    EXPECT_EQ( textOf( profile, CORVID_MOUNT_PROFILE_SOURCE_LINE ), "" );
    EXPECT_THAT( textOf( profile, CORVID_MOUNT_PROFILE_MESSAGE ),
                 testing::AllOf( testing::StartsWith( include + ":2:10: error: " ),
                                 testing::EndsWith( " (included from " + agent + ")" ) ) );
    EXPECT_EQ( corvid_mount_profile_error_line( profile.get() ), 2U );
    EXPECT_EQ( corvid_mount_profile_error_column( profile.get() ), 10U );
    EXPECT_GT( corvid_mount_profile_error_kind( profile.get() ), 0U );
}

TEST( CInterface, AnErrorAtTheEndOfAFileHasThePlaceOfTheAppendedLineEnd ) {
    const TempDir files;
    const auto profile = parsed( files.file( "agent", "agentName: Fan\n\n/a, T" ) );
    EXPECT_EQ( corvid_mount_profile_error_line( profile.get() ), 1U );
    EXPECT_EQ( corvid_mount_profile_error_column( profile.get() ), 2U );
}

TEST( CInterface, TextsThatHoldNulsAreToldWhole ) {
    const TempDir files;
    const auto profile = parsed( files.file( "agent", std::string_view( "agentName: Fan\n\0\n", 17 ) ) );
    EXPECT_EQ( textOf( profile, CORVID_MOUNT_PROFILE_RECOGNIZER ), "lexer" );
    EXPECT_THAT( textOf( profile, CORVID_MOUNT_PROFILE_SOURCE_LINE ),
                 testing::HasSubstr( std::string( 1, '\0' ) ) );
}

TEST( CInterface, WithoutAnErrorThereIsNothingToTell ) {
    const TempDir files;
    const auto valid = parsed( files.file( "agent", "agentName: Fan\n" ) );
    for ( const auto which :
          { CORVID_MOUNT_PROFILE_MESSAGE, CORVID_MOUNT_PROFILE_FILE_NAME, CORVID_MOUNT_PROFILE_DESCRIPTION } )
        EXPECT_EQ( textOf( valid, which ), "" );
    EXPECT_EQ( corvid_mount_profile_error_line( valid.get() ), 0U );
    EXPECT_EQ( corvid_mount_profile_error_column( valid.get() ), 0U );
    EXPECT_EQ( corvid_mount_profile_error_kind( valid.get() ), 0U );
}

TEST( CInterface, AnUnreadableFileIsToldInTheMessage ) {
    const auto profile = parsed( "nowhere" );
    EXPECT_EQ( textOf( profile, CORVID_MOUNT_PROFILE_MESSAGE ), "nowhere: error: No such file or directory" );
    EXPECT_THAT( documentOf( profile ), testing::HasSubstr( R"("outcome": "unreadable")" ) );
    EXPECT_EQ( corvid_mount_profile_error_line( profile.get() ), 0U );
}

TEST( CInterface, AFileThatIsNoAgentFileIsToldInTheMessage ) {
    const TempDir files;
    EXPECT_EQ( textOf( parsed( files.file( "a~b\n", "/a, T, r\n" ) ), CORVID_MOUNT_PROFILE_MESSAGE ),
               files.path() + "/a~b\\n: error: not an agent file: it does not begin with an agent title line "
                              "(agentName: NAME)" );
}

TEST( CInterface, TheDocumentIsMadeOnce ) {
    const auto profile = parsed( source( "examples/fan/agent" ) );
    const char* const document = corvid_mount_profile_json( profile.get(), nullptr );
    EXPECT_EQ( corvid_mount_profile_json( profile.get(), nullptr ), document );
}

TEST( CInterface, TheNumbersThatProgramsWereBuiltWithNeverChange ) {
    using testing::ElementsAre;
    using Numbers = std::vector<int>;
    EXPECT_THAT( ( Numbers{ CORVID_MOUNT_PROFILE_OK, CORVID_MOUNT_PROFILE_INVALID_ARGUMENT,
                            CORVID_MOUNT_PROFILE_NO_MEMORY, CORVID_MOUNT_PROFILE_INTERNAL } ),
                 ElementsAre( 0, 1, 2, 3 ) );
    EXPECT_THAT(
        ( Numbers{ CORVID_MOUNT_PROFILE_NONE, CORVID_MOUNT_PROFILE_VALID, CORVID_MOUNT_PROFILE_INVALID,
                   CORVID_MOUNT_PROFILE_NOT_AGENT_FILE, CORVID_MOUNT_PROFILE_UNREADABLE } ),
        ElementsAre( 0, 1, 2, 3, 4 ) );
    EXPECT_THAT( ( Numbers{ CORVID_MOUNT_PROFILE_MESSAGE, CORVID_MOUNT_PROFILE_FILE_NAME,
                            CORVID_MOUNT_PROFILE_INCLUDE_FILE_NAME, CORVID_MOUNT_PROFILE_RECOGNIZER,
                            CORVID_MOUNT_PROFILE_DESCRIPTION, CORVID_MOUNT_PROFILE_SOURCE_LINE,
                            CORVID_MOUNT_PROFILE_CODE } ),
                 ElementsAre( 0, 1, 2, 3, 4, 5, 6 ) );
    EXPECT_EQ( CORVID_MOUNT_PROFILE_NO_DEFAULTS, 1 );
}

TEST( CInterface, EveryStatusHasItsText ) {
    const std::pair<corvid_mount_profile_status, const char*> rows[] = {
        { CORVID_MOUNT_PROFILE_OK, "no error" },
        { CORVID_MOUNT_PROFILE_INVALID_ARGUMENT,
          "invalid argument: a null pointer, or options that this library does not know" },
        { CORVID_MOUNT_PROFILE_NO_MEMORY, "out of memory" },
        { CORVID_MOUNT_PROFILE_INTERNAL, "internal error" },
    };
    for ( const auto& [status, text] : rows )
        EXPECT_STREQ( corvid_mount_profile_status_text( status ), text );
}

TEST( CInterface, OptionsHold ) {
    const TempDir files;
    const auto agent = files.file( "agent", "agentName: Fan\n" );
    corvid_mount_profile_options options = CORVID_MOUNT_PROFILE_OPTIONS_INIT;
    EXPECT_EQ( documentOf( parsed( agent, &options ) ), documentOf( parsed( agent ) ) );
    options.flags = CORVID_MOUNT_PROFILE_NO_DEFAULTS;
    EXPECT_THAT( documentOf( parsed( agent, &options ) ),
                 testing::Not( testing::HasSubstr( "Corvid/status" ) ) );
    options.max_file_size = 14;
    EXPECT_EQ( textOf( parsed( agent, &options ), CORVID_MOUNT_PROFILE_MESSAGE ),
               agent + ": error: Larger than 14 bytes" );
    options.max_file_size = 15;
    EXPECT_EQ( corvid_mount_profile_outcome( parsed( agent, &options ).get() ), CORVID_MOUNT_PROFILE_VALID );
}

namespace {

/// Options of a later version, with one member more.
struct LaterOptions {
    corvid_mount_profile_options known = CORVID_MOUNT_PROFILE_OPTIONS_INIT;
    std::uint64_t added = 0;
};

corvid_mount_profile_status statusWith( const corvid_mount_profile_options& options ) {
    auto* profile = reinterpret_cast<corvid_mount_profile*>( 1 ); // what is left of another call
    const auto status = corvid_mount_profile_parse( "nowhere", &options, &profile );
    EXPECT_EQ( profile == nullptr, status != CORVID_MOUNT_PROFILE_OK );
    corvid_mount_profile_free( profile );
    return status;
}

} // namespace

TEST( CInterface, OptionsOfALaterVersionAreTakenAsLongAsTheyAskForNothingNew ) {
    LaterOptions later;
    later.known.size = sizeof later;
    EXPECT_EQ( statusWith( later.known ), CORVID_MOUNT_PROFILE_OK );
    later.added = 1;
    EXPECT_EQ( statusWith( later.known ), CORVID_MOUNT_PROFILE_INVALID_ARGUMENT );
    corvid_mount_profile_options options = CORVID_MOUNT_PROFILE_OPTIONS_INIT;
    options.flags = 2;
    EXPECT_EQ( statusWith( options ), CORVID_MOUNT_PROFILE_INVALID_ARGUMENT );
    for ( const std::uint32_t size : { 0U, std::uint32_t{ sizeof options - 1 }, 4097U, 0xFFFFFFFFU } ) {
        options = CORVID_MOUNT_PROFILE_OPTIONS_INIT;
        options.size = size;
        EXPECT_EQ( statusWith( options ), CORVID_MOUNT_PROFILE_INVALID_ARGUMENT ) << size;
    }
}

TEST( CInterface, NullIsAnAnswerNotACrash ) {
    corvid_mount_profile* profile = nullptr;
    EXPECT_EQ( corvid_mount_profile_parse( nullptr, nullptr, &profile ),
               CORVID_MOUNT_PROFILE_INVALID_ARGUMENT );
    EXPECT_EQ( corvid_mount_profile_parse( "nowhere", nullptr, nullptr ),
               CORVID_MOUNT_PROFILE_INVALID_ARGUMENT );
    std::size_t length = 1;
    EXPECT_EQ( corvid_mount_profile_json( nullptr, &length ), nullptr );
    EXPECT_EQ( length, 0U );
    EXPECT_EQ( corvid_mount_profile_json( nullptr, nullptr ), nullptr );
    length = 1;
    EXPECT_EQ( corvid_mount_profile_error_text( nullptr, CORVID_MOUNT_PROFILE_MESSAGE, &length ), nullptr );
    EXPECT_EQ( length, 0U );
    EXPECT_EQ( corvid_mount_profile_error_line( nullptr ), 0U );
    EXPECT_EQ( corvid_mount_profile_error_column( nullptr ), 0U );
    EXPECT_EQ( corvid_mount_profile_error_kind( nullptr ), 0U );
    corvid_mount_profile_free( nullptr );
}

TEST( CInterface, WhatTheLibraryDoesNotKnowIsNull ) {
    const auto profile = parsed( "nowhere" );
    EXPECT_EQ( corvid_mount_profile_error_text( profile.get(), static_cast<corvid_mount_profile_text>( 99 ),
                                                nullptr ),
               nullptr );
    EXPECT_STREQ( corvid_mount_profile_status_text( static_cast<corvid_mount_profile_status>( 99 ) ),
                  "unknown status" );
    EXPECT_EQ( corvid_mount_profile_interface_version(), CORVID_MOUNT_PROFILE_INTERFACE_VERSION );
}

namespace {

/// Parses and asks for the document. @return the first status that is not OK, or that of a missing document.
corvid_mount_profile_status statusOf( const std::string& file, corvid_mount_profile_status ofNoDocument ) {
    corvid_mount_profile* profile = nullptr;
    auto status = corvid_mount_profile_parse( file.c_str(), nullptr, &profile );
    if ( status == CORVID_MOUNT_PROFILE_OK && !corvid_mount_profile_json( profile, nullptr ) )
        status = ofNoDocument;
    corvid_mount_profile_free( profile );
    return status;
}

/// Has every allocation of a run fail once, and looks for what is not freed.
void failEachAllocation( const std::string& agentFile, Thrown thrown, corvid_mount_profile_status expected ) {
    const std::string file = source( agentFile );
    ASSERT_EQ( statusOf( file, expected ), CORVID_MOUNT_PROFILE_OK ); // what is made once and kept is there
    long number = 1;
    for ( bool failed = true; failed; ++number ) {
        const long alive = liveAllocations();
        const FailingAllocation failing( number, thrown );
        const auto status = statusOf( file, expected );
        failed = failing.hasFailed();
        EXPECT_EQ( status, failed ? expected : CORVID_MOUNT_PROFILE_OK ) << "allocation " << number;
        EXPECT_EQ( liveAllocations(), alive ) << "not freed when allocation " << number << " fails";
    }
    EXPECT_GT( number, 30 );
}

} // namespace

TEST( CInterface, WhereverMemoryRunsOutTheStatusTellsItAndNothingLeaks ) {
    for ( const auto* file : { "examples/fan/agent", "examples/broken/agent" } )
        failEachAllocation( file, Thrown::badAlloc, CORVID_MOUNT_PROFILE_NO_MEMORY );
}

TEST( CInterface, WhateverIsThrownBecomesAStatus ) {
    failEachAllocation( "examples/fan/agent", Thrown::somethingElse, CORVID_MOUNT_PROFILE_INTERNAL );
}

} // namespace CorvidTest
