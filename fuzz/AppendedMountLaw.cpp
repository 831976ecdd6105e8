#include "AppendedMountLaw.h"

#include "Laws.h"

#include <nlohmann/json.hpp>

namespace CorvidFuzz {

using Corvid::Outcome;
using nlohmann::json;

namespace {

constexpr std::string_view appendedLine = "\n/zz/appended, Zz::Appended, r\n";

/// What a run makes of a file, less one group and whether there was an error.
json documentWithout( const FinishedRun& run, const std::string& leftOutGroup ) {
    json document = json::parse( documentOf( run ) );
    document.erase( "outcome" );
    document.erase( "errorDesc" );
    json& profile = document.at( "profile" );
    profile.erase( "validProfile" );
    profile.erase( "errorDesc" );
    profile.at( "mountGroup" ).erase( leftOutGroup );
    return document;
}

} // namespace

void checkAppendedMount( InputDirectory& directory, std::string_view name, std::string_view text ) {
    RunOptions options;
    options.addDefaults = false; // they come last, and would be the open group
    const auto before = run( directory.pathOf( name ), options );
    const auto after =
        run( directory.write( name, std::string( text ) + std::string( appendedLine ) ), options );
    require( after.handler->agentProfile().get() != nullptr,
             "a file stays an agent file when a line is appended", after.printed );
    const std::string open = before.handler->currMgName();
    require( documentWithout( before, open ) == documentWithout( after, open ),
             "an appended mount line changes its own group only", after.printed );
    require( after.outcome == Outcome::valid ||
                 ( after.outcome == Outcome::invalid && after.handler->errorDetails().place >= text.size() ),
             "what an appended mount line breaks lies behind the old end", after.printed );
}

} // namespace CorvidFuzz
