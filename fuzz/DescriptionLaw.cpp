#include "DescriptionLaw.h"

#include "ProfileParser/ErrorWording.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "ProfileParser/GeneratedParser.h"

namespace CorvidFuzz {

namespace {

namespace Wording = Corvid::ErrorWording;

constexpr std::size_t tokenTypeCount = 67;

/// A text with gaps: what stands around each "…" of a heading.
using Pattern = std::vector<std::string>;

Pattern patternOf( std::string heading ) {
    constexpr std::string_view gap = "…";
    Pattern parts;
    for ( auto at = heading.find( gap ); at != std::string::npos; at = heading.find( gap ) ) {
        parts.push_back( heading.substr( 0, at ) );
        heading.erase( 0, at + gap.size() );
    }
    parts.push_back( heading );
    return parts;
}

struct Patterns {
    std::vector<std::string> ofLexer; ///< the messages less what they quote
    std::vector<Pattern> ofParser;    ///< less the kinds of mismatches, which are put together from several
};

Patterns readPatterns() {
    std::ifstream document( CORVID_SOURCE_DIR "/docs/errors.md" );
    Patterns patterns;
    bool ofCharacters = false;
    for ( std::string line; std::getline( document, line ); ) {
        if ( line.starts_with( "## " ) )
            ofCharacters = line == "## Characters";
        const auto quote = line.find( '`' ); // behind the text's code
        if ( !line.starts_with( "### MP" ) || quote == std::string::npos )
            continue;
        const std::string heading = line.substr( quote + 1, line.rfind( '`' ) - quote - 1 );
        if ( ofCharacters )
            patterns.ofLexer.push_back( heading.substr( 0, heading.find( ", near " ) ) );
        else if ( !heading.ends_with( "xpected …" ) && heading != "Missing …" )
            patterns.ofParser.push_back( patternOf( heading ) );
    }
    if ( patterns.ofLexer.size() < 5 || patterns.ofParser.size() < 30 )
        throw std::runtime_error( "docs/errors.md does not list the texts of errors" );
    return patterns;
}

const Patterns& patterns() {
    static const Patterns read = readPatterns();
    return read;
}

bool matches( std::string_view text, const Pattern& pattern ) {
    if ( !text.starts_with( pattern.front() ) )
        return false;
    if ( pattern.size() == 1 )
        return text.size() == pattern.front().size();
    text.remove_prefix( pattern.front().size() );
    if ( !text.ends_with( pattern.back() ) )
        return false;
    text.remove_suffix( pattern.back().size() );
    for ( std::size_t i = 1; i + 1 < pattern.size(); ++i ) {
        const auto at = text.find( pattern[i] );
        if ( at == std::string_view::npos )
            return false;
        text.remove_prefix( at + pattern[i].size() );
    }
    return true;
}

bool matchesOne( std::string_view text, const std::vector<Pattern>& list ) {
    return std::ranges::any_of( list, [text]( const Pattern& pattern ) { return matches( text, pattern ); } );
}

std::string_view withoutBlanksAtEnds( std::string_view text ) {
    text.remove_prefix( std::min( text.find_first_not_of( ' ' ), text.size() ) );
    return text.substr( 0, text.find_last_not_of( ' ' ) + 1 );
}

/// The name of a token, and behind it maybe one of the texts that stand alone, too.
bool isTokenNameAndHint( std::string_view text ) {
    const auto isNameAndHint = [text]( std::string_view name ) {
        return text.starts_with( name ) && ( text.size() == name.size() ||
                                             matchesOne( text.substr( name.size() ), patterns().ofParser ) );
    };
    if ( isNameAndHint( Wording::endOfInputName ) )
        return true;
    for ( std::size_t type = 4; type < tokenTypeCount; ++type )
        if ( isNameAndHint( reinterpret_cast<const char*>( mountProfileParserTokenNames[type] ) ) )
            return true;
    return false;
}

bool isParserMessage( std::string_view text, std::uint32_t kind ) {
    for ( const Wording::KindMessage& message : Wording::kindMessages() )
        if ( message.kind == kind && text.starts_with( message.beforeTokenName ) )
            return isTokenNameAndHint( withoutBlanksAtEnds( text.substr( message.beforeTokenName.size() ) ) );
    return matchesOne( withoutBlanksAtEnds( text ), patterns().ofParser );
}

bool isCharacterMessage( std::string_view text, std::string_view rest ) {
    const std::string shown = rest.starts_with( '\n' ) ? "\\n" : std::string( rest.substr( 0, 1 ) );
    const std::string near = rest.empty() ? ", near EOF \n" : ", near '" + shown + "'\n";
    if ( !text.ends_with( near ) )
        return false;
    text.remove_suffix( near.size() );
    return std::ranges::find( patterns().ofLexer, text ) != patterns().ofLexer.end();
}

bool removePrefix( std::string_view& text, std::string_view prefix ) {
    const bool stands = text.starts_with( prefix );
    if ( stands )
        text.remove_prefix( prefix.size() );
    return stands;
}

bool mayBeAppendedLineEnd( const Corvid::RecognitionError& error ) {
    return error.recognizer() == "parser" && error.line() == 1 && error.charPositionInLine() == 0;
}

bool mayBeEndOfInput( const Corvid::RecognitionError& error ) {
    return error.recognizer() == "parser" && error.line() == 2 && error.charPositionInLine() == 0;
}

/// Whether a text is the quoted token at the place, and then a message. The token may hold what ends a quote.
bool isQuoteAndMessage( std::string_view text, const Corvid::RecognitionError& error,
                        std::string_view rest ) {
    for ( auto end = text.find( Wording::nearTokenEnd ); end != std::string_view::npos;
          end = text.find( Wording::nearTokenEnd, end + 1 ) ) {
        const std::string_view quoted = text.substr( 0, end );
        const bool isLineEnd = quoted == Wording::newlineAsShown;
        const bool stands = isLineEnd ? rest.starts_with( '\n' ) || mayBeAppendedLineEnd( error )
                                      : !quoted.empty() && rest.starts_with( quoted );
        const std::string_view message = text.substr( end + Wording::nearTokenEnd.size() );
        if ( stands && isParserMessage( message, error.exceptionType() ) )
            return true;
    }
    return false;
}

} // namespace

bool mayBeAppended( const Corvid::RecognitionError& error ) {
    return mayBeAppendedLineEnd( error ) || mayBeEndOfInput( error );
}

std::string descriptionProblem( const Corvid::RecognitionError& error, const std::string& groupName,
                                std::string_view rest ) {
    std::string_view text = error.description();
    if ( error.recognizer() == "lexer" )
        return isCharacterMessage( text, rest ) ? "" : "not a message about a character";
    if ( error.recognizer() != "parser" )
        return "found by nobody";
    // In an include file, only the start rule describes an error without a section.
    const bool isNamed = error.includeFileName().empty() ? removePrefix( text, Wording::agentTitlePrefix )
                                                         : removePrefix( text, Wording::includeFilePrefix );
    if ( !isNamed && removePrefix( text, Wording::mountGroupPrefix ) &&
         ( !error.includeFileName().empty() ||
           !removePrefix( text, groupName + std::string( Wording::mountGroupPrefixEnd ) ) ) )
        return "names another section than the one at hand";
    if ( removePrefix( text, Wording::atEndOfInput ) )
        return mayBeEndOfInput( error ) && isParserMessage( text, error.exceptionType() ) ? ""
                                                                                          : "not a message";
    if ( !removePrefix( text, Wording::nearToken ) )
        return "names no token";
    return isQuoteAndMessage( text, error, rest ) ? "" : "not a message";
}

} // namespace CorvidFuzz
