#pragma once

#include "cli/CommandTest.h"

namespace Corvid::Testing {

/// Asks the command for hints.
class HintsTest : public CommandTest {
  protected:
    /// The hint that is shown for an agent file; empty when there is none.
    [[nodiscard]] std::string hintFor( const std::string& agent ) const {
        write( "agent", agent );
        const auto result = run( { "check", "agent" } );
        EXPECT_NE( result.exitStatus, 0 ) << agent;
        constexpr std::string_view mark = "      = hint: ";
        const auto at = result.err.find( mark );
        if ( at == std::string::npos )
            return {};
        const auto begin = at + mark.size();
        return result.err.substr( begin, result.err.find( '\n', begin ) - begin );
    }
};

struct HintRow {
    std::string lines; ///< below the title line
    std::string hint;
};

} // namespace Corvid::Testing
