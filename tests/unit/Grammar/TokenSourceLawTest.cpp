// Profiles of random lines give the same result from both sources of tokens.

#include "support/ParsedProfile.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace CorvidTest {

namespace {

/// Lines that are often right and often not; the same seed gives the same ones.
class RandomProfiles {
  public:
    explicit RandomProfiles( unsigned seed ) : random_( seed ) {}

    std::string agentFile() {
        std::string text = oneOf(
            { "agentName: A-%slot$\n", "agentName: A\n", "AGENTNAME: a-7-b-%k\n", "\n# t\nagentName:A\n" } );
        return spoiled( text + lines() );
    }
    std::string includeFile() { return spoiled( lines() ); }

  private:
    std::size_t below( std::size_t end ) {
        return std::uniform_int_distribution<std::size_t>( 0, end - 1 )( random_ );
    }
    std::string oneOf( std::initializer_list<const char*> choices ) {
        return choices.begin()[below( choices.size() )];
    }

    std::string lines() {
        std::string text;
        for ( std::size_t count = below( 9 ); count > 0; --count )
            text += oneOf(
                { "/a/b, Kiv::Entity, rw\n", "/%slot/x?, T, r, f\n", "\"q r\" \"s\", T, w\n", "include: x*\n",
                  "mountFilter: f\nname, k-1\n", "mountFilter: g\nname, \"v\"\nX, T, r\n", "hybridMount\n",
                  "alias: %n = %slot, %sysname\n", "subAgent: S-%cellId\n", "rootFlags: rw\n",
                  "mountGroup: g, 7\n", "mountGroup: h\n", "condition: 1 == /a.b and x in len( /c.d )\n",
                  "conditionBlocker: -0x1F < %sysname\n", "/c, T, r # note\n", "/d, \\\nT, r\n", "\r\n" } );
        return text;
    }

    /// Every second text gets a few bytes changed, inserted or taken away.
    std::string spoiled( std::string text ) {
        static constexpr std::string_view bytes{ "\0\n\r \\\"#{_!=:,/%$-.0x1aA()?*<\x80", 29 };
        if ( below( 2 ) == 0 )
            return text;
        for ( std::size_t count = 1 + below( 3 ); count > 0 && !text.empty(); --count ) {
            const std::size_t at = below( text.size() );
            const char byte = bytes[below( bytes.size() )];
            switch ( below( 3 ) ) {
            case 0:
                text[at] = byte;
                break;
            case 1:
                text.insert( at, 1, byte );
                break;
            default:
                text.erase( at, 1 );
            }
        }
        return text;
    }

    std::mt19937 random_;
};

/// All that a parse leaves behind, less the directory that it ran in.
std::string everything( const std::string& text, const ParseOptions& options ) {
    const ParsedProfile parsed( text, options );
    const Corvid::RecognitionError& error = parsed.error();
    std::string all = parsed.outcome() + "\n" + parsed.dump() + parsed.trace() + parsed.standardError() +
                      error.fileName().str() + "|" + error.includeFileName().str() + "|" +
                      std::to_string( error.line() ) + ":" + std::to_string( error.charPositionInLine() ) +
                      "|" + std::to_string( error.exceptionType() ) + "|" + error.recognizer().str() + "|" +
                      error.description().str() + "|" + error.sourceLine().str();
    const std::string directory = parsed.fileBeside( "" );
    for ( auto at = all.find( directory ); at != std::string::npos; at = all.find( directory, at ) )
        all.erase( at, directory.size() );
    return all;
}

TEST( TokenSources, GiveRandomProfilesTheSameResult ) {
    RandomProfiles profiles( 20 );
    std::map<std::string, int> outcomes;
    for ( int i = 0; i < 500; ++i ) {
        ParseOptions options{ .files = { { "x1", profiles.includeFile() }, { "x2", "/x, T, r\n" } } };
        const std::string text = profiles.agentFile();
        const std::string fast = everything( text, options );
        options.plainTokens = true;
        ASSERT_EQ( fast, everything( text, options ) ) << text << "\n--- x1:\n" << options.files["x1"];
        ++outcomes[fast.substr( 0, fast.find( '\n' ) )];
    }
    EXPECT_GT( outcomes["valid"], 20 );
    EXPECT_GT( outcomes["invalid"], 150 );
    EXPECT_EQ( outcomes["valid"] + outcomes["invalid"] + outcomes["notAgentFile"], 500 );
}

std::string repeated( std::string_view text, std::size_t times ) {
    std::string all;
    for ( ; times > 0; --times )
        all += text;
    return all;
}

/// Statements with more tokens than a line keeps as they are, by whatever they can be long. `#` stands for
/// the repetition of what is behind it up to the next `#`; it comes with and without blanks between tokens.
TEST( TokenSources, GiveLinesOfAnyLengthTheSameResult ) {
    const std::string line = "agentName: A-%k\n";
    const std::vector<std::string> texts{
        line + "#/a#, T, r\n/b, T, r\n",
        line + "# / a - 1#, T, r\n/b, T, r\n",
        line + "#a -%k/ #a, # T::#T, r\n/b, T, r\n",
        line + "#\"a\" #, T, r\n",
        line + "/a, T, r, #f - #f\n",
        "agentName: # a -#a-%k#-%k#\nalias: %p = %k#, %k#\nsubAgent: S# - %k#\n",
        line + "mountFilter: #f-#f\nname, # \"v\" #\n/a, T, r, #f-#f\n",
        line + "mountGroup: #g -#g, 5\ncondition: 1 == /a.b# and %k == %k#\n/b, T, r\n",
        line + "mountGroup: g\ncondition: a# - 1# < / a#/ a#.b and x in len(#/a -%k#.b )\n/b, T, r\n",
        line + "mountGroup: g\nconditionBlocker: 1 == %k# and 1 == /a.b#\n/b, T, r\n",
        line + "include: #x-#*\n/b, T, r\n",
        line + "#/a#, T\n/b, T, r\n",
        line + "#/a#, T, r#\r#\n/b, T, r, nothing\n",
        line + "#a #\n",
    };
    int valid = 0;
    for ( const std::string& text : texts )
        for ( const std::size_t times : { 1000U, 4100U, 9000U } ) {
            SCOPED_TRACE( testing::Message() << text << " repeated " << times << " times" );
            std::string whole;
            bool isRepeated = false;
            for ( std::size_t at = 0; at <= text.size(); isRepeated = !isRepeated ) {
                const std::size_t end = std::min( text.find( '#', at ), text.size() );
                whole += repeated( text.substr( at, end - at ), isRepeated ? times : 1 );
                at = end + 1;
            }
            ParseOptions options{ .files = { { "x-x", "/x, T, r\n" } } };
            const std::string fast = everything( whole, options );
            options.plainTokens = true;
            EXPECT_TRUE( fast == everything( whole, options ) );
            valid += fast.starts_with( "valid" ) ? 1 : 0;
        }
    EXPECT_EQ( valid, 9 * 3 ); // the others end in an error: behind their long lines
}

} // namespace

} // namespace CorvidTest
