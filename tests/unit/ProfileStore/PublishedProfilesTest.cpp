// Publishing profiles to readers, in one thread; tests/threads has the rest.

#include "ProfileStore/PublishedProfiles.h"

#include <gmock/gmock.h>

using Corvid::PassiveAgentProfileDir;
using Corvid::PublishedProfiles;
using Corvid::RecognitionError;

namespace {

const Kiv::Name fan( "Fan" );
const Kiv::Name led( "Led" );

RecognitionError errorOf( const char* description ) {
    RecognitionError error;
    error.descriptionIs( description );
    return error;
}

/// A directory as a run leaves it: one agent whose root flags tell the profiles apart; with an error if there
/// is a description of one.
Kiv::Ptr<PassiveAgentProfileDir> filled( const Kiv::Name& agent, const char* flags,
                                         const char* description = nullptr ) {
    Kiv::Ptr<PassiveAgentProfileDir> directory( new PassiveAgentProfileDir );
    const auto profile = directory->agentProfileIs( agent );
    profile->rootFlagsIs( flags );
    if ( description ) {
        profile->validProfileIs( false );
        profile->errorDescIs( errorOf( description ) );
    }
    return directory;
}

TEST( PublishedProfiles, ShowsNothingOfAnAgentThatWasNotPublished ) {
    PublishedProfiles published;
    EXPECT_EQ( published.agent( fan ), nullptr );
    EXPECT_TRUE( published.agents().empty() );
    published.publish( new PassiveAgentProfileDir );
    EXPECT_TRUE( published.agents().empty() );
}

TEST( PublishedProfiles, AValidProfileTakesThePlaceOfTheOneBefore ) {
    PublishedProfiles published;
    published.publish( filled( fan, "r" ) );
    const auto before = published.agent( fan );
    ASSERT_NE( before, nullptr );
    published.publish( filled( fan, "w" ) );
    const auto after = published.agent( fan );
    EXPECT_EQ( after->profile->rootFlags(), "w" );
    EXPECT_TRUE( after->valid );
    EXPECT_EQ( after->error, RecognitionError() );
    EXPECT_EQ( after->revision, 2U );
    EXPECT_EQ( before->profile->rootFlags(), "r" ) << "who has read keeps what was read";
    EXPECT_EQ( before->revision, 1U );
}

TEST( PublishedProfiles, AnInvalidRunLeavesTheLastValidProfileInForceWithTheNewErrorBesideIt ) {
    PublishedProfiles published;
    published.publish( filled( fan, "r" ) );
    published.publish( filled( fan, "w", "first" ) );
    published.publish( filled( fan, "w", "second" ) );
    EXPECT_EQ( published.agent( fan )->profile->rootFlags(), "r" );
    EXPECT_FALSE( published.agent( fan )->valid );
    EXPECT_EQ( published.agent( fan )->error, errorOf( "second" ) );
    EXPECT_EQ( published.agent( fan )->revision, 3U );
    published.publish( filled( fan, "c" ) );
    EXPECT_EQ( published.agent( fan )->profile->rootFlags(), "c" );
    EXPECT_TRUE( published.agent( fan )->valid );
    EXPECT_EQ( published.agent( fan )->error, RecognitionError() );
}

TEST( PublishedProfiles, AnErrorWithoutAProfileCounts ) {
    PublishedProfiles published;
    published.errorIs( fan, errorOf( "no title" ) );
    EXPECT_EQ( published.agent( fan )->profile, nullptr );
    EXPECT_FALSE( published.agent( fan )->valid );
    EXPECT_EQ( published.agent( fan )->error, errorOf( "no title" ) );
    EXPECT_EQ( published.agent( fan )->revision, 1U );
    published.publish( filled( fan, "r" ) );
    published.errorIs( fan, errorOf( "again" ) );
    EXPECT_EQ( published.agent( fan )->profile->rootFlags(), "r" );
    EXPECT_EQ( published.agent( fan )->error, errorOf( "again" ) );
}

TEST( PublishedProfiles, AgentsAreIndependent ) {
    PublishedProfiles published;
    const auto both = filled( fan, "r" );
    both->agentProfileIs( led )->rootFlagsIs( "w" );
    published.publish( both );
    published.publish( filled( led, "c" ) );
    const auto all = published.agents();
    ASSERT_EQ( all.size(), 2U );
    EXPECT_EQ( all.at( fan )->profile->rootFlags(), "r" );
    EXPECT_EQ( all.at( fan )->revision, 1U );
    EXPECT_EQ( all.at( led )->profile->rootFlags(), "c" );
    EXPECT_EQ( all.at( led )->revision, 2U );
    published.agentDel( fan );
    published.agentDel( fan );
    EXPECT_EQ( published.agent( fan ), nullptr );
    EXPECT_NE( published.agent( led ), nullptr );
    EXPECT_EQ( all.at( fan )->profile->rootFlags(), "r" );
}

TEST( PublishedProfiles, AProfileKeepsItsDirectoryAsLongAsItIsRead ) {
    std::shared_ptr<const Corvid::PassiveAgentProfile> profile;
    {
        PublishedProfiles published;
        published.publish( filled( fan, "r" ) );
        profile = published.agent( fan )->profile;
    }
    ASSERT_NE( profile->parent(), nullptr );
    const auto* directory = dynamic_cast<const PassiveAgentProfileDir*>( profile->parent() );
    ASSERT_NE( directory, nullptr );
    EXPECT_EQ( directory->agentProfile().at( fan ).get(), profile.get() );
}

} // namespace
