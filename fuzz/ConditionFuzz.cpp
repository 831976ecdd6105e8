// Any bytes as the condition of a mount group.

#include "InputDirectory.h"
#include "Laws.h"

namespace CorvidFuzz {

namespace {

constexpr std::string_view before = "agentName: A-%slot\nalias: %peer = %slot\nmountGroup: g\ncondition: ";

FinishedRun runCondition( InputDirectory& directory, std::string_view condition ) {
    const std::string text = std::string( before ).append( condition );
    const std::string agentFile = directory.write( "agent", text );
    RunOptions options;
    options.addDefaults = false;
    return checkedRun( agentFile, { { agentFile, text } }, options );
}

const Corvid::PassiveMountGroup* groupOf( const FinishedRun& run ) {
    const auto& groups = run.handler->agentProfile()->mountGroup();
    const auto found = groups.find( Kiv::Name( "g" ) );
    return found == groups.end() ? nullptr : found->second.get();
}

/// What is kept of a condition is its whole text, and its comparisons one by one.
void checkWhole( const Corvid::PassiveMountGroup& group ) {
    const std::string whole = " and " + group.entireCondition().str() + " and ";
    const auto isPart = [&whole]( const Kiv::String8& condition ) {
        return whole.find( " and " + condition.str() + " and " ) != std::string::npos;
    };
    for ( const auto& condition : group.conditionCol() )
        require( isPart( condition ), "a comparison is part of the whole condition", condition );
    for ( const auto& [condition, value] : group.templateConditionCol() )
        require( isPart( condition ) && value, "a comparison is part of the whole condition", condition );
}

/// Reading again what is kept of a condition gives the same, if it can be read: joined words may have become
/// others.
void checkReadAgain( InputDirectory& directory, const Corvid::PassiveMountGroup& group ) {
    const auto again = runCondition( directory, group.entireCondition() );
    if ( again.outcome != Corvid::Outcome::valid )
        return;
    const auto* read = groupOf( again );
    require( read && read->entireCondition() == group.entireCondition() &&
                 read->conditionCol() == group.conditionCol() &&
                 read->templateConditionCol() == group.templateConditionCol(),
             "a condition that is kept reads as the same condition", group.entireCondition() );
}

} // namespace

} // namespace CorvidFuzz

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size ) {
    using namespace CorvidFuzz;
    static InputDirectory directory;
    const auto run = runCondition( directory, textOf( data, size ) );
    if ( run.outcome != Corvid::Outcome::valid )
        return 0;
    const auto* group = groupOf( run );
    require( group, "a valid condition has a group", textOf( data, size ) );
    checkWhole( *group );
    checkReadAgain( directory, *group );
    return 0;
}
