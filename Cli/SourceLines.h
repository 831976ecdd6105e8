#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

/// The lines of files by their numbers; each file is read once, when it is first asked for.
class SourceLines {
  public:
    /// The line, from 1, without its line end; empty when there is no such line, or no such file any more.
    [[nodiscard]] std::string_view line( const std::string& fileName, std::uint32_t number );

  private:
    struct File {
        std::string content;
        std::vector<std::size_t> starts; ///< of the lines
    };
    [[nodiscard]] static File read( const std::string& fileName );

    std::map<std::string, File> files_;
};

} // namespace Corvid::Cli
