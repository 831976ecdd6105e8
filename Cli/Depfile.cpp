#include "Cli/Depfile.h"

#include "Cli/Output.h"
#include "Cli/PrintableText.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Corvid::Cli {

namespace {

[[noreturn]] void cannotWrite( const std::string& file, int error ) {
    throw std::runtime_error( file + ": " + std::strerror( error ) );
}

bool isOneOf( char c, std::string_view characters ) {
    return characters.find( c ) != std::string_view::npos;
}

constexpr std::string_view escapedWithBackslash = " #:";

/// Whether make and ninja take a byte for part of a name, if it is escaped where it has to be. Make takes
/// some others for a pattern, a variable or a recipe; ninja ends the name there.
bool canBePartOfName( char c ) {
    return ( c >= '0' && c <= '9' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= 'a' && c <= 'z' ) ||
           static_cast<unsigned char>( c ) >= 0x80 || isOneOf( c, "!$%()+,-./@\\]_{}~" ) ||
           isOneOf( c, escapedWithBackslash );
}

/// Whether make and ninja take a name in a rule for that name.
bool canBePartOfRule( const std::string& name ) {
    if ( !std::ranges::all_of( name, canBePartOfName ) )
        return false;
    for ( std::size_t at = name.find( '\\' ); at < name.size(); at = name.find( '\\', at + 1 ) )
        if ( at + 1 == name.size() || isOneOf( name[at + 1], escapedWithBackslash ) )
            return false; // the backslash would escape what follows, or the two differ about it
    const bool isHome = name.starts_with( '~' );
    const bool isMemberOfArchive = name.ends_with( ')' );
    const bool endsWithLoss = name.ends_with( ' ' ) || name.ends_with( ':' );
    return !isHome && !isMemberOfArchive && !endsWithLoss;
}

std::string escapedName( const std::string& name, const std::string& depfile ) {
    if ( !canBePartOfRule( name ) )
        throw std::runtime_error( depfile +
                                  ": this name cannot be part of a rule that make and ninja read: " + name );
    std::string escaped;
    for ( const char c : name ) {
        if ( isOneOf( c, escapedWithBackslash ) )
            escaped += '\\';
        else if ( c == '$' )
            escaped += '$';
        escaped += c;
    }
    return escaped;
}

std::string targetOf( const std::string& depfile ) {
    constexpr std::string_view suffix = ".d";
    const bool hasSuffix = depfile.ends_with( suffix ) && depfile.size() > suffix.size();
    return hasSuffix ? depfile.substr( 0, depfile.size() - suffix.size() ) : depfile;
}

std::string escapedTarget( const std::string& depfile ) {
    const std::string target = targetOf( depfile );
    if ( target.find( '%' ) != std::string::npos )
        throw std::runtime_error( depfile + ": make takes a target with '%' for a pattern" );
    return escapedName( target, depfile );
}

/// An open file; closed with this object at the latest.
class OpenFile {
  public:
    explicit OpenFile( int descriptor ) : descriptor_( descriptor ) {}
    OpenFile( const OpenFile& ) = delete;
    OpenFile& operator=( const OpenFile& ) = delete;
    ~OpenFile() {
        if ( isOpen() )
            ::close( descriptor_ );
    }
    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int descriptor() const { return descriptor_; }
    /// @throws std::runtime_error when that fails, or closing it after that.
    void writeAll( const std::string& name, std::string_view text ) {
        Output out( descriptor_ );
        out.append( text );
        out.flush();
        if ( out.failure() != 0 )
            cannotWrite( name, out.failure() );
        if ( ::close( std::exchange( descriptor_, -1 ) ) != 0 )
            cannotWrite( name, errno );
    }

  private:
    int descriptor_;
};

/// A new file beside the one that it is to become. It goes with this object unless it has become that.
class Replacement {
  public:
    explicit Replacement( const std::string& file )
        : file_( file ), name_( file + ".XXXXXX" ), open_( ::mkstemp( name_.data() ) ) {
        if ( !open_.isOpen() )
            cannotWrite( file, errno );
    }
    Replacement( const Replacement& ) = delete;
    Replacement& operator=( const Replacement& ) = delete;
    ~Replacement() {
        if ( !name_.empty() )
            ::unlink( name_.c_str() );
    }
    void takePlace( std::string_view text, mode_t mode ) {
        if ( ::fchmod( open_.descriptor(), mode ) != 0 )
            cannotWrite( file_, errno );
        open_.writeAll( file_, text );
        if ( ::rename( name_.c_str(), file_.c_str() ) != 0 )
            cannotWrite( file_, errno );
        name_.clear();
    }

  private:
    std::string file_;
    std::string name_;
    OpenFile open_;
};

mode_t modeOfNewFiles() {
    const mode_t mask = ::umask( 0 );
    ::umask( mask );
    return 0666 & ~mask;
}

bool isRuleOf( const std::string& target, const std::string& file ) {
    std::ifstream stream( file, std::ios::binary );
    std::string begin( target.size() + 4, '\0' );
    stream.read( begin.data(), static_cast<std::streamsize>( begin.size() ) );
    begin.resize( static_cast<std::size_t>( stream.gcount() ) );
    const std::string withoutFiles = target + ":\n";
    const std::string withFiles = target + ": \\\n";
    return begin.starts_with( withoutFiles ) || begin == withFiles;
}

/// Whether two names lead to one file that exists.
bool isSameFile( const std::string& name, const std::string& other ) {
    std::error_code ignored; // what does not exist is not the same
    return std::filesystem::equivalent( name, other, ignored );
}

/// The file that a name leads to; that need not exist.
std::filesystem::path behindLinks( std::filesystem::path file ) {
    while ( std::filesystem::is_symlink( file ) )
        file = file.parent_path() / std::filesystem::read_symlink( file );
    return file;
}

} // namespace

void writeDepfile( const std::string& depfile, const std::vector<std::string>& files ) {
    const std::string target = escapedTarget( depfile );
    std::string rule = target + ":";
    for ( const std::string& file : files )
        if ( !isSameFile( file, depfile ) && !isSameFile( file, targetOf( depfile ) ) )
            rule += " \\\n  " + escapedName( file, depfile );
    rule += "\n";

    OpenFile existing( ::open( depfile.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY ) );
    const bool exists = existing.isOpen();
    struct stat status {};
    if ( exists ? ::fstat( existing.descriptor(), &status ) != 0 : errno != ENOENT )
        cannotWrite( depfile, errno );
    if ( exists && !S_ISREG( status.st_mode ) )
        return existing.writeAll( depfile, rule );
    if ( exists && status.st_size != 0 && !isRuleOf( target, depfile ) )
        throw std::runtime_error( depfile + ": holds something else than a rule of " + target +
                                  ", and stays as it is" );
    Replacement( behindLinks( depfile ) )
        .takePlace( rule, exists ? status.st_mode & 07777 : modeOfNewFiles() );
}

} // namespace Corvid::Cli
