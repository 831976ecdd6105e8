#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace CorvidTest {

/// A directory of its own for one test; gone with all its files when the test is over.
class TempDir {
  public:
    TempDir() {
        std::string pattern = ( std::filesystem::temp_directory_path() / "corvid-test-XXXXXX" ).string();
        if ( !::mkdtemp( pattern.data() ) )
            throw std::runtime_error( "cannot make a directory like " + pattern );
        path_ = pattern;
    }
    TempDir( const TempDir& ) = delete;
    TempDir& operator=( const TempDir& ) = delete;
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all( path_, ignored );
    }

    /// Without a slash at its end.
    [[nodiscard]] const std::string& path() const { return path_; }

    /// Writes a file, byte by byte as given. @return its path.
    std::string file( const std::string& name, std::string_view text ) const {
        std::string path = path_ + "/" + name;
        std::ofstream out( path, std::ios::binary );
        out.write( text.data(), static_cast<std::streamsize>( text.size() ) );
        out.close();
        if ( !out )
            throw std::runtime_error( "cannot write " + path );
        return path;
    }

  private:
    std::string path_;
};

} // namespace CorvidTest
