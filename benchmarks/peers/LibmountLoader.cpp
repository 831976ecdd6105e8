// none PATH TYPE FLAGS 0 0
#include "Loaders.h"

#include <libmount.h>

#include <stdexcept>

namespace Bench {

namespace {

template <class T, void ( *release )( T* )>
struct Release {
    void operator()( T* object ) const noexcept { release( object ); }
};
using Table = std::unique_ptr<libmnt_table, Release<libmnt_table, mnt_unref_table>>;
using Iterator = std::unique_ptr<libmnt_iter, Release<libmnt_iter, mnt_free_iter>>;

} // namespace

Loaded loadWithLibmount( const std::string& fileName ) {
    const Table table( mnt_new_table() );
    if ( !table || mnt_table_parse_file( table.get(), fileName.c_str() ) != 0 )
        throw std::runtime_error( "libmount cannot read " + fileName );
    const Iterator iterator( mnt_new_iter( MNT_ITER_FORWARD ) );
    RecordMap records;
    libmnt_fs* entry = nullptr;
    while ( mnt_table_next_fs( table.get(), iterator.get(), &entry ) == 0 )
        addRecord( records, mnt_fs_get_target( entry ), mnt_fs_get_fstype( entry ),
                   mnt_fs_get_options( entry ) );
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

} // namespace Bench
