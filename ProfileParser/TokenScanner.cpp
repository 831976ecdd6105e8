#include "ProfileParser/TokenScanner.h"

#include <array>
#include <cstring>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

namespace {

/// What a character can begin. `other` covers what begins no token, or one that may be an error.
enum Class : std::uint8_t {
    other,
    blank,
    comment,
    continuation,
    lineEnd,
    letter,
    digit,
    quote,
    single, ///< a token by itself
    pair,   ///< a token by itself or doubled
    relation
};

constexpr std::string_view singleCharacters = "*),$.-(%?/";
constexpr std::array<std::uint8_t, singleCharacters.size()> singleCharacterTypes{
    ASTERISK, CLOSEPAREN, COMMA, DOLLAR, DOT, HYPHEN, OPENPAREN, PERCENTAGE, QSNMARK, SLASH };

struct CharacterTable {
    std::array<std::uint8_t, 256> classOf{};
    std::array<bool, 256> continuesIdentifier{};
    std::array<bool, 256> isHexDigit{};
    std::array<std::uint8_t, 256> singleType{};

    constexpr CharacterTable() {
        for ( const char c : { ' ', '\t' } )
            classOf[index( c )] = blank;
        for ( const char c : { '\n', '\r' } )
            classOf[index( c )] = lineEnd;
        for ( const char c : { ':', '=' } )
            classOf[index( c )] = pair;
        for ( const char c : { '!', '<', '>' } )
            classOf[index( c )] = relation;
        classOf[index( '#' )] = comment;
        classOf[index( '\\' )] = continuation;
        classOf[index( '"' )] = quote;
        for ( std::size_t i = 0; i < singleCharacters.size(); ++i ) {
            classOf[index( singleCharacters[i] )] = single;
            singleType[index( singleCharacters[i] )] = singleCharacterTypes[i];
        }
        for ( int i = 0; i < 26; ++i )
            for ( const int c : { 'a' + i, 'A' + i } ) {
                classOf[c] = letter;
                continuesIdentifier[c] = true;
                isHexDigit[c] = i < 6;
            }
        for ( int c = '0'; c <= '9'; ++c ) {
            classOf[c] = digit;
            continuesIdentifier[c] = true;
            isHexDigit[c] = true;
        }
        continuesIdentifier[index( '_' )] = true;
    }

    static constexpr std::size_t index( char c ) { return static_cast<unsigned char>( c ); }
};

constexpr CharacterTable table;

Class classOf( char c ) noexcept {
    return static_cast<Class>( table.classOf[CharacterTable::index( c )] );
}

bool isDigit( char c ) noexcept {
    return c >= '0' && c <= '9';
}

struct Word {
    std::string_view spelling; ///< in lower case
    std::uint32_t type;
    bool anyCase;
};

// A keyword that is added to the grammar and not here is read as an identifier. Ordered by first letter.
constexpr std::array<Word, 15> words{ {
    { "agentname", AGENTNAME, true },
    { "alias", ALIAS, true },
    { "and", AND, false },
    { "condition", CONDITION, true },
    { "conditionblocker", CONDITIONBLOCKER, true },
    { "hybridmount", HYBRIDMOUNT, true },
    { "in", OP, false },
    { "include", INCLUDE, true },
    { "lowmountprio", LOWMOUNTPRIO, true },
    { "mountfilter", MOUNTFILTER, true },
    { "mountgroup", MOUNTGROUP, true },
    { "nodefaultmountgroup", NODEFAULTMOUNTGROUP, true },
    { "notin", OP, false },
    { "rootflags", ROOTFLAGS, true },
    { "subagent", SUBAGENT, true },
} };

/// The words that begin with one letter.
struct WordRange {
    std::uint8_t first = 0;
    std::uint8_t last = 0;     ///< behind the range
    std::uint32_t lengths = 0; ///< bit n for words of n characters: most identifiers end here
};

constexpr std::array<WordRange, 26> wordsByFirstLetter = [] {
    std::array<WordRange, 26> ranges{};
    for ( std::uint8_t i = 0; i < words.size(); ++i ) {
        WordRange& range = ranges[static_cast<std::size_t>( words[i].spelling.front() - 'a' )];
        if ( range.last == 0 )
            range.first = i;
        range.last = i + 1;
        range.lengths |= 1U << words[i].spelling.size();
    }
    return ranges;
}();

char lowerCase( char letter ) noexcept {
    return static_cast<char>( letter | 0x20 );
}

bool spells( const Word& word, std::string_view text ) noexcept {
    if ( text.size() != word.spelling.size() )
        return false;
    if ( !word.anyCase )
        return text == word.spelling;
    for ( std::size_t i = 0; i < text.size(); ++i )
        if ( lowerCase( text[i] ) != word.spelling[i] )
            return false;
    return true;
}

/// The type of an identifier-like text that begins with a letter.
std::uint32_t wordType( std::string_view text ) noexcept {
    const WordRange& range = wordsByFirstLetter[static_cast<std::size_t>( lowerCase( text.front() ) - 'a' )];
    if ( text.size() < 32 && ( range.lengths >> text.size() & 1U ) != 0 )
        for ( std::uint8_t i = range.first; i < range.last; ++i )
            if ( spells( words[i], text ) )
                return words[i].type;
    return text.front() <= 'Z' ? UIDENT : LIDENT;
}

} // namespace

