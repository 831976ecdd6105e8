// The parser's choices by look-ahead, for every pair of tokens, against what the language says of them.

#include <gtest/gtest.h>

#include "RuleRun.h"

namespace CorvidTest {

namespace {

using Corvid::TokenPath;

/// The samples behind a beginning, with blanks between.
std::string lineOf( std::initializer_list<TokenSample> samples, std::string line = "" ) {
    for ( const TokenSample& sample : samples )
        line.append( " " ).append( sample.text );
    return line;
}

/// The token behind the second one is the appended line end, or a second one when that was a line end itself.
template <class Expectation>
void forEveryPair( Expectation expect ) {
    for ( const TokenSample& first : tokenSamples() )
        for ( const TokenSample& second : tokenSamples() ) {
            SCOPED_TRACE( tokenName( first.type ) + " " + tokenName( second.type ) );
            expect( first, second );
        }
}

/// The number of the rule that stood directly below the outermost one when the first error came; that one's
/// own number when it failed by itself; "" without an error.
std::string failedPart( const RuleRun& run ) {
    const auto& rules = run.error().rules;
    if ( rules.empty() )
        return "";
    return std::to_string( rules.size() == 1 ? rules[0] : rules[rules.size() - 2] );
}

// What mount lines and includes are chosen by, in the default group and in every named one; "" for neither.
std::string groupLineChosen( std::uint32_t first, std::uint32_t second ) {
    if ( first == INCLUDE && second == COLON )
        return "22";
    if ( first == INCLUDE || first == MOUNTFILTER || first == MOUNTGROUP )
        return isPathContinuer( second ) ? "21" : "";
    return isMountLineStarter( first ) ? "21" : "";
}

/// Whether a line that begins so ends the agent-level statements, and the default group is opened.
bool endsAgentLevel( std::uint32_t first, std::uint32_t second ) {
    if ( isProperty( first ) ) // a whole statement: then the file ends
        return second == NEWLN;
    if ( first == MOUNTFILTER || first == SUBAGENT || first == ALIAS || first == ROOTFLAGS )
        return isPathContinuer( second );
    return isMountLineStarter( first );
}

/// What `statements` does with a line of two tokens, none of which is a whole statement but for a property.
std::string statementChosen( std::uint32_t first, std::uint32_t second ) {
    if ( isProperty( first ) )
        return second == NEWLN ? "" : "17";
    if ( second == COLON && ( first == SUBAGENT || first == ALIAS || first == ROOTFLAGS ) )
        return first == SUBAGENT ? "18" : first == ALIAS ? "19" : "20";
    std::string line = groupLineChosen( first, second );
    if ( !endsAgentLevel( first, second ) || line.empty() )
        return first == MOUNTGROUP ? "27" : "11";
    return line;
}

TEST( Decisions, OfAgentLevelStatementsAreMadeByTheFirstTwoTokens ) {
    const auto statements = []( Parser* parser ) { parser->statements( parser ); };
    forEveryPair( [&]( const TokenSample& first, const TokenSample& second ) {
        for ( const TokenPath path : { TokenPath::fast, TokenPath::plain } ) {
            const RuleRun run( statements, lineOf( { first, second } ), path, RuleRun::Group::isNotOpen );
            EXPECT_EQ( failedPart( run ), statementChosen( first.type, second.type ) );
            const bool isOver = endsAgentLevel( first.type, second.type );
            EXPECT_EQ( run.hdlr().currMgName(), isOver ? "all" : "" );
            if ( !isOver ) {
                EXPECT_EQ( run.error().section, -1 );
                EXPECT_TRUE( failedPart( run ) != "11" || run.error().kind == 3 );
            }
        }
    } );
}

TEST( Decisions, OnAMountFilterAtAgentLevelNeedAnIdentifierAndTheLineEnd ) {
    const auto statements = []( Parser* parser ) { parser->statements( parser ); };
    const auto isIdPart = []( std::uint32_t type ) {
        return isIdentifier( type ) || type == HYPHEN || type == INT;
    };
    forEveryPair( [&]( const TokenSample& first, const TokenSample& second ) {
        const RuleRun run( statements, lineOf( { first, second }, "mountFilter:" ), TokenPath::fast,
                           RuleRun::Group::isNotOpen );
        if ( isIdPart( first.type ) && ( isIdPart( second.type ) || second.type == NEWLN ) ) {
            EXPECT_EQ( run.reports(), "" );
        } else {
            EXPECT_EQ( run.reports(), "11" );
            EXPECT_EQ( run.error().kind, 3U );
            // The token at which the look-ahead came to its end.
            EXPECT_EQ( run.error().token, tokenName( isIdPart( first.type ) ? second.type : first.type ) );
        }
    } );
}

TEST( Decisions, OfTheLinesOfANamedGroupAreMadeByTheFirstTwoTokens ) {
    const auto body = []( Parser* parser ) { parser->mountGroupBody( parser ); };
    forEveryPair( [&]( const TokenSample& first, const TokenSample& second ) {
        for ( const TokenPath path : { TokenPath::fast, TokenPath::plain } ) {
            const RuleRun run( body, lineOf( { first, second } ), path );
            const bool isCondition =
                ( first.type == CONDITION || first.type == CONDITIONBLOCKER ) && second.type == COLON;
            EXPECT_EQ( failedPart( run ), isCondition ? "30" : groupLineChosen( first.type, second.type ) );
            if ( failedPart( run ).empty() ) {
                EXPECT_EQ( run.consumed(), "" );
            }
        }
    } );
}

TEST( Decisions, OfADefaultGroupLineAreThoseOfANamedGroup ) {
    const auto statements = []( Parser* parser ) { parser->statements( parser ); };
    forEveryPair( [&]( const TokenSample& first, const TokenSample& second ) {
        if ( first.type == NEWLN ) // a blank line belongs to the mount line before it
            return;
        const RuleRun run( statements, lineOf( { first, second }, "/a, T, r\n" ), TokenPath::fast,
                           RuleRun::Group::isNotOpen );
        const std::string line = groupLineChosen( first.type, second.type );
        const char* const afterTheLines = first.type == MOUNTFILTER  ? "12"
                                          : first.type == MOUNTGROUP ? "27"
                                                                     : "11";
        EXPECT_EQ( failedPart( run ), line.empty() ? afterTheLines : line );
        if ( line.empty() && failedPart( run ) == "11" ) {
            EXPECT_EQ( run.error().kind, 1U );
            EXPECT_EQ( run.error().message, "Failed to associate this line to mount filter or mount group." );
        }
    } );
}

TEST( Decisions, OfIncludeFilesAreMadeByTheFirstTokenAlone ) {
    const auto includeFile = []( Parser* parser ) { parser->includeFile( parser ); };
    forEveryPair( [&]( const TokenSample& first, const TokenSample& second ) {
        const RuleRun run( includeFile, lineOf( { first, second } ), TokenPath::fast );
        EXPECT_EQ( failedPart( run ), isMountLineStarter( first.type ) ? "21" : "2" );
        const RuleRun later( includeFile, lineOf( { first, second }, "/a, T, r\n" ), TokenPath::fast );
        if ( first.type != NEWLN ) { // a blank line belongs to the mount line before it
            EXPECT_EQ( failedPart( later ), isMountLineStarter( first.type ) ? "21" : "2" );
        }
    } );
}

TEST( Decisions, OfTheStartRuleTakeWhatAnIncludeFileMayBeginWith ) {
    const auto profile = []( Parser* parser ) { parser->profile( parser, true ); };
    forEveryPair( [&]( const TokenSample& first, const TokenSample& second ) {
        const RuleRun run( profile, lineOf( { first, second }, "\n" ), TokenPath::fast );
        const auto begins = []( std::uint32_t one, std::uint32_t other ) {
            return one == AGENTNAME ? isPathContinuer( other ) : isMountLineStarter( one );
        };
        if ( first.type == NEWLN )
            EXPECT_EQ( failedPart( run ), begins( second.type, NEWLN ) ? "2" : "0" );
        else
            EXPECT_EQ( failedPart( run ), begins( first.type, second.type ) ? "2" : "0" );
        EXPECT_FALSE( run.hdlr().maybeIncludeFile() );
    } );
}

TEST( Decisions, OfTheStartRuleTakeAnAgentFileByItsTitleAlone ) {
    const auto profile = []( Parser* parser ) { parser->profile( parser, false ); };
    forEveryPair( [&]( const TokenSample& first, const TokenSample& second ) {
        const RuleRun run( profile, lineOf( { first, second } ), TokenPath::fast );
        const bool isTitle = first.type == AGENTNAME && second.type == COLON;
        EXPECT_EQ( run.reports(), isTitle ? "4 3 1 0" : "" );
        EXPECT_EQ( run.hdlr().maybeIncludeFile(), !isTitle );
    } );
}

/// Whether a line that begins with these tokens is an attribute of a mount filter.
bool isAttributeLine( std::uint32_t second, std::uint32_t third, std::uint32_t fourth ) {
    if ( second == NEWLN )
        return true;
    if ( second != COMMA )
        return false;
    if ( third == HYPHEN || third == INT || third == LIDENT || third == STRING )
        return true;
    return ( isKeyword( third ) || third == UIDENT ) &&
           ( isIdentifier( fourth ) || fourth == HYPHEN || fourth == INT || fourth == NEWLN );
}

void expectAttributeLine( const std::string& text, bool isOne ) {
    const RuleRun run( []( Parser* parser ) { parser->mountFilterBody( parser ); }, text, TokenPath::fast );
    if ( isOne ) {
        EXPECT_NE( run.consumed(), "" );
        EXPECT_TRUE( run.error().rules.empty() || failedPart( run ) == "15" );
    } else {
        EXPECT_EQ( run.consumed(), "" );
        EXPECT_EQ( run.reports(), "" );
    }
}

TEST( Decisions, OnAttributeLinesOfAMountFilterLookAtTwoTokens ) {
    forEveryPair( []( const TokenSample& first, const TokenSample& second ) {
        const bool begins = isKeyword( first.type ) || first.type == LIDENT;
        expectAttributeLine( lineOf( { first, second } ),
                             begins && isAttributeLine( second.type, NEWLN, NEWLN ) );
    } );
}

TEST( Decisions, OnAttributeLinesOfAMountFilterWithAKeyLookAtFourTokens ) {
    forEveryPair( []( const TokenSample& third, const TokenSample& fourth ) {
        for ( const char* attribute : { "abc", "alias" } )
            expectAttributeLine( lineOf( { third, fourth }, std::string( attribute ) + "," ),
                                 isAttributeLine( COMMA, third.type, fourth.type ) );
    } );
}

TEST( Decisions, OnAgentIdsLookAtThreeTokens ) {
    const auto agentId = []( Parser* parser ) { parser->agentId( parser ); };
    const auto isPart = []( std::uint32_t type ) { return isIdentifier( type ) || type == INT; };
    forEveryPair( [&]( const TokenSample& second, const TokenSample& third ) {
        for ( const char* head : { "abc", "Abc", "alias", "7" } ) {
            const RuleRun run( agentId, lineOf( { second, third }, head ), TokenPath::fast );
            if ( second.type == HYPHEN && third.type == HYPHEN )
                EXPECT_EQ( run.reports(), "4" ); // a hyphen must not be the last
            else if ( isPart( second.type ) )
                EXPECT_EQ( run.next() == tokenName( third.type ), !isPart( third.type ) );
            else if ( second.type == HYPHEN && isPart( third.type ) )
                EXPECT_EQ( run.next(), "NEWLN" );
            else
                EXPECT_EQ( run.consumed(), head );
        }
    } );
}

TEST( Decisions, OnASlashOfAPathLookAtTheTokenBehindIt ) {
    const auto path = []( Parser* parser ) { parser->path( parser ); };
    for ( const TokenSample& behind : tokenSamples() ) {
        SCOPED_TRACE( behind.text );
        const RuleRun run( path, std::string( "/a/ " ) + behind.text + " abc", TokenPath::fast );
        const bool goesOn = isIdentifier( behind.type ) || behind.type == INT || behind.type == HYPHEN ||
                            behind.type == DOUBLECOLON || behind.type == PERCENTAGE;
        EXPECT_EQ( run.reports(), "" );
        if ( goesOn )
            EXPECT_EQ( run.next(), "NEWLN" );
        else if ( behind.type == QSNMARK )
            EXPECT_EQ( run.next(), "LIDENT" );
        else
            EXPECT_EQ( run.consumed(), "/a/" );
    }
}

} // namespace

} // namespace CorvidTest
