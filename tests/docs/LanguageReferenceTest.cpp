// docs/language.md is run, not just read: every block in it is an example with a tag that tells what comes of
// it.
//
//   ```mountprofile valid [OPTION]...              a valid agent file
//   ```mountprofile [OPTION]... error="TEXT"       an invalid one, with the error's description;
//   `at=LINE:COLUMN`
//                                                  in front of it for the error's place
//   ```mountprofile not-agent-file                 a file without a title line
//   ```mountprofile file=NAME                      an include file beside the next example
//   ```yields                                      lines that stand in this order in the last example's
//   profile
//
// Options: `defaults` (with the mounts that every agent gets), `redundancy` (the machine is one of a
// redundant pair in the system "ar"), `env=NAME` or `env=NAME=VALUE`.
#include "docs/MarkdownFile.h"

#include "EmbeddedPlatform.h"
#include "ProfileParser/TokenListing.h"
#include "support/ParsedProfile.h"

#include <gmock/gmock.h>

#include <cctype>
#include <cstdlib>
#include <memory>
#include <set>
#include <sstream>

extern unsigned char* mountProfileParserTokenNames[];

namespace CorvidTest {

namespace {

constexpr std::size_t tokenTypes = 67;
constexpr std::size_t firstOwnTokenType = 4; // those before it belong to the parser library

std::string tokenName( std::size_t type ) {
    return reinterpret_cast<const char*>( mountProfileParserTokenNames[type] );
}

/// An example of the reference: what to run and what has to come of it.
struct Example {
    std::string text;
    unsigned line = 0;
    std::string section;
    std::map<std::string, std::string> files;
    std::vector<std::string> options;
    std::string outcome; ///< as ParsedProfile::outcome()
    std::string error;
    std::string place;  ///< "LINE:COLUMN" or empty
    std::string yields; ///< empty when the reference does not tell
};

std::vector<std::string> wordsOf( const std::string& text ) {
    std::istringstream in( text );
    std::vector<std::string> words;
    for ( std::string word; in >> word; )
        words.push_back( word );
    return words;
}

/// Reads the tag behind "mountprofile". The outcome stays empty when the tag tells none.
Example readTag( const MarkdownBlock& block ) {
    Example example{ block.text, block.line, block.section, {}, {}, "", "", "", "" };
    constexpr std::string_view errorMark = "error=\"";
    std::string info = block.info;
    if ( const auto mark = info.find( errorMark ); mark != std::string::npos ) {
        const auto first = mark + errorMark.size();
        example.outcome = "invalid";
        example.error = info.substr( first, info.rfind( '"' ) - first );
        info.resize( mark );
    }
    for ( const auto& word : wordsOf( info ) ) {
        if ( word == "valid" )
            example.outcome = "valid";
        else if ( word == "not-agent-file" )
            example.outcome = "notAgentFile";
        else if ( word.starts_with( "at=" ) )
            example.place = word.substr( 3 );
        else
            example.options.push_back( word );
    }
    return example;
}

std::vector<Example> examplesOf( const MarkdownFile& document ) {
    std::vector<Example> examples;
    std::map<std::string, std::string> files;
    for ( const auto& block : document.blocks() ) {
        const std::string place = document.name() + ":" + std::to_string( block.line );
        if ( block.language == "mountprofile" && block.info.starts_with( "file=" ) ) {
            files[block.info.substr( 5 )] = block.text;
        } else if ( block.language == "mountprofile" ) {
            examples.push_back( readTag( block ) );
            examples.back().files = std::exchange( files, {} );
            EXPECT_NE( examples.back().outcome, "" ) << place << ": the tag does not tell what comes of it";
        } else if ( block.language == "yields" && !examples.empty() ) {
            examples.back().yields = block.text;
        } else {
            EXPECT_EQ( block.language, "console" ) << place << ": a block that no test runs";
        }
    }
    EXPECT_TRUE( files.empty() ) << document.name() << ": include files without an example";
    return examples;
}

const std::vector<Example>& languageExamples() {
    static const std::vector<Example> examples = examplesOf( MarkdownFile( "docs/language.md" ) );
    return examples;
}

/// What an example's options set up, until the end of its run.
class Stage {
  public:
    explicit Stage( const Example& example ) {
        options_.files = example.files;
        for ( const char* name : { "K7_CHROOT", "AGENT_WAIT_FOR_READY", "ACTIVE_CELLID" } )
            ::unsetenv( name );
        for ( const auto& option : example.options ) {
            if ( option == "defaults" )
                options_.addDefaults = true;
            else if ( option == "redundancy" )
                setUpRedundancy();
            else if ( option.starts_with( "env=" ) )
                setEnvironment( option.substr( 4 ) );
            else
                ADD_FAILURE() << "unknown option " << option;
        }
    }
    Stage( const Stage& ) = delete;
    Stage& operator=( const Stage& ) = delete;
    ~Stage() {
        Kiv::Embedded::entitiesDel();
        for ( const auto& name : variables_ )
            ::unsetenv( name.c_str() );
    }
    [[nodiscard]] const ParseOptions& options() const { return options_; }

  private:
    void setUpRedundancy() {
        using Redundancy::Mode;
        options_.addDefaults = true;
        options_.entityManager = Kiv::Embedded::newEntityManager( "ar", false );
        Kiv::Embedded::entityIs( "/ar/Corvid/cell/1/redundancy/status",
                                 Kiv::Embedded::newRedundancyStatus( Mode::hotStandby, Mode::hotStandby ) );
    }
    void setEnvironment( const std::string& assignment ) {
        const auto equal = assignment.find( '=' );
        variables_.push_back( assignment.substr( 0, equal ) );
        ::setenv( variables_.back().c_str(),
                  equal == std::string::npos ? "" : assignment.substr( equal + 1 ).c_str(), 1 );
    }

