#include "Cli/HintRules.h"

#include "Cli/Spelling.h"

namespace Corvid::Cli {

namespace {

constexpr char operators[] = "the operators are: == != <= >= < > in notin";

/// The last word in front of what is wrong.
std::string_view wordBefore( const ErrorScene& scene ) {
    return wordAtEndOf( withoutBlanks( scene.before() ) );
}

std::string operatorInCapitals( const ErrorScene& scene ) {
    // In front of a missing operator, one in capitals is taken for a part of the literal.
    const std::string_view word = scene.isExpected( "OP" ) ? wordBefore( scene ) : scene.wrong;
    for ( const std::string_view name : { "and", "in", "notin", "len" } )
        if ( word != name && sameLetters( word, name ) )
            return "operators are written in lower case: " + quoted( name );
    return {};
}

/// A comparison that is not there.
std::string endOfLine( const ErrorScene& scene ) {
    if ( scene.code != "MP070" || !isAtLineEnd( scene.rest ) || wordBefore( scene ) != "and" )
        return {};
    return "behind 'and' stands another comparison: a backslash as the last character of a line joins it "
           "with the next one";
}

std::string parentheses( const ErrorScene& scene ) {
    if ( isOneOf( scene.code, { "MP070", "MP072" } ) && scene.rest.starts_with( '(' ) )
        return "there are no parentheses but those of len( /path.attribute )";
    const bool isMissing =
        scene.code == "MP073" && scene.rest.starts_with( '/' ) && wordBefore( scene ) == "len";
    if ( isMissing || scene.isExpected( "CLOSEPAREN" ) )
        return "the path of 'len' stands in parentheses: len( /path.attribute )";
    return {};
}

std::string operatorOfOtherLanguage( const ErrorScene& scene ) {
    if ( scene.isExpected( "OP" ) && scene.rest.starts_with( '(' ) )
        return "what is compared stands on the left, the path on the right: 1 == len( /path.attribute )";
    const bool isSecond =
        scene.code == "MP072" && isOneOf( scene.rest.substr( 0, 1 ), { "=", "<", ">", "!" } );
    const bool isNumber = !scene.wrong.empty() && scene.wrong.front() >= '0' && scene.wrong.front() <= '9';
    return isSecond || ( scene.isExpected( "OP" ) && !isNumber ) ? operators : std::string();
}

std::string leftOver( const ErrorScene& scene ) {
    if ( scene.code != "MP032" )
        return {};
    if ( scene.rest.starts_with( '.' ) )
        return "a path in a condition has one dot, in front of its attribute";
    return "comparisons are joined with 'and'";
}

std::string conditionHintOfCode( const ErrorScene& scene ) {
    if ( scene.isExpected( "SLASH" ) )
        return "a path in a condition begins with a slash";
    if ( scene.isExpected( "DOT" ) )
        return "behind the path stand a dot and an attribute: /path.attribute";
    if ( scene.code == "MP070" && scene.rest.starts_with( '/' ) )
        return "what is compared stands on the left, the path on the right: true == /path.attribute";
    if ( scene.code == "MP072" )
        return "on the right stands a path with its attribute: 5 == /path.attribute";
    return {};
}

} // namespace

std::string conditionHint( const ErrorScene& scene ) {
    if ( scene.statement != Statement::condition )
        return {};
    for ( const auto hint : { operatorInCapitals, endOfLine, parentheses, operatorOfOtherLanguage, leftOver,
                              conditionHintOfCode } )
        if ( std::string text = hint( scene ); !text.empty() )
            return text;
    return {};
}

} // namespace Corvid::Cli
