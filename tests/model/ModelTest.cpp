// Compares the library with a second, independent reading of the language: a small model that shares no code
// with it reads the same generated files, and both must come to the same tokens, records, errors and traces.
//
// Four tests: generated files, every change of one token in a line of each construct, every byte where the
// lexer treats bytes in a way of its own, and the inputs of the conformance cases. The first takes a few
// thousand files in a run of the test suite. A long run takes these environment variables:
//   MOUNTPROFILE_MODEL_CASES  how many files (default 3000)
//   MOUNTPROFILE_MODEL_SEED   seed of the first file, the others take the numbers after it (default 1)
// for example
//   MOUNTPROFILE_MODEL_CASES=50000 MOUNTPROFILE_MODEL_SEED=7 ModelTest --gtest_filter='*Generated*'
// The same seed gives the same file on every machine: to look at a single difference again, give its seed and
// one case. What is printed of a difference is a shrunk input, ready to become a case of its own.

#include "model/Bytes.h"
#include "model/Corpus.h"
#include "model/Exhaustive.h"
#include "model/Generator.h"
#include "model/LibraryRun.h"
#include "model/ModelBuilder.h"
#include "model/Mutator.h"
#include "model/Shrink.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <iostream>

namespace Model {
namespace {

std::uint64_t environmentNumber( const char* name, std::uint64_t otherwise ) {
    const char* value = std::getenv( name );
    return value ? std::strtoull( value, nullptr, 10 ) : otherwise;
}

Case caseOf( std::uint64_t seed ) {
    Random random( seed );
    Generator generator( random );
    if ( random.chance( 30 ) )
        return generator.generateDamagedConstruct();
    Case input = generator.generate();
    if ( random.chance( 8 ) )
        input.agentText = tokenSoup( random );
    else if ( random.chance( 50 ) )
        mutate( input, random );
    if ( random.chance( 1 ) )
        generator.lengthen( input );
    return input;
}

std::string tokensText( const Lexed& lexed ) {
    std::string out;
    for ( const auto& [type, line, position, text] : lexed.tokens )
        out += std::string( typeName( type ) ) + ' ' + std::to_string( line ) + ':' +
               std::to_string( position ) + ' ' + escaped( text ) + '\n';
    if ( const auto& error = lexed.firstError )
        out += "error " + std::to_string( error->kind ) + ' ' + std::to_string( error->line ) + ':' +
               std::to_string( error->position ) + ' ' + escaped( error->description ) + ' ' +
               escaped( error->sourceLine ) + '\n';
    return out;
}

struct Comparison {
    std::string library;
    std::string model;
    std::string kind; ///< of the model's outcome
};

Comparison compare( const Case& input, LibraryRun& library ) {
    Comparison out;
    out.library = outcomeText( library.run( input ) );
    const Outcome modelled = Builder( input, library.directory( input ) ).run();
    out.model = outcomeText( modelled );
    out.kind = modelled.kind;
    const auto addTokens = [&]( const std::string& name, const std::string& text ) {
        out.library += "tokens of " + name + '\n' + tokensText( library.tokens( name ) );
        out.model += "tokens of " + name + '\n' + tokensText( lex( text ) );
    };
    addTokens( agentFileName, input.agentText );
    for ( const auto& [name, text] : input.otherFiles )
        addTokens( name, text );
    return out;
}

std::string difference( const Case& input, LibraryRun& library ) {
    const auto differs = [&]( const Case& candidate ) {
        const Comparison both = compare( candidate, library );
        return both.library != both.model;
    };
    const Case smallest = shrunk( input, differs );
    const Comparison both = compare( smallest, library );
    return caseText( smallest ) + "--- library\n" + both.library + "--- model\n" + both.model;
}

/// Compares case by case, and ends a test early when it has shown enough differences.
class Comparer {
  public:
    void use( const Case& input, const std::string& name ) {
        if ( differences_ == 5 )
            return;
        ++compared_;
        const Comparison both = compare( input, library_ );
        ++kinds_[both.kind];
        if ( both.library == both.model )
            return;
        ++differences_;
        ADD_FAILURE() << name << '\n' << difference( input, library_ );
    }
    [[nodiscard]] std::uint64_t compared() const { return compared_; }
    /// How many cases came to which kind of outcome.
    [[nodiscard]] const std::map<std::string, std::uint64_t>& kinds() const { return kinds_; }

  private:
    LibraryRun library_;
    std::uint64_t compared_ = 0;
    std::map<std::string, std::uint64_t> kinds_;
    unsigned differences_ = 0;
};

TEST( Model, ReadsGeneratedFilesAsTheLibraryDoes ) {
    const std::uint64_t count = environmentNumber( "MOUNTPROFILE_MODEL_CASES", 3000 );
    const std::uint64_t first = environmentNumber( "MOUNTPROFILE_MODEL_SEED", 1 );
    Comparer comparer;
    for ( std::uint64_t seed = first; seed < first + count; ++seed )
        comparer.use( caseOf( seed ), "seed " + std::to_string( seed ) );
    for ( const auto& [kind, files] : comparer.kinds() )
        std::cout << files << ' ' << kind << '\n';
    EXPECT_TRUE( count < 3000 || comparer.kinds().size() == 4 ) << "a kind of outcome was never generated";
}

TEST( Model, ReadsEveryChangeOfOneTokenAsTheLibraryDoes ) {
    Comparer comparer;
    forEveryChangeOfOneToken( [&]( const Case& input ) { comparer.use( input, "a token changed" ); } );
    EXPECT_GT( comparer.compared(), 10000U );
    EXPECT_GT( comparer.kinds().at( "valid" ), 500U );
}

TEST( Model, ReadsEveryByteAsTheLibraryDoes ) {
    Comparer comparer;
    forEveryByte( [&]( const Case& input ) { comparer.use( input, "a byte" ); } );
    EXPECT_GT( comparer.compared(), 12000U );
}

TEST( Model, ReadsTheConformanceCasesAsTheLibraryDoes ) {
    Comparer comparer;
    for ( const auto& folder : corpusFolders() )
        comparer.use( corpusCase( folder ), folder.filename() );
    EXPECT_GT( comparer.compared(), 100U );
}

} // namespace
} // namespace Model
