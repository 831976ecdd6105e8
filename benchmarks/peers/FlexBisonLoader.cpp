#include "Loaders.h"

extern "C" {
#include "MountLines.tab.h"
#define YYSTYPE MOUNTLINESSTYPE
#include "MountLines.yy.h"
}

#include <stdexcept>

namespace {

std::string_view view( MountLinesText text ) {
    return { text.start, text.end };
}

} // namespace

void mountLinesAdd( void* records, MountLinesText path, MountLinesText type, MountLinesText flags ) {
    Bench::addRecord( *static_cast<Bench::RecordMap*>( records ), view( path ), view( type ), view( flags ) );
}

namespace Bench {

Loaded loadWithFlexBison( const std::string& fileName ) {
    std::string text = wholeFile( fileName );
    text.append( 2, '\0' ); // how the scanner knows a buffer's end
    RecordMap records;
    MountLinesState state{ &records, nullptr };
    yyscan_t scanner = nullptr;
    if ( mountLineslex_init_extra( &state, &scanner ) != 0 )
        throw std::bad_alloc();
    mountLines_scan_buffer( text.data(), text.size(), scanner );
    const int failed = mountLinesparse( scanner, &state );
    mountLineslex_destroy( scanner );
    if ( failed != 0 )
        throw std::runtime_error( state.error ? state.error : "out of memory" );
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

} // namespace Bench
