// Errors of the default mounts are found when no parser is running, which an assertion takes for a fault of
// the program: this test is linked with that assertion compiled out.

#include "support/ParsedProfile.h"

#include <gmock/gmock.h>

namespace {

using namespace CorvidTest;

/// A directory in which the agent Fan already has a mount of another type where a default mount goes: no file
/// can bring that about.
Kiv::Ptr<Corvid::PassiveAgentProfileDir> rootWithClash( const std::string& path ) {
    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root = new Corvid::PassiveAgentProfileDir;
    root->agentProfileIs( Kiv::Name( "Fan" ) )
        ->mountGroupIs( Kiv::Name( "default" ), 1 )
        ->mountProfileIs( Corvid::Mount( path, "Other::Type", "r" ) );
    return root;
}

TEST( PostParsingError, FillsTheFieldsThatApply ) {
    const ParsedProfile parsed( "agentName: Fan\n",
                                { .addDefaults = true, .root = rootWithClash( "agent/config" ) } );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    const auto& error = parsed.error();
    EXPECT_EQ( error.fileName().str(), parsed.agentFile() );
    EXPECT_EQ( error.includeFileName().str(), "" );
    EXPECT_EQ( error.line(), 0xFFFFFFFFU );
    EXPECT_EQ( error.charPositionInLine(), -1 );
    EXPECT_EQ( error.exceptionType(), 0U );
    EXPECT_EQ( error.recognizer().str(), "post-parsing" );
    EXPECT_EQ( error.description().str(),
               "While adding default profiles, Path agent/config is already present with type: Other::Type. "
               "Mismatched type: Agent::GlobalConfigDir" );
    EXPECT_EQ( error.sourceLine().str(), "" );
    EXPECT_EQ( parsed.profile()->errorDesc(), error );
    EXPECT_EQ( parsed.standardError(), parsed.agentFile() + ": error: " + error.description().str() + "\n" );
    EXPECT_THAT( parsed.trace(),
                 testing::HasSubstr( "1 Constucting handler exception, occured while adding profiles "
                                     "post-parsing the agent file\n" ) );
    EXPECT_THAT( parsed.trace(),
                 testing::HasSubstr( "0 Invalidating agent profile, due to error in adding default "
                                     "mounts,: 'Fan'\n" ) );
}

TEST( PostParsingError, DoesNotStopTheDefaultsButIsTheOnlyOneRecorded ) {
    const auto root = rootWithClash( "logging/config" );
    root->agentProfileIs( Kiv::Name( "Fan" ) )
        ->mountGroupIs( Kiv::Name( "default" ), 1 )
        ->mountProfileIs( Corvid::Mount( Kiv::String8( "agent/config" ), "Other::Type", "r" ) );
    const ParsedProfile parsed( "agentName: Fan\n", { .addDefaults = true, .root = root } );
    EXPECT_EQ( parsed.outcome(), "invalid" );
    EXPECT_EQ(
        parsed.description(),
        "While adding default profiles, Path logging/config is already present with type: Other::Type. "
        "Mismatched type: Kiv::LogConfig" );
    EXPECT_THAT( parsed.mountsOf( "default" ), testing::HasSubstr( "logging/status Kiv::LogStatus r\n" ) );
    EXPECT_THAT( parsed.mountsOf( "default" ), testing::HasSubstr( "%agentString Agent::Config wfc\n" ) );
}

} // namespace
