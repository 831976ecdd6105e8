#pragma once

#include "ProfileParser/GeneratedLexer.h"
#include "ProfileParser/GrammarSupport.h"
#include "ProfileParser/TokenScanner.h"

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
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

    /// Reports the first lexer error that is left in the file, unless the handler has an error already,
    /// without moving the parser.
    void finishLexing();

    /// Reads the first tokens. To be called once, before the window is asked for tokens.
    void begin() { readOn( false ); }

    // What the generated parser does all the time, inline.

    [[nodiscard]] pANTLR3_COMMON_TOKEN current() const noexcept { return at_; }
    /// The token before the current one; something without meaning before the first.
    [[nodiscard]] pANTLR3_COMMON_TOKEN previous() const noexcept { return at_ - 1; }
    /// Steps over the current token, which must not be the end of input.
    /// @param lineIsRead whether nobody will look at the tokens so far again, but at the last one.
    void step( bool lineIsRead ) {
        if ( ++at_ == readEnd_ )
            readOn( lineIsRead );
    }

    /// The k-th token from the current one on, which is the first; the −k-th before it for a negative k, null
    /// when there is none or it has been forgotten.
    [[nodiscard]] pANTLR3_COMMON_TOKEN token( int k ) {
        return k > 0 && k <= readEnd_ - at_ ? at_ + k - 1 : tokenElsewhere( k );
    }
    /// Steps over the current token; stays at the end of input.
    void consume() {
        if ( at_->type != ANTLR3_TOKEN_EOF )
            step( false );
    }

    // By number, as the parser library addresses tokens.
    [[nodiscard]] ANTLR3_MARKER index() const noexcept {
        return static_cast<ANTLR3_MARKER>( forgotten_ + slotOfCurrent() );
    }
    void indexIs( ANTLR3_MARKER index ) noexcept {
        currentIs( static_cast<std::size_t>( index ) - forgotten_ );
    }
    /// The number of the current token, to which `rewind` goes back.
    [[nodiscard]] ANTLR3_MARKER mark() noexcept {
        ++marks_;
        return index();
    }
    void rewind( ANTLR3_MARKER index ) noexcept {
        --marks_;
        indexIs( index );
    }

    /// Whether the current token's room will be used again within its line: then `kept` is to be asked for
    /// tokens that are looked at later.
    [[nodiscard]] bool isInLongLine() const noexcept { return block_ >= firstReused; }
    /// A copy of a token. @param place in the parser that remembers the token; it forgets the one before.
    using KeptPlace = std::tuple<ANTLR3_UINT32, const void*, int>;
    [[nodiscard]] pANTLR3_COMMON_TOKEN kept( const ANTLR3_COMMON_TOKEN& token, const KeptPlace& place );

    /// Whether tokens of the current statement are known to stand side by side in the file: then their joined
    /// text is a piece of it. Not known of tokens that are in several blocks.
    [[nodiscard]] bool areAdjacent( pANTLR3_COMMON_TOKEN first, pANTLR3_COMMON_TOKEN last ) const noexcept {
        constexpr std::less<> isBefore;
        if ( isBefore( first, blockStart_ ) || isBefore( last, first ) || isBefore( at_, last ) ) [[unlikely]]
            return false;
        while ( first != last && first[1].start == first->stop + 1 )
            ++first;
        return first == last;
    }
    /// Appends the texts of the tokens from first to last, which are of the current statement.
    void appendTexts( std::string& text, pANTLR3_COMMON_TOKEN first, pANTLR3_COMMON_TOKEN last ) const;

  private:
    enum class Phase { inFile, atAppendedLineEnd, atEnd };

    static constexpr std::size_t blockSize = 32; // more than most statements have tokens
    // A line of more blocks is not written by people. It goes through the last two of them in turn, and only
    // the texts of their tokens are kept: a token takes more than 250 bytes.
    static constexpr std::size_t mostBlocks = 256;
    static constexpr std::size_t firstReused = mostBlocks - 2;

    /// Tokens side by side, the first being a copy of the one before. They must not move while a statement is
    /// read, so there are more blocks for longer ones.
    using Block = std::array<ANTLR3_COMMON_TOKEN, 1 + blockSize>;

    void readOn( bool lineIsRead );
    [[nodiscard]] pANTLR3_COMMON_TOKEN tokenElsewhere( int k );
    [[nodiscard]] pANTLR3_COMMON_TOKEN tokenBefore( std::size_t distance ) const noexcept;
    void readLine();
    void readOther( ANTLR3_COMMON_TOKEN& token );
    bool readWithLexer( ANTLR3_COMMON_TOKEN& token );
    [[nodiscard]] GeneratedLexer& lexer();
    void addBlock();
    void makeRoom();
    [[nodiscard]] std::string_view textOf( std::size_t number ) const;
    [[nodiscard]] pANTLR3_COMMON_TOKEN at( std::size_t slot ) const noexcept {
        return &( *blocks_[slot / blockSize] )[1 + slot % blockSize];
    }
    [[nodiscard]] std::size_t slotOfCurrent() const noexcept {
        return block_ * blockSize + static_cast<std::size_t>( at_ - blockStart_ );
    }
    void currentIs( std::size_t slot ) noexcept;

    pANTLR3_COMMON_TOKEN at_ = nullptr;         ///< the current token
    pANTLR3_COMMON_TOKEN readEnd_ = nullptr;    ///< behind the last token of its block that has been read
    pANTLR3_COMMON_TOKEN blockStart_ = nullptr; ///< the first token of its block
    std::size_t block_ = 0;                     ///< number of its block
    std::size_t read_ = 0;                      ///< number of tokens in all blocks
    std::size_t forgotten_ = 0;                 ///< number of tokens before the first block's first
    std::vector<std::unique_ptr<Block>> blocks_;
    std::deque<std::string_view> dropped_; ///< texts of tokens whose room was used again, of a long line
    std::map<KeptPlace, ANTLR3_COMMON_TOKEN> kept_;
    std::size_t marks_ = 0; ///< how often the parser will still rewind

    MountProfileHdlr& hdlr_;
    std::string fileName_;
    std::string_view text_;
    TokenScanner scanner_;
    Phase phase_ = Phase::inFile;
    bool lexingIsFinished_ = false;
    std::unique_ptr<GeneratedLexer> lexer_; ///< made when the scanner cannot go on

    /// Tokens name an input stream; the library only asks it for its file name.
    ANTLR3_INPUT_STREAM nowhere_{};
    ANTLR3_TOKEN_SOURCE source_{};
    Owner<ANTLR3_COMMON_TOKEN_STREAM> stream_;
};

} // namespace Corvid
