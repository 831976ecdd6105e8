#include "model/Mutator.h"

#include <cctype>
#include <iterator>
#include <utility>
#include <vector>

namespace Model {

namespace {

using Pieces = std::vector<std::string>;

/// Every byte of the text lies in exactly one piece: a word, a run of blanks, a string in quotes, or a single
/// byte.
Pieces pieces( const std::string& text ) {
    const auto isWord = []( char c ) {
        return std::isalnum( static_cast<unsigned char>( c ) ) != 0 || c == '_';
    };
    const auto isBlank = []( char c ) { return c == ' ' || c == '\t'; };
    Pieces out;
    for ( std::size_t start = 0; start < text.size(); start += out.back().size() ) {
        std::size_t end = start + 1;
        const char first = text[start];
        if ( isWord( first ) )
            while ( end < text.size() && isWord( text[end] ) )
                ++end;
        else if ( isBlank( first ) )
            while ( end < text.size() && isBlank( text[end] ) )
                ++end;
        else if ( first == '"' && text.find( '"', end ) != text.npos )
            end = text.find( '"', end ) + 1;
        out.push_back( text.substr( start, end - start ) );
    }
    return out;
}

// clang-format off
constexpr const char* vocabulary[] = {
    "agentName", "AGENTNAME", "mountGroup", "condition", "conditionBlocker", "include", "alias", "subAgent",
    "rootFlags", "noDefaultMountGroup", "hybridMount", "mountFilter", "lowMountPrio", "and", "in", "notin",
    "==", "!=", "<=", ">", "*", ")", ":", "::", ",", "$", ".", "=", "-", "(", "%", "?", "/", "\n", "\n",
    "\n", "\r", "\r\n", " ", "a", "Foo", "rw", "Kiv", "len", "%slot", "%sysname", "1", "42", "0x1F", "2.5",
    "0x", "1.", "\"s t\"", "\"open", "#note\n", "#note\r x", "#", "\\\n", "\\ \n", "\\", "!", "{", "_x",
    "::Kiv::T", ", Kiv::Entity, r\n", "/a/b", "mountGroup: g1, 5\n", "condition: 1 == /a.b\n",
    "mountFilter: f1\n", "include: inc*\n", "f1", "all" };
// clang-format on

char oddByte( Random& random ) {
    static constexpr char bytes[] = { '\0',   '\r',   '\n',   '"',    '\\', '#',    '!',    '_',
                                      '\x80', '\xFF', '\xC3', '\x7F', '\t', '\x0C', '\x1B', '\x01',
                                      '{',    '~',    '=',    '\xA0', '.',  'x',    '0' };
    return random.chance( 75 ) ? bytes[random.below( sizeof bytes )]
                               : static_cast<char>( random.below( 256 ) );
}

void changeBytes( std::string& text, Random& random ) {
    if ( text.empty() )
        return text.push_back( oddByte( random ) );
    const auto place = random.below( text.size() );
    switch ( random.below( 6 ) ) {
    case 0:
        text[place] = static_cast<char>( text[place] ^ ( 1 << random.below( 8 ) ) );
        break;
    case 1:
        text.insert( place, 1, oddByte( random ) );
        break;
    case 2:
        text.erase( place, 1 );
        break;
    case 3:
        text.resize( place );
        break;
    case 4:
        text[place] = oddByte( random );
        break;
    default:
        text.insert( place, text.substr( random.below( text.size() ), 1 + random.below( 12 ) ) );
        break;
    }
}

} // namespace

void changeTokens( std::string& text, Random& random ) {
    Pieces all = pieces( text );
    if ( all.empty() )
        return;
    const auto place = random.below( all.size() );
    const auto at = all.begin() + static_cast<std::ptrdiff_t>( place );
    switch ( random.below( 6 ) ) {
    case 0:
        all.erase( at );
        break;
    case 1:
        all[place] += all[place];
        break;
    case 2:
        std::swap( all[place], all[random.below( all.size() )] );
        break;
    case 3:
        all[place] = random.pick( vocabulary );
        break;
    case 4:
        all[place] += random.pick( vocabulary );
        break;
    default:
        all[place] += ' ' + random.pick( vocabulary ) + ' ';
        break;
    }
    text.clear();
    for ( const auto& piece : all )
        text += piece;
}

void mutate( Case& input, Random& random ) {
    std::string* text = &input.agentText;
    if ( !input.otherFiles.empty() && random.chance( 30 ) )
        text = &std::next( input.otherFiles.begin(),
                           static_cast<std::ptrdiff_t>( random.below( input.otherFiles.size() ) ) )
                    ->second;
    const bool bytes = random.chance( 45 );
    do
        bytes ? changeBytes( *text, random ) : changeTokens( *text, random );
    while ( random.chance( 35 ) );
}

std::string tokenSoup( Random& random ) {
    std::string text = random.chance( 85 ) ? "agentName: A-%slot\n" : "";
    for ( auto count = 1 + random.below( 14 ); count > 0; --count )
        text += random.pick( vocabulary ) + ( random.chance( 40 ) ? " " : "" );
    return text;
}

} // namespace Model
