#pragma once

#include "ProfileParser/GeneratedLexer.h"
#include "ProfileParser/GrammarSupport.h"
#include "ProfileParser/TokenScanner.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <antlr3.h>

namespace Corvid {

/// The parser's view of one file's tokens: those of the statement being read. Tokens are read when the parser
/// asks for them, and their room is used again as soon as a line has been read, because nothing looks back
/// across a line end.
///
/// It stands in for the parser library's token stream, which reads all tokens before the first is parsed and
/// keeps them to the end. One thing must not change by that: a lexer error anywhere in a file comes before
/// all errors that the parser or the handler finds in it. So whoever is about to look at the file's validity
/// calls `finishLexing` first.
class TokenWindow {
  public:
    /// @param hdlr receives the lexer's errors; outlives the window. @param text not copied; outlives the
    /// window.
    TokenWindow( MountProfileHdlr& hdlr, std::string fileName, std::string_view text );
    ~TokenWindow();
    TokenWindow( const TokenWindow& ) = delete;
    TokenWindow& operator=( const TokenWindow& ) = delete;

    /// A token stream of the parser library that is served from here; not usable without the window.
    [[nodiscard]] pANTLR3_COMMON_TOKEN_STREAM tokenStream() const noexcept { return stream_.get(); }

    /// Reports all lexer errors that are left in the file, without moving the parser.
    void finishLexing();

    // What the generated parser does all the time, inline.

    /// The k-th token from the current one on, which is the first; −1 is the token before it.
    [[nodiscard]] pANTLR3_COMMON_TOKEN token( int k ) {
        if ( k < 0 )
            return current_ == 0 ? nullptr : slots_[current_ - 1];
        const std::size_t slot = current_ + static_cast<std::size_t>( k ) - 1;
        if ( slot >= filled_ ) [[unlikely]]
            fill( slot + 1 );
        return slots_[slot];
    }
    [[nodiscard]] ANTLR3_UINT32 type( int k ) { return token( k )->type; }

    /// Steps over the current token; stays at the end of input.
    void consume() {
        if ( type( 1 ) != ANTLR3_TOKEN_EOF )
            ++current_;
    }

    /// Steps over the current token if it is of that type. @return the token, or null.
    [[nodiscard]] pANTLR3_COMMON_TOKEN matched( ANTLR3_UINT32 expected ) {
        const pANTLR3_COMMON_TOKEN at = token( 1 );
        if ( at->type != expected )
            return nullptr;
        if ( expected != ANTLR3_TOKEN_EOF )
            ++current_;
        return at;
    }
    /// To be called when a line end has been matched: forgets the line.
    void lineIsRead() noexcept {
        if ( current_ == filled_ ) // else the parser has looked ahead already; the next line end will do
            forgetReadTokens();
    }

    // By number, as the parser library addresses tokens.
    [[nodiscard]] ANTLR3_MARKER index() const noexcept {
        return static_cast<ANTLR3_MARKER>( forgotten_ + current_ );
    }
    void indexIs( ANTLR3_MARKER index ) noexcept {
        current_ = static_cast<std::size_t>( index ) - forgotten_;
    }
    /// @param index of a token of the current statement.
    [[nodiscard]] pANTLR3_COMMON_TOKEN tokenAt( ANTLR3_MARKER index ) const noexcept {
        return slots_[static_cast<std::size_t>( index ) - forgotten_];
    }

  private:
    enum class Phase { inFile, atAppendedLineEnd, atEnd };

    void fill( std::size_t slots );
    void addBlock();
    void forgetReadTokens() noexcept;
    void readLine();
    bool readWithLexer( ANTLR3_COMMON_TOKEN& token );
    [[nodiscard]] GeneratedLexer& lexer();

    static constexpr std::size_t blockSize = 32; // more than most statements have tokens

    MountProfileHdlr& hdlr_;
    std::string fileName_;
    std::string_view text_;
    TokenScanner scanner_;
    Phase phase_ = Phase::inFile;
    bool lexingIsFinished_ = false;
    std::unique_ptr<GeneratedLexer> lexer_; ///< made when the scanner cannot go on

    /// What the slots point to: tokens must not move.
    std::vector<std::unique_ptr<ANTLR3_COMMON_TOKEN[]>> blocks_;
    std::vector<pANTLR3_COMMON_TOKEN> slots_;
    std::size_t current_ = 0;   ///< slot of the current token
    std::size_t filled_ = 0;    ///< number of slots that hold tokens
    std::size_t forgotten_ = 0; ///< number of tokens before the first slot

    ANTLR3_COMMON_TOKEN endOfInput_{};
    /// Tokens name an input stream; the library only asks it for its file name.
    ANTLR3_INPUT_STREAM nowhere_{};
    ANTLR3_TOKEN_SOURCE source_{};
    Owner<ANTLR3_COMMON_TOKEN_STREAM> stream_;
};

} // namespace Corvid
