// Every text that an error's description can hold is shown by a conformance case.

#include "unit/Errors/ErrorTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

namespace {

using namespace CorvidTest;

struct Shown {
    std::uint32_t kind;
    std::string description;
};

/// The byte string that a document's text stands for: each character is one byte.
std::string bytesOf( const std::string& utf8 ) {
    std::string bytes;
    for ( std::size_t i = 0; i < utf8.size(); ++i ) {
        const auto byte = static_cast<unsigned char>( utf8[i] );
        bytes +=
            byte < 0x80 ? utf8[i] : static_cast<char>( ( byte & 0x3U ) << 6 | ( utf8.at( ++i ) & 0x3FU ) );
    }
    return bytes;
}

std::vector<Shown> shownByCases() {
    std::vector<Shown> shown;
    for ( const auto& entry : std::filesystem::recursive_directory_iterator(
              std::filesystem::path( CORVID_SOURCE_DIR ) / "conformance" ) )
        if ( entry.path().filename() == "expected.json" ) {
            std::ifstream in( entry.path() );
            const auto document = nlohmann::json::parse( in );
            if ( document.at( "outcome" ) == "invalid" ) {
                const auto& error = document.at( "errorDesc" );
                shown.push_back( { error.at( "exceptionType" ), bytesOf( error.at( "description" ) ) } );
            }
        }
    return shown;
}

bool isShown( const ErrorText& text, const std::vector<Shown>& shown ) {
    return std::ranges::any_of( shown, [&]( const Shown& error ) {
        return ( text.kind == 0 || text.kind == error.kind ) &&
               error.description.find( text.text ) != std::string::npos;
    } );
}

bool isUnreachable( const ErrorText& text ) {
    return std::ranges::any_of( unreachableErrorTexts(), [&]( const UnreachableText& unreachable ) {
        return unreachable.text.text == text.text && unreachable.text.kind == text.kind;
    } );
}

TEST( Wording, IsShownByTheConformanceCases ) {
    const auto shown = shownByCases();
    ASSERT_GT( shown.size(), 100U );
    for ( const ErrorText& text : allErrorTexts() )
        EXPECT_TRUE( isShown( text, shown ) || isUnreachable( text ) )
            << "no case shows '" << text.text << "', kind " << text.kind;
}

TEST( Wording, ThatIsListedAsUnreachableExistsAndIsShownByNoCase ) {
    const auto shown = shownByCases();
    const auto all = allErrorTexts();
    for ( const UnreachableText& unreachable : unreachableErrorTexts() ) {
        EXPECT_FALSE( isShown( unreachable.text, shown ) )
            << unreachable.text.text << ": " << unreachable.reason;
        EXPECT_TRUE( std::ranges::any_of( all,
                                          [&]( const ErrorText& text ) {
                                              return text.text == unreachable.text.text &&
                                                     text.kind == unreachable.text.kind;
                                          } ) )
            << unreachable.text.text;
    }
}

TEST( Wording, IsFoundInTheSources ) {
    std::vector<std::string> texts;
    for ( const ErrorText& text : allErrorTexts() )
        texts.push_back( text.text );
    // One for each place where texts are looked for.
    for ( const char* text :
          { "Expecting end of line", " Missing ", " Missing characters...", "Unrecongnized character ",
            " is already present with type: ", ". Multiple conditions not allowed.",
            "While adding default profiles, ", "$ allowed with only last template key",
            "Failed to associate this line to mount filter or mount group.",
            "Found ':', include file should only contain mounts", "Invalid keyword before ':'" } )
        EXPECT_NE( std::ranges::find( texts, text ), texts.end() ) << text;
    EXPECT_EQ( stringLiterals( "#include \"x\"\nf( \"a\\\"b // \" // \"c\"\n \"d\\n\" + \"\", 'e' );\n" ),
               ( std::vector<std::string>{ "a\"b // d\n", "" } ) );
}

} // namespace
