// docs/security.md tells of every assertion why no file reaches it: the list has to be that of the sources.
#include "docs/MarkdownFile.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <set>

namespace CorvidTest {

namespace {

/// The texts of the string literals, raw and plain, that stand side by side at the end of an assertion.
std::string joinedLiterals( const std::string& code ) {
    static const std::regex literal( R"lit(R"\((.*?)\)"|"([^"]*)")lit" );
    std::string text;
    for ( std::sregex_iterator found( code.begin(), code.end(), literal ); found != std::sregex_iterator();
          ++found )
        text += ( *found )[1].matched ? ( *found )[1].str() : ( *found )[2].str();
    return text;
}

/// The texts of all assertions in a source file.
std::set<std::string> assertionsOf( const std::string& source ) {
    static const std::regex assertion( R"(\n +HDLR_ASSERT\(([^;]*)\);)" );
    std::set<std::string> texts;
    for ( std::sregex_iterator found( source.begin(), source.end(), assertion );
          found != std::sregex_iterator(); ++found )
        texts.insert( joinedLiterals( ( *found )[1] ) );
    return texts;
}

std::set<std::string> assertionsOfTheLibrary() {
    std::set<std::string> all;
    for ( const auto& entry : std::filesystem::directory_iterator( sourcePath( "ProfileParser" ) ) )
        if ( entry.path().extension() == ".cpp" )
            all.merge( assertionsOf( contentOf( entry.path() ) ) );
    return all;
}

/// The first cells of the table's rows, without the marks of inline code.
std::set<std::string> assertionsOfTheDocument() {
    const std::string document = contentOf( sourcePath( "docs/security.md" ) );
    static const std::regex row( R"(\n\| `([^`]*)` \| [^|]{20,} \|)" );
    std::set<std::string> texts;
    for ( std::sregex_iterator found( document.begin(), document.end(), row );
          found != std::sregex_iterator(); ++found )
        texts.insert( ( *found )[1] );
    return texts;
}

} // namespace

TEST( Security, TheDocumentTellsOfEveryAssertionAndNoOther ) {
    const auto asserted = assertionsOfTheLibrary();
    EXPECT_THAT( asserted, testing::SizeIs( testing::Ge( 13U ) ) );
    EXPECT_THAT( assertionsOfTheDocument(), testing::ContainerEq( asserted ) );
}

} // namespace CorvidTest
