// The conformance cases take the grammar's every way: each rule, each alternative, each token of a set.

#include "support/ParsedProfile.h"
#include "unit/Grammar/GrammarMarks.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <stdexcept>
#include <utility>

namespace {

std::set<std::pair<unsigned, unsigned>> takenAlternatives;
std::set<std::pair<unsigned, unsigned>> takenTokens;

} // namespace

void alternativeTaken( unsigned decision, unsigned alternative ) {
    takenAlternatives.insert( { decision, alternative } );
}

void setTokenTaken( unsigned set, unsigned type ) {
    takenTokens.insert( { set, type } );
}

namespace CorvidTest {

namespace {

void runCorpus() {
    const CapturedStandardError silence;
    for ( const auto& entry : std::filesystem::recursive_directory_iterator( CONFORMANCE_DIRECTORY ) ) {
        if ( entry.path().filename() != "agent" )
            continue;
        Corvid::MountProfileHdlr hdlr(
            entry.path().string(),
            Kiv::Ptr<Corvid::PassiveAgentProfileDir>( new Corvid::PassiveAgentProfileDir ), nullptr, false );
        try {
            hdlr.run();
        } catch ( const std::runtime_error& ) {
            continue; // a case about a file that cannot be read
        }
    }
}

TEST( Alternatives, EveryRuleEveryAlternativeAndEveryTokenOfASetIsTakenByAConformanceCase ) {
    runCorpus();
    std::string missing;
    unsigned decision = 0;
    for ( const GrammarDecision* row = grammarDecisions; row->rule; ++row, ++decision )
        for ( unsigned alternative = 1; alternative <= row->alternatives; ++alternative )
            if ( !takenAlternatives.contains( { decision, alternative } ) )
                missing += std::string( row->rule ) + ", " + row->what + ": alternative " +
                           std::to_string( alternative ) + " of " + std::to_string( row->alternatives ) +
                           "\n";
    unsigned set = 0;
    constexpr unsigned tokenTypes = 67;
    for ( const GrammarSet* row = grammarSets; row->rule; ++row, ++set )
        for ( unsigned type = 0; type < tokenTypes; ++type )
            if ( row->contains( type ) && !takenTokens.contains( { set, type } ) )
                missing += std::string( row->rule ) + ": token " + std::to_string( type ) + "\n";
    EXPECT_EQ( missing, "" );
    EXPECT_GE( decision, 38U + 57U );
    EXPECT_GE( set, 2U );
}

} // namespace

} // namespace CorvidTest
