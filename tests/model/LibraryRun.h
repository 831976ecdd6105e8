#pragma once

#include "model/Case.h"
#include "model/ModelLexer.h"
#include "model/Outcome.h"

#include <filesystem>

namespace Model {

/// A temporary directory in which the library handles cases, one after the other.
class LibraryRun {
  public:
    LibraryRun();
    LibraryRun( const LibraryRun& ) = delete;
    LibraryRun& operator=( const LibraryRun& ) = delete;
    ~LibraryRun();

    /// What stands in front of the names of a case's files; empty for bare names.
    [[nodiscard]] std::string directory( const Case& input ) const;

    /// Lays the case's files out in place of those of the case before, and runs the handler.
    [[nodiscard]] Outcome run( const Case& input );
    /// The tokens of one of the files that `run` laid out.
    [[nodiscard]] Lexed tokens( const std::string& name ) const;

  private:
    void layOut( const Case& input );

    std::filesystem::path directory_;
    std::vector<std::filesystem::path> made_;
};

} // namespace Model
