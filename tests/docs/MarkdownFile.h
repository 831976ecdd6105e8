#pragma once

#include <string>
#include <vector>

namespace CorvidTest {

/// A fenced block of a document.
struct MarkdownBlock {
    std::string language; ///< the first word behind the fence
    std::string info;     ///< what follows that word
    std::string text;     ///< with a newline at the end of every line
    std::string section;  ///< the nearest heading above
    unsigned line = 0;    ///< the line of the opening fence, from 1
};

/// A link outside of fenced blocks and inline code: `[text](target)`.
struct MarkdownLink {
    std::string target;
    unsigned line = 0;
};

/// What tests want to know of a document.
class MarkdownFile {
  public:
    /// @param name path below the source tree. @throws std::runtime_error when the file cannot be read, or
    /// when a fence in it is never closed.
    explicit MarkdownFile( const std::string& name );

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::vector<MarkdownBlock>& blocks() const { return blocks_; }
    [[nodiscard]] const std::vector<MarkdownLink>& links() const { return links_; }
    /// The texts of the headings of all levels, inline code marks included.
    [[nodiscard]] const std::vector<std::string>& headings() const { return headings_; }
    /// What can stand behind a `#` in links to this file.
    [[nodiscard]] std::vector<std::string> anchors() const;

  private:
    void readText( const std::string& line, unsigned number );

    std::string name_;
    std::vector<MarkdownBlock> blocks_;
    std::vector<MarkdownLink> links_;
    std::vector<std::string> headings_;
};

/// The absolute path of something in the source tree.
[[nodiscard]] std::string sourcePath( const std::string& name );
/// @throws std::runtime_error when it cannot be read.
[[nodiscard]] std::string contentOf( const std::string& path );

} // namespace CorvidTest
