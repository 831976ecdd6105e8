#pragma once

#include "ProfileParser/Owner.h"
#include "ProfileParser/TokenScanner.h"

#include <string>
#include <string_view>

#include <antlr3.h>

struct mountProfileLexer_Ctx_struct;

namespace Corvid {

class MountProfileHdlr;

/// The generated lexer over one file, wired to a handler, which receives its errors.
///
/// The lexer reads the file and then a blank and a newline, which stand in a stream of their own below the
/// file's: so the last line of every file ends in a newline token, and no token spans the end of the file.
class GeneratedLexer {
  public:
    /// @param hdlr outlives the lexer. @param text not copied; outlives the lexer.
    /// @throws std::bad_alloc when the parser library could not make one of the parts.
    GeneratedLexer( MountProfileHdlr& hdlr, const std::string& fileName, std::string_view text );
    ~GeneratedLexer();
    GeneratedLexer( const GeneratedLexer& ) = delete;
    GeneratedLexer& operator=( const GeneratedLexer& ) = delete;

    [[nodiscard]] pANTLR3_TOKEN_SOURCE tokenSource() const noexcept;
    /// The next token; an end-of-input token at the end. Errors on the way are reported.
    [[nodiscard]] pANTLR3_COMMON_TOKEN nextToken();

    /// Where the lexer is in the file's text.
    [[nodiscard]] TokenScanner::Place place() const noexcept;
    void placeIs( const TokenScanner::Place& place ) noexcept;
    /// Whether the file's text is used up and the appended line end is, or was, read.
    [[nodiscard]] bool isPastFile() const noexcept;
    /// Goes back from the appended line end to the file's text. To be followed by `placeIs`.
    void returnToFile();
    /// Gives the room of all tokens so far back for the next one.
    void forgetTokens() noexcept;
    /// From now on errors are dropped unseen and uncounted.
    void silence() noexcept;

  private:
    // Tokens die with the lexer, file names with the streams: destroyed from the last to the first.
    Owner<ANTLR3_INPUT_STREAM> newline_;
    Owner<ANTLR3_INPUT_STREAM> file_;
    Owner<mountProfileLexer_Ctx_struct> lexer_;
};

} // namespace Corvid
