#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace CorvidFuzz {

/// A temporary directory for the files of one input after the other; below TMPDIR, which should lie in
/// memory.
class InputDirectory {
  public:
    InputDirectory();
    InputDirectory( const InputDirectory& ) = delete;
    InputDirectory& operator=( const InputDirectory& ) = delete;
    ~InputDirectory();

    [[nodiscard]] std::string pathOf( std::string_view name ) const { return path_ + std::string( name ); }
    /// Writes a file, in place of one of that name. @return its path.
    std::string write( std::string_view name, std::string_view text );
    /// Removes all files but one.
    void removeAllBut( std::string_view name );

  private:
    std::string path_; ///< with a slash at its end
    std::vector<std::string> written_;
};

} // namespace CorvidFuzz
