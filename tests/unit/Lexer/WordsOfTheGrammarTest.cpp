// The words of the language, as the grammar file spells them: the fast reader has to know every one of them.
#include "LexedText.h"
#include "Spellings.h"

#include "ProfileParser/TokenScanner.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

#include "ProfileParser/GeneratedParser.h"

namespace CorvidTest {

namespace {

struct GrammarWord {
    std::string name;     ///< of the token
    std::string spelling; ///< in lower case
    bool anyCase = true;
};

std::string grammar() {
    std::ifstream file( CORVID_SOURCE_DIR "/ProfileParserAntlr/mountProfile.g" );
    std::string text( std::istreambuf_iterator<char>( file ), {} );
    if ( text.empty() )
        throw std::runtime_error( "cannot read the grammar" );
    return text;
}

/// All matches of a pattern: the name is its first group, the spelling its second one in lower case and
/// without blanks.
std::vector<GrammarWord> matches( const std::string& text, const std::string& pattern ) {
    std::vector<GrammarWord> words;
    const std::regex regex( pattern, std::regex::ECMAScript | std::regex::multiline );
    for ( std::sregex_iterator at( text.begin(), text.end(), regex ), end; at != end; ++at ) {
        std::string spelling;
        for ( const char c : at->str( 2 ) )
            if ( c != ' ' )
                spelling += static_cast<char>( std::tolower( c ) );
        words.push_back( { at->str( 1 ), spelling, true } );
    }
    return words;
}

/// Rules of single letters: `ALIAS : A L I A S ;`.
std::vector<GrammarWord> keywords() {
    return matches( grammar(), R"(^([A-Z]+) *:((?: [A-Z])+) ;$)" );
}

/// Quoted words: `AND = 'and';` among the tokens, and those of the operators' rule.
std::vector<GrammarWord> quotedWords() {
    const std::string text = grammar();
    auto words = matches( text, R"(^ *([A-Z]+) *= *'([a-z]+)';$)" );
    std::smatch rule;
    if ( !std::regex_search( text, rule, std::regex( R"(\nOP :[^;]*;)" ) ) )
        throw std::runtime_error( "the grammar has no rule OP" );
    for ( const auto& word : matches( rule.str(), R"((')([a-z]+)')" ) )
        words.push_back( { "OP", word.spelling, true } );
    for ( auto& word : words )
        word.anyCase = false;
    return words;
}

/// What the fast reader makes of a text; 0 when it leaves it to the generated lexer.
std::uint32_t scannedType( const std::string& text ) {
    ANTLR3_COMMON_TOKEN token{};
    pANTLR3_COMMON_TOKEN next = &token;
    Corvid::TokenScanner( text ).scanLine( next, &token + 1 );
    return next == &token ? 0 : token.type;
}

void expectSameType( const GrammarWord& word, const std::string& text ) {
    const LexedText lexed( text );
    ASSERT_EQ( lexed.tokens.front().text, text ) << "is the pattern that finds the words still right?";
    EXPECT_EQ( scannedType( text ), lexed.tokens.front().type )
        << "for \"" << text << "\": keyword " << word.name
        << " of ProfileParserAntlr/mountProfile.g is missing in `words` of ProfileParser/TokenScanner.cpp, "
           "or is "
           "spelled differently there: add { \""
        << word.spelling << "\", " << word.name << ", " << ( word.anyCase ? "true" : "false" )
        << " } in its alphabetical place";
}

} // namespace

TEST( WordsOfTheGrammar, AreAllKnownToTheFastReader ) {
    for ( const auto& words : { keywords(), quotedWords() } )
        for ( const auto& word : words )
            for ( const auto& text : inAllCases( word.spelling ) )
                expectSameType( word, text );
}

TEST( WordsOfTheGrammar, AreFoundInItsText ) {
    std::vector<std::string> names;
    for ( const auto& word : keywords() ) {
        names.push_back( word.name );
        EXPECT_EQ( LexedText( word.spelling ).names, word.name + " NEWLN EOF" );
    }
    const std::string text = grammar();
    std::smatch rule;
    ASSERT_TRUE( std::regex_search( text, rule, std::regex( R"(\nkeyword [^;]*;)" ) ) );
    for ( const auto& alternative : matches( rule.str(), R"(([A-Z]{2,})())" ) )
        EXPECT_THAT( names, testing::Contains( alternative.name ) );
    EXPECT_THAT( quotedWords(), testing::Contains( testing::Field( &GrammarWord::spelling, "notin" ) ) );
}

} // namespace CorvidTest
