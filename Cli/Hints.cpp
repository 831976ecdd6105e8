#include "Cli/Hints.h"

#include "Cli/HintRules.h"
#include "Cli/Spelling.h"

#include <algorithm>
#include <array>

namespace Corvid::Cli {

namespace {

constexpr char oneTitle[] = "a file has one title line, its first";

bool startsWithCapital( std::string_view text ) {
    return text.find_first_of( "ABCDEFGHIJKLMNOPQRSTUVWXYZ" ) == 0;
}

bool startsWithSmallLetter( std::string_view text ) {
    return text.find_first_of( "abcdefghijklmnopqrstuvwxyz" ) == 0;
}

/// The trap of the language: a comment takes the end of its line along.
std::string swallowedLineEnd( const ErrorScene& scene ) {
    // Of the line below, a word may have become a part of the name in the line above.
    const std::string_view inFront = withoutBlanks( scene.place.text.substr( 0, scene.place.byteOffset ) );
    if ( scene.lineOfComment == 0 || wordAt( inFront ) != inFront ||
         !isOneOf( scene.code, { "MP021", "MP022", "MP032", "MP061", "MP082" } ) )
        return {};
    return "the comment on line " + std::to_string( scene.lineOfComment ) +
           " takes the end of its line along, so that line " + std::to_string( scene.place.line ) +
           " goes on with it: put the comment on a line of its own";
}

std::string misplacedCondition( const ErrorScene& scene ) {
    const std::string statement = quoted( keyword( scene.word ) );
    if ( scene.handler.currMgName() == "all" )
        return statement + " belongs below a mountGroup: the group 'all' has none";
    if ( !scene.handler.currMg()->entireCondition().empty() )
        return "join both conditions with 'and' on one line";
    return statement + " must be the first line of its mount group";
}

/// A line of which nothing is wrong but that it stands where it does.
std::string misplacedLine( const ErrorScene& scene ) {
    if ( !isOneOf( scene.code, { "MP030", "MP031" } ) )
        return {};
    const bool isMount = scene.statement == Statement::mountLine && belongsToFilter( scene.previous );
    if ( scene.code == "MP030" && ( isMount || scene.statement == Statement::include ) )
        return "a mount filter closes the group before it: put " +
               ( isMount ? "the mounts" : quoted( keyword( scene.word ) ) ) +
               " above it, or below a mountGroup";
    switch ( scene.statement ) {
    case Statement::mountLine:
    case Statement::filterAttribute:
        return {};
    case Statement::condition:
        return misplacedCondition( scene );
    case Statement::title:
        return oneTitle;
    default:
        return quoted( keyword( scene.word ) ) +
               " belongs above the first mount line and the first mountGroup";
    }
}

bool forgetsColon( const ErrorScene& scene ) {
    constexpr std::string_view beginnings = "%=*";
    const bool goesOn = !wordAt( scene.afterWord ).empty() || scene.afterWord.empty() ||
                        beginnings.find( scene.afterWord.front() ) != std::string_view::npos;
    const bool isMount = scene.commas >= 2 && !scene.rest.starts_with( '=' );
    const bool isKeyword = !keyword( scene.word ).empty();
    return scene.statement == Statement::mountLine && isKeyword && goesOn && !isMount;
}

std::string missingColon( const ErrorScene& scene ) {
    const bool isAlias = scene.code == "MP024" && scene.rest.starts_with( '=' );
    if ( scene.isInIncludeFile || !forgetsColon( scene ) ||
         !( isAlias || isOneOf( scene.code, { "MP010", "MP011", "MP012", "MP013", "MP030", "MP041" } ) ) )
        return {};
    if ( keyword( scene.word ) == "agentName" )
        return oneTitle;
    return "a colon is missing: " + keyword( scene.word ) + ": ...";
}

std::string statementInIncludeFile( const ErrorScene& scene ) {
    if ( scene.isInIncludeFile && scene.code == "MP083" && scene.statement == Statement::title )
        return "the pattern matches an agent file, and those cannot be included";
    const bool isStatement =
        isOneOf( scene.code, { "MP083", "MP084" } ) && scene.statement != Statement::mountLine;
    if ( !scene.isInIncludeFile || !( isStatement || forgetsColon( scene ) ) )
        return {};
    return "an include file holds nothing but mount lines: " + quoted( keyword( scene.word ) ) +
           " belongs in the agent file";
}

std::string misspeltKeyword( const ErrorScene& scene ) {
    const bool mayBeKeyword = scene.afterWord.starts_with( ':' ) || scene.afterWord.empty();
    if ( scene.isInIncludeFile || !mayBeKeyword || !keyword( scene.word ).empty() ||
         !isOneOf( scene.code, { "MP010", "MP013", "MP030", "MP031" } ) )
        return {};
    return didYouMean( scene.word, keywords() );
}

/// A line that was to go on in the next one.
std::string brokenLine( const ErrorScene& scene ) {
    const std::string_view before = withoutBlanks( scene.before() );
    if ( scene.code == "MP030" && scene.wrong == "and" && scene.previous == Statement::condition )
        return "a condition goes on in the next line only behind a backslash, as the last character of its "
               "line";
    if ( !isOneOf( scene.code, { "MP023", "MP041" } ) || !before.ends_with( ',' ) ||
         !isAtLineEnd( scene.rest ) )
        return {};
    const std::string_view below =
        scene.rest.substr( std::min( scene.rest.find( '\n' ), scene.rest.size() - 1 ) + 1 );
    const std::string_view next = withoutBlanks( below.substr( 0, below.find( '\n' ) ) );
    const std::size_t commas = scene.commas + commasIn( next );
    if ( wordAt( next ).empty() || commas < 2 || commas > 3 )
        return {};
    return "a line goes on in the next one only behind a backslash, as its last character";
}

std::string unknownTemplateKey( const ErrorScene& scene ) {
    if ( scene.code != "MP024" )
        return {};
    std::string key( scene.wrong );
    std::erase_if( key, []( char c ) { return c == ' ' || c == '\t'; } );
    const std::string meant = didYouMean( key, scene.handler.knownTemplateKeys() );
    return meant.empty() ? "declare " + quoted( key ) + " in the title line, or by an alias above" : meant;
}

constexpr std::string_view legalFlags = "rwicfCDSBNO";

/// Whether a line below declares a filter of that name.
bool isFilterBelow( std::string_view rest, std::string_view name ) {
    for ( ; !rest.empty(); rest.remove_prefix( std::min( rest.find( '\n' ), rest.size() - 1 ) + 1 ) ) {
        const std::string_view line = withoutBlanks( rest.substr( 0, rest.find_first_of( "#\r\n" ) ) );
        const std::string_view afterWord = withoutBlanks( line.substr( wordAt( line ).size() ) );
        const bool isAboutFilter = keyword( wordAt( line ) ) == "mountFilter";
        if ( isAboutFilter && afterWord.starts_with( ':' ) && withoutBlanks( afterWord.substr( 1 ) ) == name )
            return true;
    }
    return false;
}

std::string unknownMountFilter( const ErrorScene& scene ) {
    if ( scene.code != "MP044" )
        return {};
    if ( !scene.isInIncludeFile && isFilterBelow( scene.rest, scene.wrong ) )
        return "declare the filter above the lines that name it";
    std::string meant = didYouMean( scene.wrong, scene.handler.knownMountFilters() );
    if ( meant.empty() && scene.wrong.find_first_not_of( legalFlags ) == std::string_view::npos )
        return "the fourth part of a line names a mount filter: several flags are one word, such as rw";
    return meant;
}

/// The flags in small letters; empty when these are not all flags, or when capital ones may have been meant.
std::string inSmallLetters( std::string_view flags ) {
    std::string small;
    for ( const char c : flags ) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        const char flag = isCapital ? static_cast<char>( c - 'A' + 'a' ) : c;
        if ( legalFlags.find( flag ) == std::string_view::npos ||
             ( isCapital && legalFlags.find( c ) != std::string_view::npos ) )
            return {};
        if ( small.find( flag ) == std::string::npos )
            small += flag;
    }
    return small;
}

std::string illegalFlag( const ErrorScene& scene ) {
    if ( scene.code != "MP042" || scene.wrong.find_first_not_of( legalFlags ) == std::string_view::npos )
        return {};
    const std::string small = inSmallLetters( scene.wrong );
    if ( small.empty() )
        return "flags are single letters, in any order, and case matters: r w i c f C D S B N O";
    return "case matters: did you mean " + quoted( small ) + "?";
}

std::string filterAttribute( const ErrorScene& scene ) {
    // A line with a comma too many looks like a mount line.
    const bool isTooLong =
        belongsToFilter( scene.previous ) && scene.code == "MP032" && scene.commasBefore == 1;
    if ( !isTooLong && scene.statement != Statement::filterAttribute )
        return {};
    if ( !startsWithSmallLetter( scene.word ) )
        return "an attribute begins with a lower-case letter";
    return "a line of a mount filter is: ATTRIBUTE, or: ATTRIBUTE, KEY";
}

std::string shortMountLine( const ErrorScene& scene ) {
    const bool isShort =
        scene.code == "MP041" ? scene.commas == 1 : scene.isExpected( "COMMA" ) && scene.commas < 2;
    if ( scene.statement != Statement::mountLine || !isShort )
        return {};
    return "a mount line has three parts: PATH, TYPE, FLAGS";
}

std::string mistakenType( const ErrorScene& scene ) {
    if ( scene.statement != Statement::mountLine || scene.code != "MP041" ||
         !startsWithSmallLetter( scene.wrong ) )
        return {};
    std::string type( scene.wrong );
    type[0] = static_cast<char>( type[0] - 'a' + 'A' );
    return "each part of a type begins with a capital letter: did you mean " + quoted( type ) + "?";
}

/// Another sign between two parts of a type.
std::string joinedType( const ErrorScene& scene ) {
    const std::string_view inFront = scene.content.substr( 0, scene.content.size() - scene.rest.size() );
    const bool isBetweenWords = !wordAtEndOf( inFront ).empty() && scene.rest.size() > 1 &&
                                startsWithCapital( scene.rest.substr( 1 ) );
    if ( scene.statement != Statement::mountLine || scene.commasBefore != 1 || !isBetweenWords ||
         !isOneOf( scene.rest.substr( 0, 1 ), { ":", ".", "/" } ) )
        return {};
    return "the parts of a type are joined with '::'";
}

/// Where a pattern ended, though its writer did not mean it to.
std::string endOfPattern( const ErrorScene& scene ) {
    const auto begin = static_cast<std::size_t>( scene.wrong.data() - scene.content.data() );
    if ( !isOneOf( scene.code, { "MP080", "MP081", "MP082" } ) || isAtLineEnd( scene.rest ) ||
         sourcePlace( scene.content, begin ).line != scene.place.line )
        return {};
    if ( scene.rest.starts_with( '/' ) )
        return "a pattern has no slashes: include files lie beside the agent file";
    if ( scene.rest.starts_with( ',' ) )
        return "each pattern has an 'include' of its own";
    return "a pattern is made of words, whole numbers, '-', '.' and '*', which can stand for all else";
}

/// Signs in the name of the agent file's directory that mean something in a pattern.
std::string patternOfDirectory( const ErrorScene& scene ) {
    const std::string file = scene.handler.errorDesc().fileName().str();
    const std::string directory = file.substr( 0, file.rfind( '/' ) + 1 );
    const std::size_t sign = directory.find_first_of( "*?[\\" );
    if ( scene.code != "MP080" || sign == std::string::npos )
        return {};
    return "the directory's name is part of the pattern, and so is the " +
           quoted( directory.substr( sign, 1 ) ) + " in it";
}

struct Row {
    std::string_view code;
    std::string_view hint;
};

/// What holds whatever the source looks like.
std::string hintOfCode( const ErrorScene& scene ) {
    static constexpr std::array<Row, 8> rows{ {
        { "MP004", "a quoted text ends on its line: a double quote is missing" },
        { "MP071", "a hyphen in front of a literal is a minus sign, so a number has to follow" },
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

std::string formOfMountLine( const ErrorScene& scene ) {
    if ( scene.code == "MP032" && scene.commasBefore == 2 )
        return "flags are one word, such as rw";
    return scene.commas == 0 ? "" : "write it as: PATH, TYPE, FLAGS, or: PATH, TYPE, FLAGS, FILTER";
}

/// How a statement is written that does not end where it should, or lacks a part.
std::string formOfStatement( const ErrorScene& scene ) {
    if ( !isOneOf( scene.code,
                   { "MP010", "MP011", "MP012", "MP013", "MP020", "MP021", "MP022", "MP023", "MP031", "MP032",
                     "MP040", "MP041", "MP051", "MP060", "MP061", "MP070", "MP081" } ) )
        return {};
    switch ( scene.statement ) {
    case Statement::title:
        return "write it as: agentName: NAME, or: agentName: NAME-%KEY";
    case Statement::subAgent:
        return "write it as: subAgent: NAME, or: subAgent: NAME-%KEY";
    case Statement::alias:
        return "write it as: alias: %NEW = %KEY";
    case Statement::rootFlags:
        return "write it as: rootFlags: FLAGS, which are one word, such as rw";
    case Statement::toggle:
        return quoted( keyword( scene.word ) ) + " stands alone on its line";
    case Statement::condition:
        return "write it as: " + keyword( scene.word ) + ": true == /path.attribute";
    case Statement::mountFilter:
        return "write it as: mountFilter: NAME, and its attributes on the lines below";
    case Statement::include:
        return "write it as: include: PATTERN";
    case Statement::mountGroup:
        return "write it as: mountGroup: NAME, or: mountGroup: NAME, PRIORITY, which is from 1 to 99";
    default:
        return formOfMountLine( scene );
    }
}

} // namespace

std::string hintFor( const MountProfileHdlr& handler, std::string_view content ) {
    const ErrorScene scene( handler, content );
    // The more a mistake explains, the earlier it is looked for.
    for ( const auto hint : { swallowedLineEnd, brokenLine, conditionHint, tokenHint, misplacedLine,
                              statementInIncludeFile, missingColon, misspeltKeyword, unknownTemplateKey,
                              unknownMountFilter, illegalFlag, filterAttribute, shortMountLine, mistakenType,
                              joinedType, endOfPattern, patternOfDirectory, hintOfCode, formOfStatement } )
        if ( std::string text = hint( scene ); !text.empty() )
            return text;
    return {};
}

std::string hintForNoAgentFile( std::string_view content ) {
    while ( !content.empty() ) {
        const std::string_view line = withoutBlanks( content.substr( 0, content.find( '\n' ) ) );
        const std::string_view word = wordAt( line );
        const std::string_view afterWord = withoutBlanks( line.substr( word.size() ) );
        const bool isTitle = keyword( word ) == "agentName";
        const bool isMount = isOneOf( afterWord.substr( 0, 1 ), { "/", ",", ":" } ) || commasIn( line ) >= 2;
        if ( isTitle && !afterWord.empty() && !isMount )
            return "a colon is missing: agentName: ...";
        if ( !line.empty() && line.front() != '#' )
            return afterWord.starts_with( ':' ) ? didYouMean( word, { "agentName" } ) : std::string();
        content.remove_prefix( std::min( content.find( '\n' ), content.size() - 1 ) + 1 );
    }
    return {};
}

} // namespace Corvid::Cli
