#pragma once

#include "Kiv/Export.h"

namespace Kiv {

/// Reports a failed assertion against a source ("ProfileParser/MountProfileHdlr") on standard error and stops
/// the process (SIGABRT).
/// @param text the asserted condition, usually joined by && to a quoted message.
[[noreturn]] KIV_API void assertionFailed( const char* source, const char* text, const char* file,
                                           unsigned line );

} // namespace Kiv

/// Guards against programming errors, in every build type; the text tells what was asserted. Compiled out,
/// condition and all, by KIV_NO_ASSERTIONS.
#ifdef KIV_NO_ASSERTIONS
#define KIV_ASSERT_TEXT( source, condition, text ) static_cast<void>( 0 )
#else
#define KIV_ASSERT_TEXT( source, condition, text )                                                           \
    ( ( condition ) ? static_cast<void>( 0 ) : ::Kiv::assertionFailed( source, text, __FILE__, __LINE__ ) )
#endif
/// The same with the condition itself as the text.
#define KIV_ASSERT( source, condition ) KIV_ASSERT_TEXT( source, condition, #condition )
