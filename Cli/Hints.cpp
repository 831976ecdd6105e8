#include "Cli/Hints.h"

#include "Cli/PrintableText.h"
#include "Cli/SourceText.h"
#include "Cli/Spelling.h"

#include <algorithm>
#include <array>

namespace Corvid::Cli {

namespace {

constexpr std::string_view blanks = " \t\r";

const std::vector<std::string>& keywords() {
    // GCOVR_EXCL_BR_START: how the compiler gives back a list that is half made
    static const std::vector<std::string> words{
        "agentName",    "alias",       "condition",  "conditionBlocker",    "hybridMount", "include",
        "lowMountPrio", "mountFilter", "mountGroup", "noDefaultMountGroup", "rootFlags",   "subAgent" };
    // GCOVR_EXCL_BR_STOP
    return words;
}

/// The keyword as it is usually spelled; empty for other words.
std::string keyword( std::string_view word ) {
    const auto found = std::ranges::find_if(
        keywords(), [word]( const std::string& keyword ) { return sameLetters( keyword, word ); } );
    return found == keywords().end() ? std::string() : *found;
}

bool isSwitch( std::string_view keyword ) {
    return keyword == "hybridMount" || keyword == "lowMountPrio" || keyword == "noDefaultMountGroup";
}

bool isOneOf( std::string_view text, std::initializer_list<std::string_view> texts ) {
    return std::ranges::find( texts, text ) != texts.end();
}

std::string quoted( std::string_view text ) {
    return "'" + printable( text ) + "'";
}

std::string_view withoutLeadingBlanks( std::string_view text ) {
    return text.substr( std::min( text.find_first_not_of( blanks ), text.size() ) );
}

/// The letters, digits and underscores that a text begins with.
std::string_view wordAt( std::string_view text ) {
    const auto isPart = []( char c ) {
        return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) || c == '_';
    };
    return { text.data(),
             static_cast<std::size_t>( std::ranges::find_if_not( text, isPart ) - text.begin() ) };
}

/// An error, and what the source looks like around it.
struct Scene {
    std::string_view code;
    std::string_view content;
    std::string_view rest;      ///< of the content, from the place on
    std::string_view wrong;     ///< what is wrong
    std::string_view word;      ///< that the place's line begins with; may be empty
    std::string_view afterWord; ///< the rest of that line, without blanks in front
    SourcePlace place;
    const MountProfileHdlr& handler;

    Scene( const MountProfileHdlr& hdlr, std::string_view text )
        : code( hdlr.errorDetails().code ), content( text ),
          rest( text.substr( std::min( hdlr.errorDetails().place, text.size() ) ) ),
          wrong( range( text, hdlr.errorDetails() ) ),
          place( sourcePlace( text, hdlr.errorDetails().place ) ), handler( hdlr ) {
        const std::string_view line = withoutLeadingBlanks( place.text );
        word = wordAt( line );
        afterWord = withoutLeadingBlanks( line.substr( word.size() ) );
    }

    [[nodiscard]] bool isFirstOnLine() const {
        return withoutLeadingBlanks( place.text.substr( 0, place.byteOffset ) ).empty();
    }

