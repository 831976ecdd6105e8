#pragma once

#include <memory>
#include <string>

namespace Corvid::Cli {

/// The library prints on `std::cerr`, which all threads share. While this object lives, what a thread writes
/// there goes to that thread's Collector, if it has one, and to where it went before otherwise. One at a
/// time, made and destroyed while no other thread writes.
class CapturedErrors {
  public:
    CapturedErrors();
    CapturedErrors( const CapturedErrors& ) = delete;
    CapturedErrors& operator=( const CapturedErrors& ) = delete;
    ~CapturedErrors();

    /// Collects what the thread that made it writes to `std::cerr`, while it lives. Collectors nest.
    class Collector {
      public:
        Collector();
        Collector( const Collector& ) = delete;
        Collector& operator=( const Collector& ) = delete;
        ~Collector();

        [[nodiscard]] const std::string& text() const noexcept { return text_; }

      private:
        std::string text_;
        std::string* outer_;
    };

  private:
    class Buffer;
    std::unique_ptr<Buffer> buffer_;
};

} // namespace Corvid::Cli