    ParseOptions options_;
    std::vector<std::string> variables_;
};

std::string replaced( std::string text, const std::string& what, const std::string& by ) {
    for ( auto at = text.find( what ); at != std::string::npos; at = text.find( what, at + by.size() ) )
        text.replace( at, what.size(), by );
    return text;
}

/// TEXT of the line that is printed for an error; the example's directory is called "profiles".
std::string errorText( const ParsedProfile& parsed ) {
    constexpr std::string_view mark = ": error: ";
    const std::string message = parsed.error().composeErrorDescMessage().str();
    std::string text = message.substr( message.find( mark ) + mark.size() );
    if ( const auto included = text.rfind( " (included from " ); included != std::string::npos )
        text.resize( included );
    return replaced( text, parsed.fileBeside( "" ), "profiles/" );
}

std::string placeOf( const Corvid::RecognitionError& error ) {
    return std::to_string( error.line() ) + ":" + std::to_string( error.column() );
}

void run( const Example& example ) {
    const Stage stage( example );
    const ParsedProfile parsed( example.text, stage.options() );
    EXPECT_EQ( parsed.outcome(), example.outcome ) << parsed.standardError();
    if ( example.outcome == "invalid" && parsed.outcome() == "invalid" ) {
        EXPECT_EQ( errorText( parsed ), example.error );
    }
    if ( !example.place.empty() ) {
        EXPECT_EQ( placeOf( parsed.error() ), example.place );
    }
    EXPECT_NE( ( "\n" + parsed.dump() ).find( "\n" + example.yields ), std::string::npos )
        << "does not yield\n"
        << example.yields << "but\n"
        << parsed.dump();
}

struct Token {
    std::string name;
    unsigned line;
};

std::vector<Token> tokensOf( const std::string& text ) {
    const TempDir dir;
    std::vector<Token> tokens;
    (void)Corvid::listTokens( dir.file( "text", text ), [&]( const Corvid::ListedToken& token ) {
        tokens.push_back( { token.name, token.line } );
    } );
    return tokens;
}

std::string lowerCase( std::string text ) {
    for ( char& c : text )
        c = static_cast<char>( std::tolower( static_cast<unsigned char>( c ) ) );
    return text;
}

/// The names of the tokens that are spelled like their names in either case, in lower case: the keywords.
std::vector<std::string> keywords() {
    std::vector<std::string> found;
    for ( std::size_t type = firstOwnTokenType; type < tokenTypes; ++type ) {
        const std::string name = tokenName( type );
        if ( name.size() > 1 && tokensOf( name ).front().name == name &&
             tokensOf( lowerCase( name ) ).front().name == name )
            found.push_back( lowerCase( name ) );
    }
    return found;
}

/// The token names that begin a line of a text.
std::set<std::string> lineStarts( const std::string& text ) {
    std::set<std::string> starts;
    unsigned line = 0;
    for ( const auto& token : tokensOf( text ) )
        if ( std::exchange( line, token.line ) != token.line )
            starts.insert( token.name );
    return starts;
}

} // namespace

TEST( LanguageReference, EveryExampleDoesWhatItsTagSays ) {
    ASSERT_GE( languageExamples().size(), 40U );
    for ( const auto& example : languageExamples() ) {
        const testing::ScopedTrace scope( "docs/language.md", static_cast<int>( example.line ),
                                          "\n" + example.text );
        run( example );
    }
}

TEST( LanguageReference, EveryStatementHasASectionWithAValidExampleAndAnErroneousOne ) {
    const auto statements = keywords();
    ASSERT_THAT( statements, testing::SizeIs( testing::Ge( 12U ) ) );
    for ( const auto& statement : statements ) {
        bool shownValid = false;
        bool shownInvalid = false;
        for ( const auto& example : languageExamples() ) {
            if ( lowerCase( example.section ) != "`" + statement + "`" )
                continue;
            std::string name = statement;
            for ( char& c : name )
                c = static_cast<char>( std::toupper( static_cast<unsigned char>( c ) ) );
            const bool used = lineStarts( example.text ).contains( name );
            shownValid |= used && example.outcome == "valid";
            shownInvalid |= used && example.outcome == "invalid";
        }
        EXPECT_TRUE( shownValid ) << statement;
        EXPECT_TRUE( shownInvalid ) << statement;
    }
}

TEST( LanguageReference, EveryTokenStandsInAValidExample ) {
    std::set<std::string> shown;
    std::string texts;
    for ( const auto& example : languageExamples() ) {
        if ( example.outcome != "valid" )
            continue;
        texts += example.text;
        for ( const auto& token : tokensOf( example.text ) )
            shown.insert( token.name );
    }
    const std::set<std::string> neverSeenByTheParser{ "WS", "LINECONT", "LINE_COMMENT" };
    for ( std::size_t type = firstOwnTokenType; type < tokenTypes; ++type ) {
        const std::string name = tokenName( type );
        if ( name.size() > 1 && !neverSeenByTheParser.contains( name ) ) {
            EXPECT_TRUE( shown.contains( name ) ) << name;
        }
    }
    EXPECT_THAT( texts, testing::HasSubstr( "\\\n" ) );
    EXPECT_THAT( texts, testing::HasSubstr( "#" ) );
}

} // namespace CorvidTest
