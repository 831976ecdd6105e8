#include "Cli/FilesRead.h"

#include "Cli/PrintableText.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace Corvid::Cli {

namespace {

[[noreturn]] void cannotWrite( const std::string& file, int error ) {
    throw std::runtime_error( file + ": " + std::strerror( error ) );
}

/// A name as make reads it in a rule.
std::string escapedName( const std::string& name, const std::string& depfile ) {
    if ( name.find( '\n' ) != std::string::npos )
        throw std::runtime_error( depfile +
                                  ": a file name with a line end cannot be part of a rule: " + name );
    std::string escaped;
    for ( const char c : name ) {
        if ( c == '$' )
            escaped += '$';
        else if ( std::string_view( " \t#:\\" ).find( c ) != std::string_view::npos )
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// A new file beside the one that it is to become. It goes with this object unless it has become that.
class Replacement {
  public:
    explicit Replacement( const std::string& file ) : file_( file ), name_( file + ".XXXXXX" ) {
        descriptor_ = ::mkstemp( name_.data() );
        if ( descriptor_ < 0 )
            cannotWrite( file, errno );
    }
    Replacement( const Replacement& ) = delete;
    Replacement& operator=( const Replacement& ) = delete;
    ~Replacement() {
        if ( descriptor_ >= 0 )
            ::close( descriptor_ );
        if ( !name_.empty() )
            ::unlink( name_.c_str() );
    }
    void write( std::string_view text ) {
        Output out( descriptor_ );
        out.append( text );
        out.flush();
        if ( out.failure() != 0 )
            cannotWrite( file_, out.failure() );
    }
    void takePlace() {
        const mode_t mask = ::umask( 0 );
        ::umask( mask );
        if ( ::fchmod( descriptor_, 0666 & ~mask ) != 0 || ::close( std::exchange( descriptor_, -1 ) ) != 0 ||
             ::rename( name_.c_str(), file_.c_str() ) != 0 )
            cannotWrite( file_, errno );
        name_.clear();
    }

  private:
    std::string file_;
    std::string name_;
    int descriptor_ = -1;
};

} // namespace

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

void FileList::writeDepfile( const std::string& depfile ) const {
    constexpr std::string_view suffix = ".d";
    std::string target = depfile;
    if ( target.ends_with( suffix ) && target.size() > suffix.size() )
        target.resize( target.size() - suffix.size() );
    std::string rule = escapedName( target, depfile ) + ":";
    for ( const std::string& name : names_ )
        rule += " \\\n  " + escapedName( name, depfile );
    Replacement file( depfile );
    file.write( rule + "\n" );
    file.takePlace();
}

} // namespace Corvid::Cli
