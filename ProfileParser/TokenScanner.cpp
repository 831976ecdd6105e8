#include "ProfileParser/TokenScanner.h"

#include <algorithm>
#include <array>

#include "ProfileParser/GeneratedParser.h"

namespace Corvid {

namespace {

/// What a character can begin. `other` covers what begins no token, or one that may be an error, and what is
/// skipped.
enum Class : std::uint8_t {
    other,
    blank,
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

std::uint8_t classOf( char c ) noexcept {
    return table.classOf[CharacterTable::index( c )];
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

/// The words that begin with one character.
struct WordRange {
    std::uint64_t lengths = 0; ///< bit n for words of n characters: most identifiers end here
    std::uint8_t first = 0;
    std::uint8_t last = 0; ///< behind the range
};

constexpr std::array<WordRange, 256> wordsByFirst = [] {
    std::array<WordRange, 256> ranges{};
    for ( std::uint8_t i = 0; const Word& word : words ) {
        for ( const int first : { word.spelling.front() - 'a' + 'A', word.spelling.front() + 0 } ) {
            WordRange& range = ranges[static_cast<std::size_t>( first )];
            if ( range.last == 0 )
                range.first = i;
            range.last = i + 1;
            range.lengths |= std::uint64_t{ 1 } << word.spelling.size();
        }
        ++i;
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
std::uint32_t wordType( const char* start, const char* end ) noexcept {
    const WordRange& range = wordsByFirst[CharacterTable::index( *start )];
    const auto length = static_cast<std::size_t>( end - start );
    // Lengths from 64 on meet some wrong bit, which costs time only.
    if ( ( range.lengths >> ( length % 64 ) & 1U ) != 0 )
        for ( std::uint8_t i = range.first; i < range.last; ++i )
            if ( spells( words[i], { start, length } ) )
                return words[i].type;
    return *start <= 'Z' ? UIDENT : LIDENT;
}

/// Behind the characters from a place on that belong to a kind; a text's end does not belong to any.
template <class Belongs>
const char* runEnd( const char* at, Belongs belongs ) noexcept {
    while ( belongs( *at ) )
        ++at;
    return at;
}

} // namespace

struct TokenScanner::Scanned {
    std::uint32_t type = 0;
    const char* end = nullptr; ///< null for what is not plain
};

/// The token that begins at a character of that class.
inline TokenScanner::Scanned TokenScanner::scan( const char* at,
                                                 std::uint8_t characterClass ) const noexcept {
    switch ( characterClass ) {
    case letter: {
        const char* const end =
            runEnd( at + 1, []( char c ) { return table.continuesIdentifier[CharacterTable::index( c )]; } );
        return { wordType( at, end ), end };
    }
    case single:
        return { table.singleType[CharacterTable::index( *at )], at + 1 };
    case pair: {
        const bool doubled = at[1] == *at;
        const std::uint32_t type = *at == ':' ? ( doubled ? DOUBLECOLON : COLON ) : ( doubled ? OP : EQUAL );
        return { type, at + 1 + doubled };
    }
    case digit:
        return scanNumber( at );
    case lineEnd:
        return { NEWLN, at + 1 };
    case quote:
        return scanString( at );
    case relation:
        return scanOperator( at );
    default:
        return {};
    }
}

TokenScanner::Result TokenScanner::scanLine( pANTLR3_COMMON_TOKEN& next,
                                             const ANTLR3_COMMON_TOKEN* last ) noexcept {
    // In registers; place_ gets the first before anyone looks there.
    const char* at = place_.next;
    std::uint32_t line = place_.line;
    const char* columnZero = place_.columnZero();
    while ( next != last ) {
        const std::uint8_t characterClass = classOf( *at );
        if ( characterClass == blank ) {
            ++at;
            continue;
        }
        const Scanned token = scan( at, characterClass );
        if ( !token.end ) {
            place_.next = at;
            if ( at == end_ )
                return Result::endOfText;
            if ( !skipped() )
                return Result::notPlain;
            at = place_.next;
            line = place_.line;
            columnZero = place_.columnZero();
            continue;
        }
        next->type = token.type;
        next->line = line;
        next->charPosition = static_cast<std::int32_t>( at - columnZero );
        next->start = reinterpret_cast<ANTLR3_MARKER>( at );
        next->stop = reinterpret_cast<ANTLR3_MARKER>( token.end - 1 );
        ++next;
        at = token.end;
        if ( token.type == NEWLN ) {
            if ( at[-1] == '\n' )
                beginLineAt( at );
            break;
        }
    }
    place_.next = at;
    return Result::token;
}

/// Skips a comment with its line end, or a backslash with the line end behind it; both may stand at the end
/// of the text. @return false, at the same place, when that is not what stands there.
bool TokenScanner::skipped() noexcept {
    const char first = *place_.next;
    if ( first != '#' && first != '\\' )
        return false;
    const char* end = first == '#' ? commentEnd() : place_.next + 1;
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
    const char* const end =
        std::find_if( place_.next, end_, []( char c ) { return c == '\n' || c == '\r'; } );
    return end != end_ && *end == '\r' ? end + 1 : end;
}

void TokenScanner::beginLineAt( const char* at ) noexcept {
    place_.lineStart = at;
    ++place_.line;
}

TokenScanner::Scanned TokenScanner::scanNumber( const char* start ) noexcept {
    const char* const end = runEnd( start, isDigit );
    if ( *end == '.' ) { // nothing but a fraction may follow the dot
        const char* const fractionEnd = runEnd( end + 1, isDigit );
        return fractionEnd == end + 1 ? Scanned{} : Scanned{ FLOAT, fractionEnd };
    }
    if ( lowerCase( *end ) == 'x' && end == start + 1 && *start == '0' ) {
        const char* const hexEnd =
            runEnd( end + 1, []( char c ) { return table.isHexDigit[CharacterTable::index( c )]; } );
        return hexEnd == end + 1 ? Scanned{} : Scanned{ HEX, hexEnd };
    }
    return { INT, end };
}

TokenScanner::Scanned TokenScanner::scanString( const char* start ) const noexcept {
    const char* const end = std::find_if( start + 1, end_, []( char c ) { return c == '"' || c == '\n'; } );
    return end == end_ || *end == '\n' ? Scanned{} : Scanned{ STRING, end + 1 };
}

TokenScanner::Scanned TokenScanner::scanOperator( const char* start ) noexcept {
    const bool withEqual = start[1] == '=';
    if ( *start == '!' && !withEqual )
        return {};
    return { OP, start + 1 + withEqual };
}

} // namespace Corvid
