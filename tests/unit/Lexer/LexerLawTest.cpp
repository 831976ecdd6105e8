// The generated lexer against the language's definition, written down a second time as plain code, over every
// short text of the characters that matter.

#include "LexedText.h"

#include <gtest/gtest.h>

#include <array>

namespace CorvidTest {

namespace {

bool isDigit( char c ) {
    return c >= '0' && c <= '9';
}
bool isHexDigit( char c ) {
    return isDigit( c ) || ( c >= 'a' && c <= 'f' ) || ( c >= 'A' && c <= 'F' );
}
bool isLower( char c ) {
    return c >= 'a' && c <= 'z';
}
bool isUpper( char c ) {
    return c >= 'A' && c <= 'Z';
}

class Definition {
  public:
    explicit Definition( std::string_view text ) : text_( text ) {
        while ( at_ < text_.size() )
            next();
        dump_ += "NEWLN[\\n] EOF";
    }
    [[nodiscard]] const std::string& dump() const { return dump_; }

  private:
    [[nodiscard]] bool isEnd() const { return at_ >= text_.size(); }
    [[nodiscard]] bool stands( std::string_view what ) const {
        return text_.substr( at_ ).starts_with( what );
    }
    template <class Predicate>
    bool skip( Predicate isOne ) {
        const std::size_t before = at_;
        while ( !isEnd() && isOne( text_[at_] ) )
            ++at_;
        return at_ > before;
    }
    void emit( const std::string& name ) {
        dump_ += name + "[" + escaped( text_.substr( start_, at_ - start_ ) ) + "] ";
    }
    void take( std::size_t length, const std::string& name ) {
        at_ += length;
        emit( name );
    }
    void fail( int kind, std::size_t dropped ) {
        dump_ += "!" + std::to_string( kind ) + " ";
        at_ = std::min( at_ + dropped, text_.size() );
    }

    void next() {
        start_ = at_;
        const char c = text_[at_];
        if ( isDigit( c ) )
            number();
        else if ( isLower( c ) || isUpper( c ) )
            word();
        else if ( c == '"' )
            string();
        else if ( c == '\\' )
            continuation();
        else if ( c == '#' )
            comment();
        else if ( c == ' ' )
            ++at_;
        else if ( c == '\n' || c == '\r' )
            take( 1, "NEWLN" );
        else
            sign();
    }
    void number() {
        if ( stands( "0x" ) || stands( "0X" ) ) {
            at_ += 2;
            return skip( isHexDigit ) ? emit( "HEX" ) : fail( 5, 1 );
        }
        skip( isDigit );
        if ( !stands( "." ) )
            return emit( "INT" );
        ++at_;
        return skip( isDigit ) ? emit( "FLOAT" ) : fail( 5, 1 );
    }
    void word() {
        skip( []( char c ) { return isLower( c ) || isUpper( c ) || isDigit( c ) || c == '_'; } );
        const std::string_view word = text_.substr( start_, at_ - start_ );
        emit( word == "in" ? "OP" : isUpper( word[0] ) ? "UIDENT" : "LIDENT" );
    }
    void string() {
        ++at_;
        skip( []( char c ) { return c != '"' && c != '\n'; } );
        return stands( "\"" ) ? take( 1, "STRING" ) : fail( 1, 1 );
    }
    void continuation() {
        ++at_;
        if ( stands( "\n" ) )
            ++at_;
        else if ( skip( []( char c ) { return c != '\n'; } ) )
            fail( 1, 1 );
    }
    void comment() {
        ++at_;
        skip( []( char c ) { return c != '\n' && c != '\r'; } );
        at_ += stands( "\r" ) ? 1 : 0;
        if ( stands( "\n" ) )
            ++at_;
        else if ( !isEnd() )
            fail( 1, 2 );
    }
    void sign() {
        for ( const char* op : { "==", "!=", "<=", "<" } )
            if ( stands( op ) )
                return take( std::string_view( op ).size(), "OP" );
        if ( stands( "::" ) )
            return take( 2, "DOUBLECOLON" );
        const char c = text_[at_];
        if ( c == ':' || c == '=' || c == '.' )
            return take( 1, c == ':' ? "COLON" : c == '=' ? "EQUAL" : "DOT" );
        if ( c != '!' )
            return fail( 3, 1 );
        ++at_;
        fail( 1, 2 );
    }

    std::string_view text_;
    std::size_t start_ = 0;
    std::size_t at_ = 0;
    std::string dump_;
};

void expectOneAsDefined( const std::string& text ) {
    const LexedText lexed( text );
    ASSERT_EQ( lexed.dump, Definition( text ).dump() ) << "text: " << escaped( text );
    expectSameInTheWindow( text, lexed );
    ASSERT_FALSE( testing::Test::HasFailure() );
}

void expectAsDefined( std::string& text, std::size_t longest ) {
    static constexpr std::string_view characters = "i\nx0.\"\\#\r=!:";
    static constexpr std::string_view lastCharacters{ "nX1_A <{\0", 9 };
    ASSERT_NO_FATAL_FAILURE( expectOneAsDefined( text ) );
    if ( text.size() == longest )
        return;
    text.push_back( ' ' );
    for ( const char character : characters ) {
        text.back() = character;
        ASSERT_NO_FATAL_FAILURE( expectAsDefined( text, longest ) );
    }
    for ( const char character : lastCharacters ) {
        text.back() = character;
        ASSERT_NO_FATAL_FAILURE( expectOneAsDefined( text ) );
    }
    text.pop_back();
}

TEST( TheLexer, ReadsEveryShortTextAsTheLanguageIsDefined ) {
    std::string text;
    expectAsDefined( text, 4 );
}

} // namespace

} // namespace CorvidTest
