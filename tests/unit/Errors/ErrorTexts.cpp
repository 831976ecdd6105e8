#include "unit/Errors/ErrorTexts.h"

#include "ProfileParser/ErrorWording.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace CorvidTest {

namespace {

namespace Wording = Corvid::ErrorWording;

std::string contentOf( const std::filesystem::path& file ) {
    std::ifstream in( file, std::ios::binary );
    if ( !in )
        throw std::runtime_error( "cannot read " + file.string() );
    return { std::istreambuf_iterator<char>( in ), {} };
}

std::string withoutCommentsAndDirectives( const std::string& source ) {
    // A literal is matched first, so that what looks like a comment inside it stays.
    static const std::regex literalOrNoise( R"re(("(?:[^"\\\n]|\\.)*")|//[^\n]*|(^|\n)#[^\n]*)re" );
    return std::regex_replace( source, literalOrNoise, "$1$2" );
}

std::string unescaped( const std::string& literal ) {
    std::string text;
    for ( std::size_t i = 0; i < literal.size(); ++i ) {
        if ( literal[i] != '\\' ) {
            text += literal[i];
            continue;
        }
        ++i;
        text += literal.at( i ) == 'n' ? '\n' : literal.at( i );
    }
    return text;
}

/// The arguments of every call of a function or macro, as source text.
std::vector<std::string> callsOf( const std::string& name, const std::string& source ) {
    const std::string code = withoutCommentsAndDirectives( source );
    std::vector<std::string> calls;
    const std::string opening = name + "( ";
    for ( auto at = code.find( opening ); at != std::string::npos; at = code.find( opening, at + 1 ) ) {
        std::size_t end = at + opening.size();
        int depth = 1;
        for ( bool inLiteral = false; end < code.size() && depth > 0; ++end ) {
            const char c = code[end];
            if ( c == '\\' && inLiteral )
                ++end;
            else if ( c == '"' )
                inLiteral = !inLiteral;
            else if ( !inLiteral )
                depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        }
        calls.push_back( code.substr( at, end - at ) );
    }
    return calls;
}

void append( std::vector<ErrorText>& texts, const std::string& source ) {
    for ( const std::string& literal : stringLiterals( source ) )
        if ( literal.size() > 2 && std::ranges::find( texts, literal, &ErrorText::text ) == texts.end() )
            texts.push_back( { literal, 0 } );
}

} // namespace

std::vector<std::string> stringLiterals( const std::string& source ) {
    static const std::regex literals( R"re("((?:[^"\\\n]|\\.)*)"((?:\s*"(?:[^"\\\n]|\\.)*")*))re" );
    static const std::regex seam( R"re("\s*")re" );
    const std::string code = withoutCommentsAndDirectives( source );
    std::vector<std::string> found;
    for ( std::sregex_iterator match( code.begin(), code.end(), literals ), none; match != none; ++match ) {
        std::string rest = ( *match )[2];
        if ( const auto quote = rest.find( '"' ); quote != std::string::npos )
            rest = std::regex_replace( rest.substr( quote + 1, rest.rfind( '"' ) - quote - 1 ), seam, "" );
        found.push_back( unescaped( ( *match )[1].str() + rest ) );
    }
    return found;
}

std::vector<ErrorText> allErrorTexts() {
    std::vector<ErrorText> texts;
    for ( const Wording::RuleHint& hint : Wording::ruleHints() )
        texts.push_back( { std::string( hint.text ), hint.kind } );
    for ( const Wording::KindMessage& message : Wording::kindMessages() ) {
        texts.push_back( { std::string( message.beforeTokenName ), message.kind } );
        texts.push_back( { std::string( message.withoutTokenNames ), message.kind } );
    }
    const std::filesystem::path sources( CORVID_SOURCE_DIR );
    append( texts, contentOf( sources / "ProfileParser/ErrorWording.h" ) );
    for ( const auto& entry : std::filesystem::directory_iterator( sources / "ProfileParser" ) )
        if ( entry.path().extension() == ".cpp" )
            for ( const char* reporter : { "constructHdlrException", "descriptionIs" } )
                for ( const std::string& call : callsOf( reporter, contentOf( entry.path() ) ) )
                    append( texts, call );
    for ( const std::string& call :
          callsOf( "FAIL", contentOf( sources / "ProfileParserAntlr/mountProfile.g" ) ) )
        append( texts, call );
    return texts;
}

std::vector<UnreachableText> unreachableErrorTexts() {
    using namespace Wording;
    const auto hint = []( std::int32_t rule, std::uint32_t kind ) {
        return ErrorText{ std::string( ruleHint( rule, kind ) ), kind };
    };
    std::vector<UnreachableText> texts{
        { hint( 2, earlyExit ),
          "the start rule enters an include file's rule only at a token that begins a mount line" },
        { hint( 5, earlyExit ), "the title line's rule enters the template keys only at their first hyphen" },
        { hint( 15, noViableAlternative ),
          "a filter's body takes a line only when a value follows its comma" },
        { { std::string( syntaxErrorWithoutMessage ), 0 },
          "whoever raises a general error gives it a message" },
        { { std::string( unexpectedCharacter ), 0 }, "the parser library gives each lexer error a message" },
        { { "Mount profile is invalid due to error in include file: ", 0 },
          "the include file's own error is recorded before it" },
        { { "While adding default profiles, ", 0 }, "no file can bring a default mount into conflict" },
    };
    for ( const KindMessage& message : kindMessages() )
        texts.push_back( { { std::string( message.withoutTokenNames ), message.kind },
                           "the generated parser always has its table of token names" } );
    return texts;
}

} // namespace CorvidTest
