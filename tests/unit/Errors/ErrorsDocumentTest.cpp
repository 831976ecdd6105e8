// docs/errors.md is held to what it says: its examples are run, and no text of an error is missing in it.
//
//   ### CODE `TEXT`               a section about one text; "…" stands for what differs
//   ```mountprofile file=NAME     a file beside the examples that follow in the section
//   ```mountprofile wrong         an agent file, named Fan, with an error
//   ```prints                     the line that the one before prints
//   ```mountprofile valid         an agent file without one
//
// Sections without a text of the library have console examples, which are tested with the command.

#include "ProfileParser/ErrorDetails.h"
#include "docs/MarkdownFile.h"
#include "support/ParsedProfile.h"
#include "unit/Errors/ErrorTexts.h"

#include <algorithm>
#include <regex>
#include <set>

namespace {

using namespace CorvidTest;

struct Section {
    std::string heading; ///< without its marks
    std::vector<MarkdownBlock> blocks;
    [[nodiscard]] bool isAboutOneText() const {
        return heading.starts_with( "MP" ) && heading.ends_with( "`" );
    }
    [[nodiscard]] bool isAboutTheCommand() const { return heading.starts_with( "MP" ) && !isAboutOneText(); }
};

std::string documentText() {
    return contentOf( sourcePath( "docs/errors.md" ) );
}

std::vector<Section> sectionsOfDocument() {
    const MarkdownFile document( "docs/errors.md" );
    std::vector<Section> sections;
    for ( const auto& heading : document.headings() )
        sections.push_back( { heading, {} } );
    for ( const auto& block : document.blocks() )
        std::ranges::find( sections, block.section, &Section::heading )->blocks.push_back( block );
    return sections;
}

/// The parts of a heading's text around each "…".
std::vector<std::string> fixedParts( const std::string& heading ) {
    constexpr std::string_view gap = "…";
    const auto first = heading.find( '`' ) + 1;
    std::string rest = heading.substr( first, heading.size() - 1 - first );
    std::vector<std::string> parts;
    for ( auto at = rest.find( gap ); at != std::string::npos; at = rest.find( gap ) ) {
        parts.push_back( rest.substr( 0, at ) );
        rest.erase( 0, at + gap.size() );
    }
    parts.push_back( rest );
    return parts;
}

bool holdsInOrder( const std::string& text, const std::vector<std::string>& parts ) {
    std::size_t at = 0;
    for ( const std::string& part : parts ) {
        at = text.find( part, at );
        if ( at == std::string::npos )
            return false;
        at += part.size();
    }
    return true;
}

/// What a run prints, without the directory that the files lie in.
std::string printedBy( const ParsedProfile& parsed ) {
    std::string printed = parsed.standardError();
    const std::string directory = parsed.fileBeside( "" );
    for ( auto at = printed.find( directory ); at != std::string::npos; at = printed.find( directory ) )
        printed.erase( at, directory.size() );
    return printed;
}

std::string withoutBlanksAtEnds( const std::string& text ) {
    constexpr std::string_view blanks = " \n";
    const auto first = text.find_first_not_of( blanks );
    return first == std::string::npos ? ""
                                      : text.substr( first, text.find_last_not_of( blanks ) + 1 - first );
}

void checkExamples( const Section& section ) {
    SCOPED_TRACE( "section " + section.heading );
    ParseOptions options{ .agentFileName = "Fan" };
    bool isShown = false;
    bool isPutRight = false;
    std::string printed;
    for ( const MarkdownBlock& block : section.blocks ) {
        constexpr std::string_view fileTag = "file=";
        if ( block.info.starts_with( fileTag ) ) {
            options.files[block.info.substr( fileTag.size() )] = block.text;
        } else if ( block.language == "prints" ) {
            EXPECT_EQ( block.text, printed );
            isShown = isShown ||
                      ( section.isAboutOneText() && holdsInOrder( printed, fixedParts( section.heading ) ) );
        } else {
            const ParsedProfile parsed( block.text, options );
            ASSERT_EQ( block.language, "mountprofile" );
            ASSERT_TRUE( block.info == "wrong" || block.info == "valid" ) << block.info;
            EXPECT_EQ( parsed.outcome(), block.info == "wrong" ? "invalid" : "valid" )
                << block.text << parsed.description();
            isPutRight = isPutRight || ( isShown && parsed.outcome() == "valid" );
            printed = printedBy( parsed );
        }
    }
    EXPECT_EQ( isShown, section.isAboutOneText() ) << "no example prints the heading's text";
    EXPECT_EQ( isPutRight, section.isAboutOneText() ) << "no example is right";
}

TEST( ErrorsDocument, ShowsWhatEachExamplePrints ) {
    const auto sections = sectionsOfDocument();
    EXPECT_GT( std::ranges::count_if( sections, &Section::isAboutOneText ), 30 );
    for ( const Section& section : sections )
        if ( !section.isAboutTheCommand() )
            checkExamples( section );
}

/// The codes of a section's heading, and of the rows of a table's first column.
std::set<std::string> codesIn( const std::string& document ) {
    static const std::regex code( R"((?:^|\n)(?:### |\| )(MP[0-9]{3}) )" );
    std::set<std::string> codes;
    for ( std::sregex_iterator match( document.begin(), document.end(), code ), none; match != none; ++match )
        codes.insert( ( *match )[1] );
    return codes;
}

TEST( ErrorsDocument, HoldsEveryCodeOfAnErrorAndNoOther ) {
    std::set<std::string> codes{ "MP090", "MP091", "MP092", "MP093", "MP094" }; // the command's
    for ( const Corvid::ErrorCode& row : Corvid::errorCodes() )
        codes.emplace( row.code );
    EXPECT_EQ( codesIn( documentText() ), codes );
}

TEST( ErrorsDocument, PutsEveryTextUnderItsCode ) {
    for ( const Section& section : sectionsOfDocument() )
        if ( section.isAboutOneText() ) {
            const std::string text = section.heading.substr( section.heading.find( '`' ) + 1 );
            EXPECT_EQ( Corvid::errorCodeOf( text ), section.heading.substr( 0, 5 ) ) << text;
        }
}

TEST( ErrorCodes, AreGivenToEveryTextOfAnError ) {
    // What stands behind the beginning of a message, or in front of all.
    const std::set<std::string> furtherParts{ " is already present with type: ",
                                              ". Mismatched type: ",
                                              "' defined before this line.",
                                              "' is already declared",
                                              ". Multiple conditions not allowed.",
                                              "<EOF>",
                                              " In agent title, ",
                                              " In include file, ",
                                              " In mount group '",
                                              "' , ",
                                              " near '",
                                              "', ",
                                              " at <EOF>, ",
                                              ", near EOF \n",
                                              ", near '",
                                              "'\n" };
    for ( const ErrorText& text : allErrorTexts() )
        EXPECT_NE( Corvid::errorCodeOf( text.text ) == Corvid::unknownErrorCode,
                   !furtherParts.contains( text.text ) )
            << text.text;
    EXPECT_EQ( Corvid::errorCodeOf( "something else" ), "MP000" );
    EXPECT_EQ( Corvid::errorCodeOf( "" ), "MP000" );
}

TEST( ErrorsDocument, HoldsEveryTextOfAnError ) {
    const std::string document = documentText();
    for ( const ErrorText& text : allErrorTexts() )
        EXPECT_NE( document.find( withoutBlanksAtEnds( text.text ) ), std::string::npos ) << text.text;
}

TEST( ErrorsDocument, ListsWhatNoFileBringsOutAsSuch ) {
    const std::string document = documentText();
    const auto list = document.find( "\n## Texts that no file brings out\n" );
    ASSERT_NE( list, std::string::npos );
    for ( const UnreachableText& unreachable : unreachableErrorTexts() ) {
        const std::string text = withoutBlanksAtEnds( unreachable.text.text );
        EXPECT_NE( document.find( text, list ), std::string::npos ) << text;
    }
}

} // namespace
