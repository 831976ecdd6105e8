#include "Cli/ErrorScene.h"

#include "Cli/PrintableText.h"
#include "Cli/Spelling.h"

#include <algorithm>
#include <array>

namespace Corvid::Cli {

namespace {

constexpr std::string_view blanks = " \t\r";

struct KeywordOf {
    std::string_view keyword;
    Statement statement;
};
constexpr std::array<KeywordOf, 12> keywordTable{ {
    { "agentName", Statement::title },
    { "alias", Statement::alias },
    { "condition", Statement::condition },
    { "conditionBlocker", Statement::condition },
    { "hybridMount", Statement::toggle },
    { "include", Statement::include },
    { "lowMountPrio", Statement::toggle },
    { "mountFilter", Statement::mountFilter },
    { "mountGroup", Statement::mountGroup },
    { "noDefaultMountGroup", Statement::toggle },
    { "rootFlags", Statement::rootFlags },
    { "subAgent", Statement::subAgent },
} };

const KeywordOf* rowOf( std::string_view word ) {
    const auto* const found = std::ranges::find_if(
        keywordTable, [word]( const KeywordOf& row ) { return sameLetters( row.keyword, word ); } );
    return found == keywordTable.end() ? nullptr : found;
}

bool isWordCharacter( char c ) {
    return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) || c == '_';
}

/// What is left of a line without its comment, and without a backslash that joins it with the next one.
struct LineOfCode {
    std::string_view code;
    bool hasComment = false;
    bool goesOn = false; ///< the next line belongs to the same statement

    explicit LineOfCode( std::string_view line ) : code( line ) {
        bool inString = false;
        for ( std::size_t at = 0; at < line.size() && !hasComment; ++at ) {
            inString = inString != ( line[at] == '"' );
            hasComment = line[at] == '#' && !inString;
            if ( hasComment )
                code = line.substr( 0, at );
        }
        const bool isJoined = code.ends_with( '\\' );
        if ( isJoined )
            code.remove_suffix( 1 );
        goesOn = hasComment || isJoined;
    }
};

} // namespace

bool belongsToFilter( Statement statement ) {
    return statement == Statement::mountFilter || statement == Statement::filterAttribute;
}

const std::vector<std::string>& keywords() {
    // GCOVR_EXCL_BR_START: how the compiler gives back a list that is half made
    static const std::vector<std::string> words = [] {
        std::vector<std::string> all;
        all.reserve( keywordTable.size() );
        for ( const KeywordOf& row : keywordTable )
            all.emplace_back( row.keyword );
        return all;
    }();
    // GCOVR_EXCL_BR_STOP
    return words;
}

std::string keyword( std::string_view word ) {
    const KeywordOf* const row = rowOf( word );
    return row ? std::string( row->keyword ) : std::string();
}

bool isOneOf( std::string_view text, std::initializer_list<std::string_view> texts ) {
    return std::ranges::find( texts, text ) != texts.end();
}

std::string quoted( std::string_view text ) {
    return "'" + printable( text ) + "'";
}

std::string_view withoutBlanks( std::string_view text ) {
    text = text.substr( 0, text.find_last_not_of( blanks ) + 1 );
    return text.substr( std::min( text.find_first_not_of( blanks ), text.size() ) );
}

std::string_view wordAt( std::string_view text ) {
    return text.substr(
        0, static_cast<std::size_t>( std::ranges::find_if_not( text, isWordCharacter ) - text.begin() ) );
}

std::string_view wordAtEndOf( std::string_view text ) {
    const auto begin = std::find_if_not( text.rbegin(), text.rend(), isWordCharacter );
    return text.substr( static_cast<std::size_t>( text.rend() - begin ) );
}

bool isAtLineEnd( std::string_view text ) {
    return withoutBlanks( text.substr( 0, text.find( '\n' ) ) ).empty();
}

std::size_t commasIn( std::string_view text ) {
    std::size_t commas = 0;
    bool inString = false;
    for ( const char c : text ) {
        inString = inString != ( c == '"' );
        commas += c == ',' && !inString ? 1 : 0;
    }
    return commas;
}

ErrorScene::ErrorScene( const MountProfileHdlr& hdlr, std::string_view source )
    : code( hdlr.errorDetails().code ), content( source ),
      rest( source.substr( std::min( hdlr.errorDetails().place, source.size() ) ) ),
      place( sourcePlace( source, hdlr.errorDetails().place ) ), handler( hdlr ),
      isInIncludeFile( !hdlr.errorDesc().includeFileName().empty() ) {
    const std::size_t begin = std::min( hdlr.errorDetails().begin, source.size() );
    wrong = source.substr( begin, std::max( hdlr.errorDetails().end, begin ) - begin );
    readStatement( begin );
    recogniseStatement();
    commas = commasIn( text );
    commasBefore = commasIn( before() );
}

void ErrorScene::readStatement( std::size_t begin ) {
    bool isFound = false;
    std::size_t number = 1;
    for ( std::size_t start = 0; start <= content.size(); ++number ) {
        const std::size_t end = std::min( content.find( '\n', start ), content.size() );
        const LineOfCode line( content.substr( start, end - start ) );
        if ( !isFound && begin <= end ) {
            isFound = true;
            wrongAt = text.size() + std::min( begin - start, line.code.size() );
        }
        text += line.code;
        if ( line.hasComment && !isFound && !withoutBlanks( line.code ).empty() )
            lineOfComment = number;
        start = end + 1;
        if ( line.goesOn )
            continue;
        if ( isFound )
            return;
        recogniseStatement();
        if ( !withoutBlanks( text ).empty() )
            previous = statement;
        text.clear();
        lineOfComment = 0;
    }
}

void ErrorScene::recogniseStatement() {
    const std::string_view all = withoutBlanks( text );
    word = wordAt( all );
    afterWord = withoutBlanks( all.substr( word.size() ) );
    const KeywordOf* const row = rowOf( word );
    statement = Statement::mountLine;
    if ( row && row->statement == Statement::toggle && !afterWord.starts_with( ',' ) )
        statement = Statement::toggle;
    else if ( row && afterWord.starts_with( ':' ) && !afterWord.starts_with( "::" ) )
        statement = row->statement;
    else if ( belongsToFilter( previous ) && !word.empty() && !afterWord.starts_with( '/' ) &&
              commasIn( all ) < 2 )
        statement = Statement::filterAttribute;
}

bool ErrorScene::isExpected( std::string_view sign ) const {
    return isOneOf( code, { "MP010", "MP011", "MP012" } ) &&
           handler.errorDesc().description().str().ends_with( " " + std::string( sign ) );
}

bool ErrorScene::isInMountPath() const {
    return statement == Statement::mountLine && commasBefore == 0 && ( commas == 2 || commas == 3 );
}

bool ErrorScene::isInFilterKey() const {
    return statement == Statement::filterAttribute && commasBefore == 1;
}

} // namespace Corvid::Cli
