// Any bytes as an agent file that lies alone in its directory.

#include "AppendedMountLaw.h"
#include "InputDirectory.h"
#include "Laws.h"

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size ) {
    using namespace CorvidFuzz;
    static InputDirectory directory;
    const std::string_view text = textOf( data, size );
    const std::string agentFile = directory.write( "agent", text );
    RunOptions options;
    options.addDefaults = size % 8 == 0; // they take most of the time
    const auto run = checkedRun( agentFile, { { agentFile, text } }, options );
    if ( run.outcome == Corvid::Outcome::valid && isOneOf( 4, text ) )
        checkAppendedMount( directory, "agent", text );
    return 0;
}
