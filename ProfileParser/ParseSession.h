#pragma once

#include "ProfileParser/GeneratedLexer.h"
#include "ProfileParser/InputFile.h"
#include "ProfileParser/Owner.h"
#include "ProfileParser/TokenWindow.h"

#include <optional>
#include <string>

#include <antlr3.h>

struct mountProfileParser_Ctx_struct;

namespace Corvid {

class MountProfileHdlr;

/// Where the parser's tokens come from: the same tokens either way.
enum class TokenPath {
    fast, ///< TokenWindow: plain tokens without the generated lexer, and only those of the current line kept
    plain ///< the generated lexer and the parser library's token stream alone
};

/// Lexer, token stream and parser of one file, wired to a handler; frees them all.
class ParseSession {
  public:
    /// @param hdlr receives what is parsed; outlives the session.
    /// @throws std::bad_alloc when the parser library could not make one of the parts.
    ParseSession( MountProfileHdlr& hdlr, const std::string& fileName, InputFile file, TokenPath tokenPath );
    ~ParseSession();
    ParseSession( const ParseSession& ) = delete;
    ParseSession& operator=( const ParseSession& ) = delete;

    [[nodiscard]] mountProfileParser_Ctx_struct* parser() const noexcept { return parser_.get(); }

    /// Reads the first tokens, before any rule is called. Reports lexer errors that it meets.
    void begin();
    /// Begins, and runs the start rule. Syntax errors are in the handler afterwards; what its operations
    /// throw passes through.
    void parse( bool isInclude );

  private:
    // Tokens and texts die with the lexer: destroyed from the last to the first.
    InputFile file_;
    std::optional<TokenWindow> window_;
    std::optional<GeneratedLexer> lexer_;
    Owner<ANTLR3_COMMON_TOKEN_STREAM> plainTokens_;
    MountLine line_;
    Owner<mountProfileParser_Ctx_struct> parser_;
};

} // namespace Corvid
