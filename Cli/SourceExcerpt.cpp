#include "Cli/SourceExcerpt.h"

#include "Cli/PrintableText.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

namespace Corvid::Cli {

namespace {

constexpr std::size_t tabStop = 8;
/// How much of a long line is shown before and behind the place, in bytes.
constexpr std::size_t shownBefore = 80;
constexpr std::size_t shownBehind = 60;

std::optional<std::string> readFile( const std::string& fileName ) {
    std::error_code error;
    if ( !std::filesystem::is_regular_file( fileName, error ) ) // a pipe would block
        return std::nullopt;
    std::ifstream file( fileName, std::ios::binary );
    std::string content{ std::istreambuf_iterator<char>( file ), {} };
    if ( !file )
        return std::nullopt;
    return content;
}

/// A description without the words that tell the section of the file; what follows them is the offending
/// token.
std::string_view withoutSection( std::string_view description ) {
    for ( const std::string_view section : { " In agent title, ", " In include file, " } )
        if ( description.starts_with( section ) )
            return description.substr( section.size() );
    static constexpr std::string_view groupEnd = "' , ";
    if ( description.starts_with( " In mount group '" ) )
        if ( const auto end = description.find( groupEnd ); end != std::string_view::npos )
            return description.substr( end + groupEnd.size() );
    return description;
}

/// Whether an error lies at the line end that is appended to the file, or at the end of input behind it.
bool liesBehindFile( const RecognitionError& error, std::string_view content ) {
    if ( error.recognizer() != "parser" )
        return false;
    const std::string_view token = withoutSection( error.description() );
    if ( token.starts_with( " at <EOF>, " ) )
        return true;
    if ( error.line() != 1 || error.charPositionInLine() != 0 || !token.starts_with( " near '\\n', " ) )
        return false;
    // The file's own second byte has the same numbers. It is a line end in error only behind a token of one
    // byte.
    const bool ownLineEnd = content.size() > 1 && content[1] == '\n' &&
                            std::string_view( " \t\r\n#\\" ).find( content[0] ) == std::string_view::npos;
    return !ownLineEnd;
}

std::string_view lineAt( std::string_view content, std::size_t start ) {
    std::string_view line = content.substr( start, content.find( '\n', start ) - start );
    if ( line.ends_with( '\r' ) )
        line.remove_suffix( 1 );
    return line;
}

SourcePlace endOf( std::string_view content ) {
    content = content.substr( 0, content.find_last_not_of( " \t\r\n" ) + 1 );
    const auto lastLineEnd = content.rfind( '\n' );
    const std::string_view text =
        content.substr( lastLineEnd == std::string_view::npos ? 0 : lastLineEnd + 1 );
    const auto lineEnds = std::ranges::count( content, '\n' );
    return { static_cast<std::size_t>( lineEnds ) + 1, text, text.size() };
}

bool isContinuationByte( char c ) {
    return ( static_cast<unsigned char>( c ) & 0xC0 ) == 0x80;
}

/// The part of a long line around the place, cut between characters.
SourcePlace cutAround( SourcePlace place ) {
    std::size_t first = place.byteOffset > shownBefore ? place.byteOffset - shownBefore : 0;
    while ( first > 0 && first < place.byteOffset && isContinuationByte( place.text[first] ) )
        ++first;
    std::size_t last = std::min( place.text.size(), place.byteOffset + shownBehind );
    while ( last < place.text.size() && isContinuationByte( place.text[last] ) )
        ++last;
    return { place.line, place.text.substr( first, last - first ), place.byteOffset - first };
}

struct ShownLine {
    std::string text;
    std::size_t caretColumn;
};

ShownLine shown( std::string_view line, std::size_t byteOffset ) {
    ShownLine result{ {}, 0 };
    std::size_t column = 0;
    for ( std::size_t at = 0; at < line.size(); ) {
        if ( at <= byteOffset )
            result.caretColumn = column;
        PrintablePiece piece = firstPrintablePiece( line.substr( at ) );
        if ( line[at] == '\t' ) {
            piece.columns = tabStop - column % tabStop;
            result.text.append( piece.columns, ' ' );
        } else {
            appendPrintable( result.text, line.substr( at, piece.bytes ) );
        }
        column += piece.columns;
        at += piece.bytes;
    }
    if ( byteOffset >= line.size() )
        result.caretColumn = column;
    return result;
}

} // namespace

SourcePlace placeOf( const RecognitionError& error, std::string_view content ) {
    if ( liesBehindFile( error, content ) )
        return endOf( content );
    std::size_t start = 0;
    for ( std::uint32_t line = 1; line < error.line(); ++line ) {
        const auto lineEnd = content.find( '\n', start );
        if ( lineEnd == std::string_view::npos )
            return endOf( content );
        start = lineEnd + 1;
    }
    const std::string_view text = lineAt( content, start );
    return { error.line(), text, std::min<std::size_t>( error.column() - 1, text.size() ) };
}

std::string excerptAt( const SourcePlace& place, bool coloured ) {
    static constexpr std::string_view cutMark = "...";
    const SourcePlace part = cutAround( place );
    const bool cutBefore = part.byteOffset != place.byteOffset;
    const bool cutBehind = part.text.data() + part.text.size() != place.text.data() + place.text.size();
    const ShownLine line = shown( part.text, part.byteOffset );

    std::string number = std::to_string( place.line );
    number.insert( 0, number.size() < 5 ? 5 - number.size() : 0, ' ' );
    std::string excerpt = number + " | ";
    if ( cutBefore )
        excerpt += cutMark;
    excerpt += line.text;
    if ( cutBehind )
        excerpt += cutMark;
    excerpt += "\n" + std::string( number.size(), ' ' ) + " | ";
    excerpt.append( line.caretColumn + ( cutBefore ? cutMark.size() : 0 ), ' ' );
    excerpt += coloured ? "\033[1;31m^\033[0m\n" : "^\n";
    return excerpt;
}

std::string sourceExcerpt( const RecognitionError& error, bool coloured ) {
    if ( !error.hasPlace() )
        return {};
    const auto content = readFile( error.placeFileName().str() );
    return content ? excerptAt( placeOf( error, *content ), coloured ) : std::string();
}

} // namespace Corvid::Cli
