// What any loader has to do at least: read the file, find the fields, make the records. Nothing is checked.
#include "Loaders.h"

#include <algorithm>
#include <vector>

namespace Bench {

namespace {

/// Calls visitor( path, type, flags ) for every line but the first.
template <class Visitor>
void forEachLine( std::string_view text, Visitor visitor ) {
    text.remove_prefix( std::min( text.size(), text.find( '\n' ) + 1 ) );
    while ( !text.empty() ) {
        const std::size_t end = std::min( text.find( '\n' ), text.size() );
        const std::string_view line = text.substr( 0, end );
        const std::size_t afterPath = line.find( ',' );
        const std::size_t afterType = line.find( ',', afterPath + 1 );
        visitor( line.substr( 0, afterPath ), line.substr( afterPath + 2, afterType - afterPath - 2 ),
                 line.substr( afterType + 2 ) );
        text.remove_prefix( std::min( end + 1, text.size() ) );
    }
}

/// A record that shares what is mostly equal; its path lies in one text with all others.
struct CheapRecord {
    std::uint32_t pathStart;
    std::uint16_t pathSize;
    std::uint8_t type;
    std::uint8_t flags;
};

/// Texts of which there are few different ones, by number.
class SharedTexts {
  public:
    std::uint8_t numberOf( std::string_view text ) {
        const auto found = std::ranges::find( texts_, text );
        if ( found != texts_.end() )
            return static_cast<std::uint8_t>( found - texts_.begin() );
        texts_.emplace_back( text );
        return static_cast<std::uint8_t>( texts_.size() - 1 );
    }
    [[nodiscard]] std::string_view text( std::uint8_t number ) const { return texts_[number]; }

  private:
    std::vector<std::string> texts_;
};

class CheapMounts : public LoadedMounts {
  public:
    explicit CheapMounts( const std::string& text ) {
        // The file's text is not kept: the records have their own.
        forEachLine( text, [this]( std::string_view path, std::string_view type, std::string_view flags ) {
            records_.push_back( { static_cast<std::uint32_t>( paths_.size() ),
                                  static_cast<std::uint16_t>( path.size() ), types_.numberOf( type ),
                                  flags_.numberOf( flags ) } );
            paths_ += path;
        } );
        const auto byPath = [this]( const CheapRecord& a, const CheapRecord& b ) {
            return path( a ) < path( b );
        };
        if ( !std::ranges::is_sorted( records_, byPath ) )
            std::ranges::sort( records_, byPath );
    }

    void visit( const MountVisitor& visitor ) const override {
        for ( const CheapRecord& record : records_ )
            visitor( path( record ), types_.text( record.type ), flags_.text( record.flags ) );
    }

  private:
    [[nodiscard]] std::string_view path( const CheapRecord& record ) const {
        return std::string_view( paths_ ).substr( record.pathStart, record.pathSize );
    }

    std::string paths_;
    SharedTexts types_;
    SharedTexts flags_;
    std::vector<CheapRecord> records_;
};

} // namespace

Loaded loadWithFloor( const std::string& fileName ) {
    RecordMap records;
    const std::string text = wholeFile( fileName );
    forEachLine( text, [&records]( std::string_view path, std::string_view type, std::string_view flags ) {
        addRecord( records, path, type, flags );
    } );
    return std::make_unique<LoadedRecords>( std::move( records ) );
}

Loaded loadWithCheapFloor( const std::string& fileName ) {
    return std::make_unique<CheapMounts>( wholeFile( fileName ) );
}

} // namespace Bench
