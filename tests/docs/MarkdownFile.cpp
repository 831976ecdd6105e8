#include "docs/MarkdownFile.h"

#include <cctype>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace CorvidTest {

namespace {

constexpr char fence[] = "```";

/// As the usual renderers make them of headings.
std::string anchorOf( const std::string& heading ) {
    std::string anchor;
    for ( const char c : heading ) {
        const auto byte = static_cast<unsigned char>( c );
        if ( std::isalnum( byte ) || c == '-' || c == '_' )
            anchor += static_cast<char>( std::tolower( byte ) );
        else if ( c == ' ' )
            anchor += '-';
    }
    return anchor;
}

} // namespace

std::string sourcePath( const std::string& name ) {
    return CORVID_SOURCE_DIR "/" + name;
}

std::string contentOf( const std::string& path ) {
    std::ifstream file( path, std::ios::binary );
    std::ostringstream content;
    content << file.rdbuf();
    if ( !file || !content )
        throw std::runtime_error( "cannot read " + path );
    return content.str();
}

MarkdownFile::MarkdownFile( const std::string& name ) : name_( name ) {
    std::istringstream content( contentOf( sourcePath( name ) ) );
    bool inBlock = false;
    std::string line;
    for ( unsigned number = 1; std::getline( content, line ); ++number ) {
        if ( !line.starts_with( fence ) ) {
            if ( inBlock )
                blocks_.back().text += line + "\n";
            else
                readText( line, number );
            continue;
        }
        inBlock = !inBlock;
        if ( inBlock ) {
            const std::string words = line.substr( sizeof fence - 1 );
            const auto blank = words.find( ' ' );
            blocks_.push_back( { words.substr( 0, blank ),
                                 blank == std::string::npos ? "" : words.substr( blank + 1 ), "",
                                 headings_.empty() ? "" : headings_.back(), number } );
        }
    }
    if ( inBlock )
        throw std::runtime_error( name + ": the last fence is never closed" );
}

void MarkdownFile::readText( const std::string& line, unsigned number ) {
    static const std::regex heading( "#+ (.*)" );
    static const std::regex inlineCode( "`[^`]*`" );
    static const std::regex link( R"(\[[^\]]*\]\(([^)]+)\))" );
    std::smatch match;
    if ( std::regex_match( line, match, heading ) )
        headings_.push_back( match[1] );
    const std::string prose = std::regex_replace( line, inlineCode, "`" );
    for ( std::sregex_iterator found( prose.begin(), prose.end(), link ); found != std::sregex_iterator();
          ++found )
        links_.push_back( { ( *found )[1], number } );
}

std::vector<std::string> MarkdownFile::anchors() const {
    std::vector<std::string> anchors;
    std::map<std::string, unsigned> seen;
    for ( const auto& heading : headings_ ) {
        const std::string anchor = anchorOf( heading );
        const unsigned before = seen[anchor]++;
        anchors.push_back( before == 0 ? anchor : anchor + "-" + std::to_string( before ) );
    }
    return anchors;
}

} // namespace CorvidTest
