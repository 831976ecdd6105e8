#pragma once

// A lexer over nothing but a text, to call its rules one by one. Include it last, as the generated headers.
#include "ProfileParser/GeneratedParser.h"

namespace CorvidTest {

class BareLexer {
  public:
    explicit BareLexer( std::string text )
        : text_( std::move( text ) ),
          input_( antlr3StringStreamNew( reinterpret_cast<pANTLR3_UINT8>( text_.data() ), ANTLR3_ENC_8BIT,
                                         static_cast<ANTLR3_UINT32>( text_.size() ), name_ ) ),
          lexer_( mountProfileLexerNew( input_ ) ) {}
    BareLexer( const BareLexer& ) = delete;
    BareLexer& operator=( const BareLexer& ) = delete;
    ~BareLexer() {
        lexer_->free( lexer_ );
        input_->close( input_ );
    }

    using Rule = void ( * )( mountProfileLexer_Ctx_struct* );
    /// Runs a rule where the lexer stands. @return the exception, or null when the rule has matched.
    const ANTLR3_EXCEPTION* run( Rule mountProfileLexer_Ctx_struct::*rule ) {
        state().error = ANTLR3_FALSE;
        ( lexer_->*rule )( lexer_ );
        return state().error ? state().exception : nullptr;
    }

    [[nodiscard]] pmountProfileLexer operator->() const { return lexer_; }
    [[nodiscard]] pANTLR3_INPUT_STREAM input() const { return input_; }
    [[nodiscard]] ANTLR3_RECOGNIZER_SHARED_STATE& state() const { return *lexer_->pLexer->rec->state; }
    /// How many characters have been read.
    [[nodiscard]] std::size_t consumed() const {
        return static_cast<std::size_t>( static_cast<const char*>( input_->nextChar ) - text_.data() );
    }

  private:
    std::string text_;
    ANTLR3_UINT8 name_[5] = { 't', 'e', 'x', 't', '\0' };
    pANTLR3_INPUT_STREAM input_;
    pmountProfileLexer lexer_;
};

} // namespace CorvidTest
