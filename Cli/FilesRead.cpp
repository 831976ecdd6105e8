#include "Cli/FilesRead.h"

#include "Cli/PrintableText.h"

namespace Corvid::Cli {

void FilesRead::fileRead( std::string_view fileName, bool /*isInclude*/ ) {
    names_.emplace_back( fileName );
}

void FileList::add( const std::vector<std::string>& names ) {
    for ( const std::string& name : names )
        if ( known_.insert( name ).second )
            names_.push_back( name );
}

void FileList::write( Output& out ) const {
    for ( const std::string& name : names_ )
        out.append( printable( name ) + "\n" );
}

} // namespace Corvid::Cli