  private:
    static std::string_view range( std::string_view text, const ErrorDetails& details ) {
        const std::size_t begin = std::min( details.begin, text.size() );
        return text.substr( begin, std::max( details.end, begin ) - begin );
    }
};

/// Where a comment begins that stands behind something else on a line; npos when there is none.
std::size_t trailingComment( std::string_view line ) {
    bool inString = false;
    for ( std::size_t at = 0; at < line.size(); ++at ) {
        if ( line[at] == '"' )
            inString = !inString;
        if ( line[at] == '#' && !inString )
            return withoutLeadingBlanks( line.substr( 0, at ) ).empty() ? std::string_view::npos : at;
    }
    return std::string_view::npos;
}

/// The trap of the language: a comment takes the end of its line along.
std::string swallowedLineEnd( const Scene& scene ) {
    const auto start = static_cast<std::size_t>( scene.place.text.data() - scene.content.data() );
    if ( start == 0 || !scene.isFirstOnLine() )
        return {};
    const SourcePlace before = sourcePlace( scene.content, start - 1 );
    if ( trailingComment( before.text ) == std::string_view::npos )
        return {};
    return "the comment on line " + std::to_string( before.line ) +
           " takes the end of its line along, so that line " + std::to_string( scene.place.line ) +
           " goes on with it: put the comment on a line of its own";
}

std::string operatorInName( const Scene& scene ) {
    if ( !isOneOf( scene.wrong, { "in", "notin", "and" } ) )
        return {};
    const std::string isOperator = quoted( scene.wrong ) + " is an operator everywhere";
    if ( isOneOf( scene.code, { "MP010", "MP011", "MP012", "MP040" } ) )
        return isOperator + ": put the whole path in double quotes";
    return isOperator + " and cannot be part of a name";
}

std::string operatorInCapitals( const Scene& scene ) {
    for ( const std::string_view word : { "and", "in", "notin" } )
        if ( scene.wrong != word && sameLetters( scene.wrong, word ) &&
             keyword( scene.word ).starts_with( "condition" ) )
            return "operators are written in lower case: " + quoted( word );
    return {};
}

std::string numberInName( const Scene& scene ) {
    const std::string_view digits = wordAt( scene.wrong );
    const bool isNumber = !digits.empty() && digits.front() <= '9'; // nothing comes before the digits
    if ( !isNumber || isOneOf( scene.code, { "MP003", "MP032", "MP063", "MP072" } ) )
        return {};
    if ( scene.wrong.substr( digits.size() ).starts_with( '.' ) )
        return quoted( scene.wrong ) +
               " is a number with a decimal point: paths and names are made of whole numbers";
    if ( digits.size() > 1 && ( digits[1] == 'x' || digits[1] == 'X' ) )
        return quoted( scene.wrong ) + " is a hexadecimal number: paths and names are made of whole numbers";
    return {};
}

/// A line that begins with a keyword, in a place where that means nothing.
std::string misplacedStatement( const Scene& scene ) {
    const std::string statement = keyword( scene.word );
    const bool isComplete = isSwitch( statement ) ? scene.afterWord.empty() || scene.afterWord.front() != ','
                                                  : scene.afterWord.starts_with( ':' );
    if ( statement.empty() || !isComplete )
        return {};
    if ( isOneOf( scene.code, { "MP083", "MP084" } ) )
        return "an include file holds nothing but mount lines: " + quoted( statement ) +
               " belongs in the agent file";
    if ( !isOneOf( scene.code, { "MP030", "MP031" } ) )
        return {};
    if ( statement.starts_with( "condition" ) )
        return quoted( statement ) + " must be the first line of its mount group";
    if ( statement == "agentName" )
        return "a file has one title line, its first";
    if ( statement == "include" )
        return "a mount filter closes the group before it: put " + quoted( statement ) +
               " above it, or below a mountGroup";
    return quoted( statement ) + " belongs above the first mount line and the first mountGroup";
}

std::string missingColon( const Scene& scene ) {
    const std::string statement = keyword( scene.word );
    if ( statement.empty() || isSwitch( statement ) || scene.afterWord.starts_with( ':' ) ||
         !isOneOf( scene.code, { "MP010", "MP011", "MP012", "MP013" } ) )
        return {};
    return "a colon is missing: " + statement + ": ...";
}

std::string misspeltKeyword( const Scene& scene ) {
    const bool mayBeKeyword = scene.afterWord.starts_with( ':' ) || scene.afterWord.empty();
    if ( !mayBeKeyword || !keyword( scene.word ).empty() ||
         !isOneOf( scene.code, { "MP010", "MP013", "MP030", "MP031", "MP084" } ) )
        return {};
    return didYouMean( scene.word, keywords() );
}

std::string unknownTemplateKey( const Scene& scene ) {
    if ( scene.code != "MP024" )
        return {};
    std::string key( scene.wrong );
    std::erase_if( key, []( char c ) { return blanks.find( c ) != std::string_view::npos; } );
    const std::string meant = didYouMean( key, scene.handler.knownTemplateKeys() );
    return meant.empty() ? "declare " + quoted( key ) + " in the title line, or by an alias above" : meant;
}

std::string unknownMountFilter( const Scene& scene ) {
    return scene.code == "MP044" ? didYouMean( scene.wrong, scene.handler.knownMountFilters() )
                                 : std::string();
}

std::string illegalFlag( const Scene& scene ) {
    constexpr std::string_view legal = "rwicfCDSBNO";
    if ( scene.code != "MP042" )
        return {};
    const auto illegal = scene.wrong.find_first_not_of( legal );
    if ( illegal == std::string_view::npos )
        return {};
    const std::string_view flag = scene.wrong.substr( illegal, 1 );
    for ( const char& c : legal )
        if ( sameLetters( { &c, 1 }, flag ) )
            return "case matters: did you mean " + quoted( { &c, 1 } ) + "?";
    return "flags are single letters, in any order: r w i c f C D S B N O";
}

std::string mistakenType( const Scene& scene ) {
    if ( scene.code != "MP041" || scene.wrong.empty() || scene.wrong[0] < 'a' || scene.wrong[0] > 'z' )
        return {};
    std::string type( scene.wrong );
    type[0] = static_cast<char>( type[0] - 'a' + 'A' );
    return "each part of a type begins with a capital letter: did you mean " + quoted( type ) + "?";
}

std::string strangeCharacter( const Scene& scene ) {
    if ( scene.code != "MP001" )
        return {};
    if ( scene.rest.starts_with( "\xEF\xBB\xBF" ) )
        return "the file has a byte order mark here: save it without one";
    for ( const std::string_view quote : { "'", "\xE2\x80\x9C", "\xE2\x80\x9D", "\xE2\x80\x9E" } )
        if ( scene.rest.starts_with( quote ) )
            return "texts are quoted with the plain double quote, \"";
    if ( scene.rest.starts_with( "\xC2\xA0" ) )
        return "this is a no-break space: put a plain blank in its place";
    return "a path with such characters stands in double quotes";
}

std::string brokenContinuation( const Scene& scene ) {
    if ( scene.code != "MP005" )
        return {};
    if ( scene.wrong.ends_with( "\\\r" ) )
        return "the line ends in CR LF: a backslash joins lines only with a plain LF behind it";
    return "nothing may stand behind the backslash, not even a blank or a comment";
}

std::string shortMountLine( const Scene& scene ) {
    const bool lacksPart = std::ranges::count( scene.place.text, ',' ) < 2;
    if ( !isOneOf( scene.code, { "MP010", "MP011", "MP012" } ) || !lacksPart ||
         !scene.handler.errorDesc().description().str().ends_with( "COMMA" ) )
        return {};
    return "a mount line has three parts: PATH, TYPE, FLAGS";
}

std::string slashInPattern( const Scene& scene ) {
    if ( !isOneOf( scene.code, { "MP080", "MP082" } ) || !scene.rest.starts_with( '/' ) )
        return {};
    return "a pattern has no slashes: include files lie beside the agent file";
}

/// What holds whatever the source looks like.
std::string hintOfCode( const Scene& scene ) {
    struct Row {
        std::string_view code;
        std::string_view hint;
    };
    static constexpr std::array<Row, 11> rows{ {
        { "MP003",
          "digits with a dot behind them are taken for a decimal number: let a letter or '*' stand between" },
        { "MP004", "a quoted text ends on its line: a double quote is missing" },
        { "MP070", "what is compared stands on the left, the path on the right: true == /path.attribute" },
        { "MP071", "a hyphen in front of a literal is a minus sign, so a number has to follow" },
        { "MP072", "what is compared stands on the left, the path on the right: 5 == /path.attribute" },
        { "MP073", "a path in a condition begins with a slash" },
        { "MP074", "an attribute begins with a lower-case letter" },
        { "MP076", "join both conditions with 'and' on one line" },
        { "MP080", "a pattern is taken beside the agent file, whatever the working directory is" },
        { "MP083", "an include file holds mount lines, at least one, and nothing else" },
        { "MP084", "an include file holds nothing but mount lines" },
    } };
    const auto* found = std::ranges::find( rows, scene.code, &Row::code );
    return found == rows.end() ? std::string() : std::string( found->hint );
}

} // namespace

std::string hintFor( const MountProfileHdlr& handler, std::string_view content ) {
    const Scene scene( handler, content );
    // The more a mistake explains, the earlier it is looked for.
    for ( const auto hint :
          { swallowedLineEnd, operatorInCapitals, operatorInName, misplacedStatement, missingColon,
            misspeltKeyword, unknownTemplateKey, unknownMountFilter, illegalFlag, mistakenType,
            strangeCharacter, brokenContinuation, numberInName, shortMountLine, slashInPattern, hintOfCode } )
        if ( std::string text = hint( scene ); !text.empty() )
            return text;
    return {};
}

std::string hintForNoAgentFile( std::string_view content ) {
    while ( !content.empty() ) {
        const std::string_view line = withoutLeadingBlanks( content.substr( 0, content.find( '\n' ) ) );
        const std::string_view word = wordAt( line );
        if ( !line.empty() && line.front() != '#' )
            return withoutLeadingBlanks( line.substr( word.size() ) ).starts_with( ':' )
                       ? didYouMean( word, { "agentName" } )
                       : std::string();
        content.remove_prefix( std::min( content.find( '\n' ), content.size() - 1 ) + 1 );
    }
    return {};
}

} // namespace Corvid::Cli
