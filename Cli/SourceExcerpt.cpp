#include "Cli/SourceExcerpt.h"

#include "Cli/PrintableText.h"
#include "Cli/SourceText.h"

#include <algorithm>

namespace Corvid::Cli {

namespace {

constexpr std::size_t tabStop = 8;
/// How much of a long line is shown before and behind the place, in bytes.
constexpr std::size_t shownBefore = 80;
constexpr std::size_t shownBehind = 60;
constexpr std::string_view cutMark = "...";

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

/// Shows a line piece by piece, and marks under it.
class MarkedLine {
  public:
    /// @param prefix is shown before the line.
    MarkedLine( std::string_view prefix, const SourcePlace& part, const Marks& marks )
        : text_( prefix ), marks_( prefix.size(), ' ' ) {
        for ( std::size_t at = 0; at < part.text.size(); )
            at += add( part.text.substr( at ), at == caretPiece( part, at ), markAt( marks, at ) );
        if ( part.byteOffset >= part.text.size() )
            marks_ += '^';
        marks_.erase( marks_.find_last_not_of( ' ' ) + 1 );
    }
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] const std::string& marks() const { return marks_; }

  private:
    static char markAt( const Marks& marks, std::size_t at ) {
        return marks.begin <= at && at < marks.end ? '~' : ' ';
    }
    /// Where the piece begins that the place lies in, if it begins here.
    static std::size_t caretPiece( const SourcePlace& part, std::size_t at ) {
        const auto bytes = firstPrintablePiece( part.text.substr( at ) ).bytes;
        return at <= part.byteOffset && part.byteOffset < at + bytes ? at : std::string_view::npos;
    }
    /// @return the bytes of the piece that was added. A caret marks its first column only.
    std::size_t add( std::string_view rest, bool isPlace, char mark ) {
        PrintablePiece piece = firstPrintablePiece( rest );
        if ( rest.front() == '\t' ) {
            piece.columns = tabStop - columns_ % tabStop;
            text_.append( piece.columns, ' ' );
        } else {
            appendPrintable( text_, rest.substr( 0, piece.bytes ) );
        }
        columns_ += piece.columns;
        marks_ += isPlace ? '^' : mark;
        marks_.append( piece.columns - 1, mark );
        return piece.bytes;
    }

    std::string text_;
    std::string marks_;
    std::size_t columns_ = 0;
};

/// The place to show: where that ends which is wrong, when all of it stands on lines before the place.
SourcePlace shownPlace( std::string_view content, const Marks& marks ) {
    const SourcePlace place = sourcePlace( content, marks.place );
    const auto lineStart = static_cast<std::size_t>( place.text.data() - content.data() );
    return marks.begin < marks.end && marks.end <= lineStart ? sourcePlace( content, marks.end ) : place;
}

} // namespace

std::string sourceExcerpt( std::string_view content, const Marks& marks, bool coloured ) {
    const SourcePlace place = shownPlace( content, marks );
    const SourcePlace part = cutAround( place );
    // Offsets within the part that is shown; what lies before it begins with it.
    const auto start = static_cast<std::size_t>( part.text.data() - content.data() );
    const auto within = [start]( std::size_t offset ) { return offset > start ? offset - start : 0; };
    const bool cutBefore = part.byteOffset != place.byteOffset;
    const bool cutBehind = part.text.data() + part.text.size() != place.text.data() + place.text.size();
    const MarkedLine line( cutBefore ? cutMark : "", part,
                           { part.byteOffset, within( marks.begin ), within( marks.end ) } );

    std::string number = std::to_string( place.line );
    number.insert( 0, 5 - std::min<std::size_t>( number.size(), 5 ), ' ' );
    std::string excerpt = number + " | " + line.text();
    if ( cutBehind )
        excerpt += cutMark;
    excerpt += "\n" + std::string( number.size(), ' ' ) + " | ";
    const auto blanks = std::min( line.marks().find_first_not_of( ' ' ), line.marks().size() );
    excerpt += line.marks().substr( 0, blanks );
    excerpt += coloured ? "\033[1;31m" + line.marks().substr( blanks ) + "\033[0m\n"
                        : line.marks().substr( blanks ) + "\n";
    return excerpt;
}

} // namespace Corvid::Cli
