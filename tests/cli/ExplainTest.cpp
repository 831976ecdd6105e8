#include "cli/CommandTest.h"

#include "Cli/ErrorsPage.h"
#include "ProfileParser/ErrorDetails.h"

#include <optional>

namespace Corvid::Testing {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// One example as `explain` prints it: a line that tells what it is, and indented lines.
struct Example {
    std::string caption;
    std::string text;
};

std::vector<Example> examplesIn( const std::string& explanation ) {
    std::istringstream lines( explanation );
    std::vector<Example> examples;
    for ( std::string line; std::getline( lines, line ); ) {
        if ( line.starts_with( "    " ) && !examples.empty() )
            examples.back().text += line.substr( 4 ) + "\n";
        else if ( line == "Wrong:" || line == "Right:" || line == "This prints:" ||
                  line.starts_with( "With a file " ) )
            examples.push_back( { line, "" } );
    }
    return examples;
}

class ExplainTest : public CommandTest {
  protected:
    [[nodiscard]] std::vector<Example> examplesFor( const std::string& code ) const {
        const auto result = run( { "explain", code } );
        EXPECT_THAT( result, Answers( 0, StartsWith( code + "  " ), "" ) );
        return examplesIn( result.out );
    }
    /// Runs an agent file, or a command line with what it prints below it. @return what was said of the file.
    std::string check( const std::string& text, int exitStatus ) const {
        if ( text.starts_with( "$ mountprofile " ) )
            return checkCommand( text );
        write( "Fan", text );
        const auto result = run( { "check", "Fan" } );
        EXPECT_EQ( result.exitStatus, exitStatus ) << text << result.err;
        return result.err;
    }

  private:
    std::string checkCommand( const std::string& text ) const {
        const auto lineEnd = text.find( '\n' );
        std::istringstream words( text.substr( 2, lineEnd - 2 ) );
        std::vector<std::string> arguments( std::istream_iterator<std::string>( words ), {} );
        arguments.erase( arguments.begin() );
        const auto result = run( arguments );
        EXPECT_EQ( result.err + result.out, text.substr( lineEnd + 1 ) );
        return result.err + result.out;
    }
};

TEST_F( ExplainTest, everyCodesExamplesBringItOutAndPutItRight ) {
    const auto codes = Cli::explainedCodes();
    EXPECT_GT( codes.size(), 40U );
    for ( const std::string& code : codes ) {
        SCOPED_TRACE( code );
        std::string said;
        bool isWrong = false;
        bool isRight = false;
        for ( const Example& example : examplesFor( code ) ) {
            if ( example.caption.starts_with( "With a file " ) ) {
                write( example.caption.substr( 12, example.caption.size() - 13 ), example.text );
            } else if ( example.caption == "Wrong:" ) {
                said = check( example.text, 1 );
                EXPECT_THAT( said, HasSubstr( code ) );
                isWrong = true;
            } else if ( example.caption == "This prints:" ) {
                EXPECT_THAT( said, StartsWith( example.text ) );
            } else {
                said = check( example.text, 0 );
                EXPECT_EQ( said.find( code ), std::string::npos ) << said;
                isRight = true;
            }
        }
        EXPECT_TRUE( isWrong && isRight );
    }
}

TEST_F( ExplainTest, everyCodeOfTheLibraryIsExplained ) {
    for ( const ErrorCode& row : errorCodes() )
        EXPECT_THAT( run( { "explain", std::string( row.code ) } ),
                     Answers( 0, StartsWith( std::string( row.code ) + "  " ), "" ) )
            << row.code;
}

TEST_F( ExplainTest, whatNoFileBringsOutIsExplainedAsSuch ) {
    EXPECT_THAT( run( { "explain", "MP085" } ),
                 Answers( 0,
                          "MP085  Expecting minimum one mount entry.\n\nNo file brings this out. An include "
                          "file that does not begin with a mount line is answered with `Include file should "
                          "contain only mounts.`\n",
                          "" ) );
}

TEST_F( ExplainTest, aCodeMayBeSpelledAsItComes ) {
    const auto expected = run( { "explain", "MP042" } );
    EXPECT_THAT( expected, Answers( 0, StartsWith( "MP042  illegal flag '…'\n\nFlags of a mount" ), "" ) );
    for ( const std::string code : { "mp042", "42", "042", "Mp42" } )
        EXPECT_EQ( run( { "explain", code } ).out, expected.out ) << code;
}

TEST_F( ExplainTest, aCodeThatDoesNotExistIsAnsweredWithThoseThatDo ) {
    std::string all;
    for ( const std::string& code : Cli::knownCodes() ) {
        EXPECT_THAT( run( { "explain", code } ), Answers( 0, StartsWith( code + "  " ), "" ) );
        all += " " + code;
    }
    for ( const std::string code : { "MP025", "MP085", "MP093 MP094" } )
        EXPECT_THAT( all, HasSubstr( code ) );
    EXPECT_THAT( run( { "explain", "a]" } ),
                 Answers( 2, "", "mountprofile: no error has the code a]; there are" + all + " [MP092]\n" ) );
    for ( const std::string code : { "MP999", "", "M", "MP", "MP0042", "X042", "MX042", "MP000" } )
        EXPECT_THAT( run( { "explain", code } ), Answers( 2, "",
                                                          StartsWith( "mountprofile: no error has the code " +
                                                                      code + "; there are MP001 MP002 " ) ) )
            << code;
    EXPECT_THAT( run( { "explain" } ), Answers( 2, "", "mountprofile: CODE is required [MP092]\n" ) );
}

} // namespace

} // namespace Corvid::Testing
