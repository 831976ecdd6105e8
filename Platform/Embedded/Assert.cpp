#include "Kiv/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace Kiv {

void assertionFailed( const char* source, const char* text, const char* file, unsigned line ) {
    std::fprintf( stderr, "%s: assertion failed: %s (%s:%u)\n", source, text, file, line );
    std::fflush( stderr );
    std::abort();
}

} // namespace Kiv
