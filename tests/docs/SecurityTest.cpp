// docs/security.md tells of every assertion why no file reaches it: the list has to be that of the sources.
#include "docs/MarkdownFile.h"

#include <gmock/gmock.h>

#include <cctype>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

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

/// The texts of all assertions in a source file; not the definitions of the macros.
std::set<std::string> assertionsOf( const std::string& source ) {
    static const std::regex assertion( R"(\n[^#\n]*\b(?:HDLR|KIV)_ASSERT(?:_TEXT)?\(([^;]*)\);)" );
    std::set<std::string> texts;
    for ( std::sregex_iterator found( source.begin(), source.end(), assertion );
          found != std::sregex_iterator(); ++found )
        texts.insert( joinedLiterals( ( *found )[1] ) );
    return texts;
}

std::set<std::string> assertionsOfAllSources() {
    static const std::set<std::string> kinds{ ".cpp", ".h", ".g" };
    std::set<std::string> all;
    for ( const char* folder : { "Platform", "ProfileStore", "ProfileParserAntlr", "ProfileParser",
                                 "ProfileDocument", "CInterface", "Cli" } )
        for ( const auto& entry : std::filesystem::recursive_directory_iterator( sourcePath( folder ) ) )
            if ( kinds.contains( entry.path().extension().string() ) )
                all.merge( assertionsOf( contentOf( entry.path() ) ) );
    return all;
}

struct Row {
    std::string assertion;              ///< without the marks of inline code
    std::vector<std::string> checkedBy; ///< names of fuzz targets and tests
};

/// All words in inline code.
std::vector<std::string> namesIn( const std::string& cell ) {
    static const std::regex name( "`([A-Za-z-]+)`" );
    std::vector<std::string> names;
    for ( std::sregex_iterator found( cell.begin(), cell.end(), name ); found != std::sregex_iterator();
          ++found )
        names.push_back( ( *found )[1] );
    return names;
}

std::vector<Row> rowsOfTheDocument() {
    const std::string document = contentOf( sourcePath( "docs/security.md" ) );
    static const std::regex row( R"(\n\| `([^`]*)` \| [^|]{20,} \| ([^|\n]*) \|)" );
    const auto table = document.find( "| Text | " );
    std::vector<Row> rows;
    for ( std::sregex_iterator found( document.begin() + static_cast<std::ptrdiff_t>( table ), document.end(),
                                      row );
          found != std::sregex_iterator(); ++found )
        rows.push_back( { ( *found )[1], namesIn( ( *found )[2] ) } );
    return rows;
}

/// The names of the fuzz targets, and of the tests of the handler's assertions.
std::set<std::string> knownChecks() {
    std::set<std::string> names;
    const auto collect = [&names]( const std::string& file, const std::regex& pattern ) {
        const std::string text = contentOf( sourcePath( file ) );
        for ( std::sregex_iterator found( text.begin(), text.end(), pattern );
              found != std::sregex_iterator(); ++found )
            names.insert( ( *found )[1] );
    };
    collect( "fuzz/CMakeLists.txt", std::regex( R"(\ncorvid_fuzz_target\(([a-z-]+) )" ) );
    for ( const char* file :
          { "tests/unit/Handler/AssertionsTest.cpp", "tests/unit/Handler/PlatformFaultsTest.cpp" } )
        collect( file, std::regex( R"(\nTEST_F\( \w+DeathTest, (\w+) \))" ) );
    return names;
}

} // namespace

TEST( Security, TheDocumentTellsOfEveryAssertionAndNoOther ) {
    const auto asserted = assertionsOfAllSources();
    EXPECT_THAT( asserted, testing::SizeIs( testing::Ge( 13U ) ) );
    std::set<std::string> told;
    for ( const Row& row : rowsOfTheDocument() )
        told.insert( row.assertion );
    EXPECT_THAT( told, testing::ContainerEq( asserted ) );
}

TEST( Security, WhatChecksAnAssertionIsThere ) {
    const auto known = knownChecks();
    for ( const Row& row : rowsOfTheDocument() ) {
        EXPECT_THAT( row.checkedBy, testing::Not( testing::IsEmpty() ) ) << row.assertion;
        for ( const std::string& check : row.checkedBy )
            EXPECT_THAT( known, testing::Contains( check ) ) << row.assertion;
    }
}

TEST( Security, TheDocumentTellsOfEveryFuzzTarget ) {
    const std::string document = contentOf( sourcePath( "docs/security.md" ) );
    for ( const std::string& check : knownChecks() ) {
        const bool isTest = std::isupper( static_cast<unsigned char>( check.front() ) ) != 0;
        EXPECT_THAT( document, testing::HasSubstr( isTest ? "" : "\n| `" + check + "` | " ) );
    }
}

} // namespace CorvidTest
