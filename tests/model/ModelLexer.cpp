#include "model/ModelLexer.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Model {

namespace {

constexpr int endOfText = -1;

/// Characters with the place bookkeeping of the parser library: the first line begins at position -1, and
/// only \n ends a line.
class Characters {
  public:
    explicit Characters( std::string_view text ) : text_( text ) {}

    [[nodiscard]] int peek( std::size_t ahead = 0 ) const {
        return at_ + ahead < text_.size() ? static_cast<unsigned char>( text_[at_ + ahead] ) : endOfText;
    }
    void consume() {
        if ( at_ == text_.size() )
            return;
        ++position;
        if ( text_[at_++] == '\n' ) {
            ++line;
            position = 0;
        }
    }
    [[nodiscard]] std::string_view text() const { return text_; }
    [[nodiscard]] std::size_t at() const { return at_; }

    std::uint32_t line = 1;
    std::int32_t position = -1;

  private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// Why a token could not be read. After a single character that did not match, the library drops that
/// character at once, and then, as after every failure, one more.
struct Failure {
    std::uint32_t kind;
    const char* message;
    bool dropsAtOnce;
};
constexpr Failure noViableAlternative{ 3, "Unrecongnized character ", false };
constexpr Failure earlyExit{ 5, "Incorrect number ", false };
constexpr Failure wrongCharacter{ 1, "Unexpected character", true };
constexpr Failure openString{ 1, "EOL or EOF while scanning string literal", false };
constexpr Failure textAfterBackslash{ 1, "unexpected character after line continuation character", false };

/// What a rule came to: a token, nothing (skipped), or a failure.
struct Result {
    std::optional<Type> token;
    std::optional<Failure> failure;
};

bool isDigit( int c ) {
    return c >= '0' && c <= '9';
}
bool isHexDigit( int c ) {
    return isDigit( c ) || ( c >= 'A' && c <= 'F' ) || ( c >= 'a' && c <= 'f' );
}
bool isUpper( int c ) {
    return c >= 'A' && c <= 'Z';
}
bool isLetter( int c ) {
    return isUpper( c ) || ( c >= 'a' && c <= 'z' );
}
bool isWordPart( int c ) {
    return isLetter( c ) || isDigit( c ) || c == '_';
}

LexError described( const Failure& failure, const Characters& at ) {
    LexError error{ failure.kind, at.line, at.position, failure.message, {} };
    const std::string_view text = at.text();
    if ( at.at() == text.size() ) {
        error.description += ", near EOF \n";
        return error;
    }
    const char offending = text[at.at()];
    error.description +=
        ", near '" + ( offending == '\n' ? std::string( "\\n" ) : std::string( 1, offending ) ) + "'\n";
    if ( at.position >= 0 ) {
        const auto newline = at.at() == 0 ? text.npos : text.rfind( '\n', at.at() - 1 );
        const auto lineStart = newline == text.npos ? 0 : newline + 1;
        error.sourceLine = '\t' + std::string( text.substr( lineStart, at.at() - lineStart ) );
    }
    const std::string_view rest = text.substr( at.at(), 10 );
    error.sourceLine += rest.substr( 0, rest.find( '\n' ) );
    return error;
}

Type wordType( std::string_view word ) {
    static constexpr std::array<std::pair<std::string_view, Type>, 12> keywords{ {
        { "agentname", AGENTNAME },
        { "mountgroup", MOUNTGROUP },
        { "condition", CONDITION },
        { "conditionblocker", CONDITIONBLOCKER },
        { "include", INCLUDE },
        { "alias", ALIAS },
        { "subagent", SUBAGENT },
        { "rootflags", ROOTFLAGS },
        { "nodefaultmountgroup", NODEFAULTMOUNTGROUP },
        { "hybridmount", HYBRIDMOUNT },
        { "mountfilter", MOUNTFILTER },
        { "lowmountprio", LOWMOUNTPRIO },
    } };
    const auto sameLetter = []( char a, char b ) { return ( isUpper( a ) ? a + ( 'a' - 'A' ) : a ) == b; };
    for ( const auto& [spelling, type] : keywords )
        if ( std::ranges::equal( word, spelling, sameLetter ) )
            return type;
    if ( word == "and" )
        return AND;
    if ( word == "in" || word == "notin" )
        return OP;
    return isUpper( word.front() ) ? UIDENT : LIDENT;
}

class Reader {
  public:
    Reader( std::string_view text, Lexed& out ) : in_( text ), out_( out ) {}

