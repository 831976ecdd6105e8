#include "Cli/CapturedErrors.h"

#include <iostream>
#include <mutex>
#include <streambuf>
#include <utility>

namespace Corvid::Cli {

namespace {

thread_local std::string* collected = nullptr;

} // namespace

/// Keeps no characters of its own, so that threads share nothing but the stream behind it.
class CapturedErrors::Buffer : public std::streambuf {
  public:
    explicit Buffer( std::ostream& stream )
        : stream_( stream ), behind_( stream.rdbuf( this ) ), tied_( stream.tie( nullptr ) ),
          exceptions_( stream.exceptions() ) {
        // A stream keeps exceptions to itself: no memory for a text would go unnoticed.
        stream_.exceptions( std::ios::badbit );
    }
    ~Buffer() override {
        stream_.clear();
        stream_.exceptions( exceptions_ );
        stream_.rdbuf( behind_ );
        stream_.tie( tied_ );
    }

  protected:
    int_type overflow( int_type c ) override {
        const char character = traits_type::to_char_type( c );
        return xsputn( &character, 1 ) == 1 ? c : traits_type::eof();
    }
    std::streamsize xsputn( const char* text, std::streamsize count ) override {
        if ( collected ) {
            collected->append( text, static_cast<std::size_t>( count ) );
            return count;
        }
        const std::lock_guard lock( mutex_ );
        return behind_->sputn( text, count );
    }
    int sync() override {
        if ( collected )
            return 0;
        const std::lock_guard lock( mutex_ );
        return behind_->pubsync();
    }

  private:
    std::ostream& stream_;
    std::streambuf* behind_;
    std::ostream* tied_; // a tied stream would be flushed by every thread that writes
    std::ios::iostate exceptions_;
    std::mutex mutex_;
};

CapturedErrors::CapturedErrors() : buffer_( std::make_unique<Buffer>( std::cerr ) ) {}
CapturedErrors::~CapturedErrors() = default;

CapturedErrors::Collector::Collector() : outer_( std::exchange( collected, &text_ ) ) {}
CapturedErrors::Collector::~Collector() {
    collected = outer_;
}

} // namespace Corvid::Cli
