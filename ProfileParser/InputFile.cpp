#include "ProfileParser/InputFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Corvid {

namespace {

class Descriptor {
  public:
    explicit Descriptor( int number ) noexcept : number_( number ) {}
    Descriptor( const Descriptor& ) = delete;
    Descriptor& operator=( const Descriptor& ) = delete;
    ~Descriptor() {
        if ( number_ >= 0 )
            ::close( number_ );
    }
    [[nodiscard]] int number() const noexcept { return number_; }

  private:
    int number_;
};

/// Reads until the buffer is full or the file ends. @return the bytes read, or nothing on a read error.
std::optional<std::size_t> readFully( int descriptor, char* buffer, std::size_t size ) {
    std::size_t done = 0;
    while ( done < size ) {
        const ssize_t count = ::read( descriptor, buffer + done, size - done );
        if ( count == 0 )
            break;
        if ( count < 0 && errno != EINTR )
            return std::nullopt;
        if ( count > 0 )
            done += static_cast<std::size_t>( count );
    }
    return done;
}

bool sameContent( const struct stat& before, const struct stat& after ) {
    return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

} // namespace

std::optional<InputFile> readInputFile( const std::string& fileName, std::size_t maxSize ) {
    if ( fileName.find( '\0' ) != std::string::npos ) // the system call would open what stands before it
        return std::nullopt;
    // Without O_NONBLOCK the open itself would wait for a FIFO's writer.
    const Descriptor file( ::open( fileName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY ) );
    struct stat before {};
    if ( file.number() < 0 || ::fstat( file.number(), &before ) != 0 || !S_ISREG( before.st_mode ) )
        return std::nullopt;
    const auto size = static_cast<std::size_t>( before.st_size );
    if ( size > maxSize )
        return std::nullopt;
    // One byte more than expected, to notice a file that has grown.
    InputFile content{ std::make_unique_for_overwrite<char[]>( size + 1 ), size };
    if ( readFully( file.number(), content.data.get(), size + 1 ) != size )
        return std::nullopt;
    struct stat after {};
    if ( ::fstat( file.number(), &after ) != 0 || !sameContent( before, after ) )
        return std::nullopt;
    content.data[size] = '\0';
    return content;
}

std::optional<InputFile> givenInput( std::string_view text, std::size_t maxSize ) {
    if ( text.size() > maxSize )
        return std::nullopt;
    InputFile content{ std::make_unique_for_overwrite<char[]>( text.size() + 1 ), text.size() };
    std::ranges::copy( text, content.data.get() );
    content.data[text.size()] = '\0';
    return content;
}

} // namespace Corvid
