#include "Cli/HintRules.h"

#include <algorithm>

namespace Corvid::Cli {

namespace {

bool startsWithOneOf( std::string_view text, std::initializer_list<std::string_view> beginnings ) {
    return std::ranges::any_of(
        beginnings, [text]( std::string_view beginning ) { return text.starts_with( beginning ); } );
}

bool isHexadecimal( std::string_view number ) {
    return startsWithOneOf( number, { "0x", "0X" } );
}

/// Whether what is wrong was to be a part of a name.
bool isInName( const ErrorScene& scene ) {
    switch ( scene.statement ) {
    case Statement::title:
    case Statement::subAgent:
    case Statement::mountFilter:
    case Statement::include:
        return true;
    case Statement::mountGroup:
        return scene.commasBefore == 0;
    case Statement::condition:
        return isOneOf( scene.code, { "MP011", "MP070", "MP074" } );
    default:
        return isOneOf( scene.code, { "MP041", "MP051" } ) || scene.before().ends_with( '%' );
    }
}

/// Why a token cannot stand in a path or a name; empty for other tokens.
std::string whyNotPlain( std::string_view token ) {
    if ( isOneOf( token, { "in", "notin", "and" } ) )
        return quoted( token ) + " is an operator everywhere";
    if ( isOneOf( keyword( token ), { "hybridMount", "lowMountPrio", "noDefaultMountGroup" } ) )
        return quoted( token ) + " is a statement everywhere";
    const bool isNumber = !token.empty() && token.front() >= '0' && token.front() <= '9';
    if ( isNumber && token.find( '.' ) != std::string_view::npos )
        return quoted( token ) + " is a number with a decimal point";
    if ( isNumber && isHexadecimal( token ) )
        return quoted( token ) + " is a hexadecimal number";
    return {};
}

/// For what may stand in quotes.
std::string quotesAround( const ErrorScene& scene ) {
    if ( scene.isInMountPath() )
        return ": put the whole path in double quotes";
    return scene.isInFilterKey() ? ": put the whole key in double quotes" : "";
}

std::string tokenInName( const ErrorScene& scene ) {
    const bool isBehindStatement =
        scene.statement == Statement::mountLine && scene.commasBefore == 0 && scene.wrong.starts_with( ',' );
    const std::string reason = whyNotPlain( isBehindStatement ? scene.word : scene.wrong );
    if ( reason.empty() || isOneOf( scene.code, { "MP003", "MP083" } ) )
        return {};
    if ( const std::string remedy = quotesAround( scene ); !remedy.empty() )
        return reason + remedy;
    if ( scene.code == "MP040" )
        return reason + " and cannot be part of a path";
    return isInName( scene ) ? reason + " and cannot be part of a name" : std::string();
}

std::string encoding( const ErrorScene& scene ) {
    if ( scene.code != "MP001" )
        return {};
    if ( scene.rest.starts_with( "\xEF\xBB\xBF" ) )
        return "the file has a byte order mark here: save it without one";
    // Every other byte of ASCII text in UTF-16 is a NUL.
    const bool hasNuls =
        scene.rest.size() > 2 && scene.rest[0] == '\0' && scene.rest[1] != '\0' && scene.rest[2] == '\0';
    if ( hasNuls || startsWithOneOf( scene.rest, { "\xFF\xFE", "\xFE\xFF" } ) )
        return "this looks like UTF-16: save the file as plain ASCII or as UTF-8";
    if ( scene.rest.starts_with( "\xC2\xA0" ) )
        return "this is a no-break space: put a plain blank in its place";
    return {};
}

/// Quotes that are none, and quotes around what has none.
std::string quotes( const ErrorScene& scene ) {
    const bool isOther =
        scene.code == "MP001" &&
        startsWithOneOf( scene.rest, { "'", "\xE2\x80\x9C", "\xE2\x80\x9D", "\xE2\x80\x9E" } );
    const bool mayBeQuoted = scene.isInMountPath() || scene.isInFilterKey();
    if ( isOther && mayBeQuoted )
        return "texts are quoted with the plain double quote, \"";
    const bool isQuoted = scene.wrong.starts_with( '"' ) && !isOneOf( scene.code, { "MP004", "MP032" } );
    if ( ( isOther || isQuoted ) && !mayBeQuoted )
        return "nothing can be quoted but the path of a mount and the key of a filter's attribute";
    return {};
}

/// Signs that other languages have.
std::string strangeSign( const ErrorScene& scene ) {
    if ( scene.code != "MP001" )
        return {};
    if ( scene.rest.starts_with( ';' ) && withoutBlanks( scene.before() ).empty() )
        return "a comment begins with #";
    if ( scene.rest.starts_with( ';' ) && isAtLineEnd( scene.rest.substr( 1 ) ) )
        return "a statement ends with its line, without a semicolon";
    if ( scene.statement == Statement::condition && startsWithOneOf( scene.rest, { "&", "|" } ) )
        return "comparisons can only be joined with 'and'";
    if ( scene.statement == Statement::mountLine && scene.commasBefore == 2 && scene.rest.starts_with( '|' ) )
        return "flags are one word, such as rw";
    return {};
}

/// What is none of the path's characters.
std::string unquotedPath( const ErrorScene& scene ) {
    const bool isStrange = isOneOf( scene.code, { "MP001", "MP010", "MP011", "MP012", "MP040" } );
    if ( isStrange && scene.text.starts_with( "//" ) && scene.commas < 2 )
        return "a comment begins with #";
    if ( isStrange && scene.isInFilterKey() )
        return "a key with such characters stands in double quotes";
    if ( !isStrange || !scene.isInMountPath() || scene.rest.starts_with( ',' ) )
        return {};
    if ( scene.text.find( '"' ) != std::string::npos )
        return "a path is quoted as a whole, or not at all";
    if ( scene.before().ends_with( '?' ) )
        return "'?' can only be the end of a path";
    if ( scene.rest.starts_with( '/' ) )
        return "between the units of a path stands one slash";
    return "a path with such characters stands in double quotes";
}

std::string incompleteNumber( const ErrorScene& scene ) {
    if ( scene.code != "MP003" )
        return {};
    if ( isHexadecimal( scene.wrong ) )
        return "0x begins a hexadecimal number, and its digits are missing" + quotesAround( scene );
    const std::string reason = "digits with a dot behind them are taken for a decimal number";
    return reason + ( scene.statement == Statement::include ? ": let a letter or '*' stand between"
                                                            : quotesAround( scene ) );
}

std::string loneSign( const ErrorScene& scene ) {
    const bool isLone = scene.code == "MP002" && scene.wrong.starts_with( '!' );
    return isLone ? "'!' is a sign only with '=' behind it: !=" : "";
}

std::string brokenContinuation( const ErrorScene& scene ) {
    if ( scene.code != "MP005" )
        return {};
    if ( scene.wrong.ends_with( "\\\r" ) )
        return "the line ends in CR LF: a backslash joins lines only with a plain LF behind it";
    return "nothing may stand behind the backslash, not even a blank or a comment";
}

} // namespace

std::string tokenHint( const ErrorScene& scene ) {
    for ( const auto hint : { tokenInName, encoding, quotes, strangeSign, unquotedPath, incompleteNumber,
                              loneSign, brokenContinuation } )
        if ( std::string text = hint( scene ); !text.empty() )
            return text;
    return scene.code == "MP001" ? "this character means nothing outside of comments and quoted texts" : "";
}

} // namespace Corvid::Cli
