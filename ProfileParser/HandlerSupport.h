#pragma once

#include "Kiv/Assert.h"
#include "Kiv/TraceHandle.h"

#include <string_view>

namespace Corvid {

struct AntlrParserCtx;

/// Gives the handler exception just raised the range of a text of the statement.
/// @param behind the texts of the tokens that stand behind it, joined.
void pointExceptionAt( AntlrParserCtx& parserCtx, std::string_view text, std::string_view behind );
void pointExceptionAtLastToken( AntlrParserCtx& parserCtx );

/// The one trace facility of the handler. Level 0: outcome of a run; 1: errors; 8: entry of the larger
/// operations.
Kiv::TraceHandle& handlerTrace();

} // namespace Corvid

#define HDLR_TRACE( level, text ) KIV_TRACE( ::Corvid::handlerTrace(), level, text )
/// The texts are literals, because they are output: names of members and formatting must not change them.
#define HDLR_ASSERT( condition, text ) KIV_ASSERT_TEXT( "ProfileParser/MountProfileHdlr", condition, text )
