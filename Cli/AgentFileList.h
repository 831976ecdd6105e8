#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Corvid::Cli {

/// One file to be checked.
struct ListedFile {
    std::string path;
    bool fromDirectory = false;           ///< found in a directory, not named by the user
    std::string problem;                  ///< for people: why nothing of that path could be read; else empty
    std::optional<std::string> text = {}; ///< what is taken for the file's text, if not what it holds
};

/// The files that paths stand for, in the order of the paths. A directory stands for the regular files in it
/// and below, byte-wise by path; links to files count as files, links to directories inside it are not
/// followed. A path that is no directory stands for itself, whether it exists or not.
[[nodiscard]] std::vector<ListedFile> listFiles( const std::vector<std::string>& paths );

} // namespace Corvid::Cli