template <class Belongs>
const char* TokenScanner::runEnd( const char* at, Belongs belongs ) const noexcept {
    while ( at != end_ && belongs( *at ) )
        ++at;
    return at;
}

inline TokenScanner::Result TokenScanner::tokenIs( ANTLR3_COMMON_TOKEN& token, std::uint32_t type,
                                                   const char* end ) noexcept {
    const char* const start = place_.next;
    token.type = type;
    token.line = place_.line;
    token.charPosition = place_.charPositionInLine( start );
    token.start = reinterpret_cast<ANTLR3_MARKER>( start );
    token.stop = reinterpret_cast<ANTLR3_MARKER>( end - 1 );
    place_.next = end;
    return Result::token;
}

inline TokenScanner::Result TokenScanner::scan( ANTLR3_COMMON_TOKEN& token ) noexcept {
    while ( place_.next != end_ ) {
        switch ( classOf( *place_.next ) ) {
        case blank:
            place_.next = runEnd( place_.next + 1, []( char c ) { return c == ' ' || c == '\t'; } );
            break;
        case comment:
        case continuation:
            if ( !skipped() )
                return Result::notPlain;
            break;
        case lineEnd:
            tokenIs( token, NEWLN, place_.next + 1 );
            if ( place_.next[-1] == '\n' )
                beginLineAt( place_.next );
            return Result::token;
        case letter: {
            const char* end = place_.next + 1;
            while (
                table.continuesIdentifier[CharacterTable::index( *end )] ) // the NUL behind the text does not
                ++end;
            return tokenIs( token, wordType( { place_.next, end } ), end );
        }
        case single:
            return tokenIs( token, table.singleType[CharacterTable::index( *place_.next )], place_.next + 1 );
        case digit:
            return scanNumber( token );
        case quote:
            return scanString( token );
        case pair:
            return scanPair( token );
        case relation:
            return scanOperator( token );
        case other:
            return Result::notPlain;
        }
    }
    return Result::endOfText;
}

TokenScanner::Result TokenScanner::scanLine( std::span<const pANTLR3_COMMON_TOKEN> slots,
                                             std::size_t& count ) noexcept {
    for ( count = 0; count < slots.size(); ++count ) {
        if ( const Result result = scan( *slots[count] ); result != Result::token )
            return result;
        if ( slots[count]->type == NEWLN ) {
            ++count;
            break;
        }
    }
    return Result::token;
}

/// Skips a comment with its line end, or a backslash with the line end behind it; both may stand at the end
/// of the text.
bool TokenScanner::skipped() noexcept {
    const char* end = *place_.next == '#' ? commentEnd() : place_.next + 1;
    if ( end != end_ ) {
        if ( *end != '\n' )
            return false;
        ++end;
        beginLineAt( end );
    }
    place_.next = end;
    return true;
}

/// Where a comment's line end should be: behind one CR at most.
const char* TokenScanner::commentEnd() const noexcept {
    const char* const end = runEnd( place_.next, []( char c ) { return c != '\n' && c != '\r'; } );
    return end != end_ && *end == '\r' ? end + 1 : end;
}

void TokenScanner::beginLineAt( const char* at ) noexcept {
    place_.lineStart = at;
    ++place_.line;
}

TokenScanner::Result TokenScanner::scanNumber( ANTLR3_COMMON_TOKEN& token ) noexcept {
    const char* const end = runEnd( place_.next, isDigit );
    if ( end == end_ )
        return tokenIs( token, INT, end );
    if ( *end == '.' ) { // nothing but a fraction may follow the dot
        const char* const fractionEnd = runEnd( end + 1, isDigit );
        return fractionEnd == end + 1 ? Result::notPlain : tokenIs( token, FLOAT, fractionEnd );
    }
    if ( lowerCase( *end ) == 'x' && end == place_.next + 1 && *place_.next == '0' ) {
        const char* const hexEnd =
            runEnd( end + 1, []( char c ) { return table.isHexDigit[CharacterTable::index( c )]; } );
        return hexEnd == end + 1 ? Result::notPlain : tokenIs( token, HEX, hexEnd );
    }
    return tokenIs( token, INT, end );
}

TokenScanner::Result TokenScanner::scanString( ANTLR3_COMMON_TOKEN& token ) noexcept {
    const char* const end = runEnd( place_.next + 1, []( char c ) { return c != '"' && c != '\n'; } );
    return end == end_ || *end == '\n' ? Result::notPlain : tokenIs( token, STRING, end + 1 );
}

TokenScanner::Result TokenScanner::scanPair( ANTLR3_COMMON_TOKEN& token ) noexcept {
    const char* const at = place_.next;
    const bool doubled = at + 1 != end_ && at[1] == *at;
    if ( *at == ':' )
        return tokenIs( token, doubled ? DOUBLECOLON : COLON, at + 1 + doubled );
    return tokenIs( token, doubled ? OP : EQUAL, at + 1 + doubled );
}

TokenScanner::Result TokenScanner::scanOperator( ANTLR3_COMMON_TOKEN& token ) noexcept {
    const char* const at = place_.next;
    const bool withEqual = at + 1 != end_ && at[1] == '=';
    if ( *at == '!' && !withEqual )
        return Result::notPlain;
    return tokenIs( token, OP, at + 1 + withEqual );
}

} // namespace Corvid