    void readAll() {
        while ( in_.peek() != endOfText ) {
            const Characters start = in_;
            const Result result = next();
            if ( result.failure )
                recover( *result.failure );
            else if ( result.token )
                out_.tokens.push_back(
                    { *result.token, start.line, start.position, textSince( start.at() ) } );
        }
    }

  private:
    void recover( const Failure& failure ) {
        if ( !out_.firstError )
            out_.firstError = described( failure, in_ );
        if ( failure.dropsAtOnce )
            in_.consume();
        in_.consume();
    }

    [[nodiscard]] std::string textSince( std::size_t start ) const {
        return std::string( in_.text().substr( start, in_.at() - start ) );
    }
    template <class Belongs>
    void consumeWhile( Belongs belongs ) {
        while ( in_.peek() != endOfText && belongs( in_.peek() ) )
            in_.consume();
    }

    Result next() {
        const int first = in_.peek();
        if ( isLetter( first ) )
            return word();
        if ( isDigit( first ) )
            return number();
        switch ( first ) {
        case ' ':
        case '\t':
            consumeWhile( []( int c ) { return c == ' ' || c == '\t'; } );
            return {};
        case '"':
            return string();
        case '#':
            return comment();
        case '\\':
            return lineContinuation();
        default:
            return punctuation( first );
        }
    }

    Result word() {
        const std::size_t start = in_.at();
        consumeWhile( isWordPart );
        return { wordType( textSince( start ) ), {} };
    }

    Result number() {
        if ( in_.peek() == '0' && ( in_.peek( 1 ) == 'x' || in_.peek( 1 ) == 'X' ) ) {
            in_.consume();
            in_.consume();
            return digits( HEX, isHexDigit );
        }
        consumeWhile( isDigit );
        if ( in_.peek() != '.' )
            return { INT, {} };
        in_.consume();
        return digits( FLOAT, isDigit );
    }

    Result digits( Type type, bool ( *belongs )( int ) ) {
        if ( !belongs( in_.peek() ) )
            return { {}, earlyExit };
        consumeWhile( belongs );
        return { type, {} };
    }

    Result string() {
        in_.consume();
        consumeWhile( []( int c ) { return c != '"' && c != '\n'; } );
        if ( in_.peek() != '"' )
            return { {}, openString };
        in_.consume();
        return { STRING, {} };
    }

    Result comment() {
        consumeWhile( []( int c ) { return c != '\n' && c != '\r'; } );
        if ( in_.peek() == '\r' )
            in_.consume();
        if ( in_.peek() != '\n' && in_.peek() != endOfText )
            return { {}, wrongCharacter };
        in_.consume();
        return {};
    }

    Result lineContinuation() {
        in_.consume();
        if ( in_.peek() == '\n' || in_.peek() == endOfText ) {
            in_.consume();
            return {};
        }
        consumeWhile( []( int c ) { return c != '\n'; } );
        return { {}, textAfterBackslash };
    }

    Result punctuation( int first ) {
        static constexpr std::string_view characters = "*):,$.=-(%?/\n\r<>!";
        static constexpr Type types[] = { ASTERISK, CLOSEPAREN, COLON,     COMMA,      DOLLAR,  DOT,
                                          EQUAL,    HYPHEN,     OPENPAREN, PERCENTAGE, QSNMARK, SLASH,
                                          NEWLN,    NEWLN,      OP,        OP,         OP };
        const auto place = characters.find( static_cast<char>( first ) );
        if ( place == characters.npos )
            return { {}, noViableAlternative };
        in_.consume();
        return punctuationFollowedBy( first, in_.peek(), types[place] );
    }

    Result punctuationFollowedBy( int first, int second, Type single ) {
        const bool doubled = first == ':' && second == ':';
        const bool compares =
            second == '=' && ( first == '=' || first == '!' || first == '<' || first == '>' );
        if ( doubled || compares )
            in_.consume();
        else if ( first == '!' )
            return { {}, wrongCharacter };
        if ( doubled )
            return { DOUBLECOLON, {} };
        return { compares ? OP : single, {} };
    }

    Characters in_;
    Lexed& out_;
};

} // namespace

Lexed lex( std::string_view text ) {
    Lexed out;
    Reader( text, out ).readAll();
    Reader( " \n", out ).readAll();
    return out;
}

} // namespace Model
