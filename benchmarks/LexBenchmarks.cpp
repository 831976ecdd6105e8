// Lexing alone, of a text in memory: by the generated lexer, and as the parser gets its tokens.
#include "ProfileGenerator.h"

#include "ProfileParser/GeneratedLexer.h"
#include "ProfileParser/MountProfileHdlr.h"
#include "ProfileParser/TokenWindow.h"

#include <benchmark/benchmark.h>

#include "ProfileParser/GeneratedParser.h"

namespace {

using namespace Bench;

/// Takes every token of a text, as the listing of tokens does. @return how many there are.
std::size_t lexWithGeneratedLexer( Corvid::MountProfileHdlr& hdlr, std::string_view text ) {
    Corvid::GeneratedLexer lexer( hdlr, "Bench", text );
    std::size_t tokens = 0;
    for ( ; lexer.nextToken()->type != ANTLR3_TOKEN_EOF; ++tokens )
        lexer.forgetTokens();
    return tokens;
}

/// Takes every token of a text, as the parser does. @return how many there are.
std::size_t lexWithWindow( Corvid::MountProfileHdlr& hdlr, std::string_view text ) {
    Corvid::TokenWindow window( hdlr, "Bench", text );
    std::size_t tokens = 0;
    window.begin();
    for ( ANTLR3_UINT32 type; ( type = window.current()->type ) != ANTLR3_TOKEN_EOF; ++tokens )
        window.step( type == NEWLN );
    return tokens;
}

using Lex = std::size_t ( * )( Corvid::MountProfileHdlr&, std::string_view );

void lexBenchmark( benchmark::State& state, Lex lex, bool realistic ) {
    const auto mounts = static_cast<std::size_t>( state.range( 0 ) );
    const std::string text = realistic ? realisticProfile( "Bench", mounts, 1 ).front().text
                                       : plainProfile( plainMounts( mounts, Order::sorted, 1 ) );
    std::size_t tokens = 0;
    for ( auto _ : state ) {
        Corvid::MountProfileHdlr hdlr( "Bench", nullptr, nullptr, false );
        benchmark::DoNotOptimize( tokens = lex( hdlr, text ) );
        if ( !hdlr.validProfileFile() )
            state.SkipWithError( "the generated profile has a lexer error" );
    }
    using benchmark::Counter;
    const auto each = Counter::kIsIterationInvariantRate | Counter::kInvert;
    state.counters["per_token"] = Counter( static_cast<double>( tokens ), each );
    state.counters["per_entry"] = Counter( static_cast<double>( mounts ), each );
}

void sizes( benchmark::internal::Benchmark* lexing ) {
    for ( const std::int64_t mounts : { 10, 1'000, 100'000, 1'000'000 } )
        lexing->Arg( mounts );
}

BENCHMARK_CAPTURE( lexBenchmark, plain, lexWithWindow, false )->Apply( sizes );
BENCHMARK_CAPTURE( lexBenchmark, realistic, lexWithWindow, true )->Apply( sizes );
BENCHMARK_CAPTURE( lexBenchmark, plain_with_generated_lexer, lexWithGeneratedLexer, false )->Apply( sizes );
BENCHMARK_CAPTURE( lexBenchmark, realistic_with_generated_lexer, lexWithGeneratedLexer, true )
    ->Apply( sizes );

} // namespace
