#pragma once

#include "ProfileParser/InputFile.h"

#include <memory>
#include <string>

#include <antlr3.h>

struct mountProfileLexer_Ctx_struct;
struct mountProfileParser_Ctx_struct;

namespace Corvid {

class MountProfileHdlr;

/// Streams, lexer, token stream and parser of one file, wired to a handler; frees them all.
///
/// The lexer reads the file and then a blank and a newline, which stand in a stream of their own below the file's: so
/// the last line of every file ends in a newline token, and no token spans the end of the file.
class ParseSession {
  public:
    /// @param hdlr receives what is parsed; outlives the session.
    /// @throws std::bad_alloc when the parser library could not make one of the parts.
    ParseSession( MountProfileHdlr& hdlr, const std::string& fileName, InputFile file );
    ~ParseSession();
    ParseSession( const ParseSession& ) = delete;
    ParseSession& operator=( const ParseSession& ) = delete;

    [[nodiscard]] mountProfileParser_Ctx_struct* parser() const noexcept { return parser_.get(); }
    /// The next token of the lexer; of use only without a parse.
    [[nodiscard]] pANTLR3_COMMON_TOKEN nextToken();

    /// Runs the start rule. Syntax errors are in the handler afterwards; what its operations throw passes through.
    void parse( bool isInclude );

  private:
    template <class T>
    struct Free {
        void operator()( T* part ) const noexcept { part->free( part ); }
    };
    template <class T>
    using Owner = std::unique_ptr<T, Free<T>>;

    // Tokens and texts die with the lexer, file names with the streams: destroyed from the last to the first.
    InputFile file_;
    Owner<ANTLR3_INPUT_STREAM> newline_;
    Owner<ANTLR3_INPUT_STREAM> input_;
    Owner<mountProfileLexer_Ctx_struct> lexer_;
    Owner<ANTLR3_COMMON_TOKEN_STREAM> tokens_;
    Owner<mountProfileParser_Ctx_struct> parser_;
};

} // namespace Corvid
