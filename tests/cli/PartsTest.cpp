// What of the command's parts cannot be seen from outside, or only with luck.

#include "Cli/AgentRun.h"
#include "Cli/CapturedErrors.h"
#include "Cli/Diagnostic.h"
#include "Cli/Hints.h"
#include "Cli/OrderedWork.h"
#include "Cli/PrintableText.h"
#include "Cli/ProgressBar.h"
#include "Cli/SourceExcerpt.h"
#include "Cli/SourceLines.h"
#include "Cli/SourceText.h"
#include "cli/CommandTest.h"

#include <fcntl.h>
#include <iostream>
#include <latch>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace Corvid::Testing {

namespace {

using namespace Corvid::Cli;
using namespace std::chrono_literals;

class OutputTest : public CommandTest {
  protected:
    OutputTest()
        : descriptor_( ::open( ( directory() / "out" ).c_str(), O_CREAT | O_WRONLY, 0600 ) ),
          out_( descriptor_ ) {}
    ~OutputTest() override { ::close( descriptor_ ); }
    [[nodiscard]] std::string shown() {
        out_.flush();
        return readFile( directory() / "out" );
    }

    int descriptor_;
    Output out_;
};

class ProgressBarTest : public OutputTest {
  protected:
    const ProgressBar::Clock::time_point start_{ 1h };
};

TEST_F( ProgressBarTest, appearsAfterASecondTenTimesASecondAndLeavesNothingBehind ) {
    const std::string half = "\r[####################....................] 5/10 files";
    const std::string full = "\r[########################################] 10/10 files";
    {
        ProgressBar bar( out_, true, 10, start_ );
        bar.show( 1, start_ + 999ms );
        bar.erase();
        EXPECT_EQ( shown(), "" );
        bar.show( 5, start_ + 1000ms );
        EXPECT_EQ( shown(), half );
        bar.show( 6, start_ + 1099ms );
        EXPECT_EQ( shown(), half );
        bar.show( 10, start_ + 1100ms );
        EXPECT_EQ( shown(), half + full );
    }
    EXPECT_EQ( shown(), half + full + "\r\033[K" );
}

TEST_F( ProgressBarTest, isSilentWhenItIsNotForPeople ) {
    {
        ProgressBar bar( out_, false, 10, start_ );
        bar.show( 5, start_ + 1h );
    }
    EXPECT_EQ( shown(), "" );
}

TEST_F( ProgressBarTest, isFullWhereThereIsNothingToDo ) {
    ProgressBar bar( out_, true, 0, start_ );
    bar.show( 0, start_ + 1h );
    EXPECT_EQ( shown(), "\r[########################################] 0/0 files" );
}

/// The next result, however often it is to be asked for.
template <class Result>
Result next( OrderedWork<Result>& work ) {
    for ( ;; )
        if ( const auto result = work.take( 1min ) )
            return *result;
}

/// What a sink took of pieces whose lengths surround a buffer's.
std::string appendPiecesTo( TextSink& sink, std::size_t buffer ) {
    std::string all;
    for ( const std::size_t before : { std::size_t{ 0 }, std::size_t{ 1 }, buffer / 2, buffer } )
        for ( const std::size_t size : { buffer - 1, buffer, buffer + 1, 3 * buffer, buffer - before } ) {
            for ( const std::string& piece :
                  { std::string( before, 'b' ), std::string( size, 's' ), std::string() } ) {
                sink.append( piece );
                all += piece;
            }
            sink.appendNumber( std::numeric_limits<std::int64_t>::min() );
            sink.append( '\n' );
            all += "-9223372036854775808\n";
        }
    return all;
}

TEST_F( OutputTest, takesPiecesOfAnyLength ) {
    const std::string written = appendPiecesTo( out_, std::size_t{ 1 } << 16 );
    EXPECT_TRUE( shown() == written );
}

TEST( TextInMemoryTest, takesPiecesOfAnyLength ) {
    TextInMemory text;
    const std::string written = appendPiecesTo( text, std::size_t{ 1 } << 12 );
    EXPECT_TRUE( std::move( text ).take() == written );
    EXPECT_EQ( TextInMemory().take(), "" );
    TextInMemory character;
    character.append( 'c' );
    EXPECT_EQ( std::move( character ).take(), "c" );
}

TEST( OrderedWorkTest, resultsComeInOrderWhateverIsReadyFirst ) {
    std::latch laterOnes( 2 );
    OrderedWork<std::size_t> work( 3, 3, [&]( std::size_t number ) {
        if ( number == 0 )
            laterOnes.wait();
        else
            laterOnes.count_down();
        return number * number;
    } );
    for ( std::size_t number = 0; number < 3; ++number )
        EXPECT_EQ( next( work ), number * number );
    EXPECT_EQ( work.done(), 3U );
}

TEST( OrderedWorkTest, whatFailedBeforeItWasAskedForIsThrown ) {
    OrderedWork<std::size_t> work( 2, 2,
                                   []( std::size_t ) -> std::size_t { throw std::out_of_range( "no" ); } );
    while ( work.done() < 2 )
        std::this_thread::yield();
    EXPECT_THROW( work.take( 1min ), std::out_of_range );
}

TEST( OrderedWorkTest, impatienceYieldsNothing ) {
    std::latch otherHasBegun( 1 );
    std::latch otherMayEnd( 1 );
    OrderedWork<int> work( 2, 2, [&, caller = std::this_thread::get_id()]( std::size_t number ) {
        if ( std::this_thread::get_id() == caller ) {
            otherHasBegun.wait();
        } else {
            otherHasBegun.count_down();
            otherMayEnd.wait();
        }
        return static_cast<int>( number );
    } );
    int taken = work.take( 1min ) ? 1 : 0; // the caller has computed one of both
    EXPECT_EQ( work.done(), 1U );
    EXPECT_EQ( work.take( 1ms ), std::nullopt );
    otherMayEnd.count_down();
    for ( ; taken < 2; ++taken )
        EXPECT_EQ( next( work ), taken );
}

TEST( OrderedWorkTest, aSingleResultOrThreadNeedsNoOther ) {
    for ( const auto& [count, threads] : { std::pair{ 1U, 8U }, std::pair{ 3U, 1U } } ) {
        OrderedWork<std::thread::id> work( count, threads,
                                           []( std::size_t ) { return std::this_thread::get_id(); } );
        for ( unsigned taken = 0; taken < count; ++taken ) {
            EXPECT_EQ( work.take( 1min ), std::this_thread::get_id() );
            EXPECT_EQ( work.done(), taken + 1 );
        }
    }
}

TEST( OrderedWorkTest, anExceptionIsHandedOn ) {
    OrderedWork<int> work( 5, 2, []( std::size_t number ) -> int {
        if ( number == 3 )
            throw std::runtime_error( "no more" );
        return 0;
    } );
    EXPECT_THROW( for ( int i = 0; i < 5; ++i ) next( work ), std::runtime_error );
}

TEST( CapturedErrorsTest, everyThreadCollectsItsOwnText ) {
    const CapturedErrors captured;
    std::vector<std::string> texts( 8 );
    {
        std::vector<std::jthread> threads;
        for ( std::size_t i = 0; i < texts.size(); ++i )
            threads.emplace_back( [&texts, i] {
                const CapturedErrors::Collector collector;
                for ( int line = 0; line < 1000; ++line )
                    std::cerr << "thread " << i << '\n' << std::flush;
                texts[i] = collector.text();
            } );
    }
    for ( std::size_t i = 0; i < texts.size(); ++i ) {
        std::string expected;
        for ( int line = 0; line < 1000; ++line )
            expected += "thread " + std::to_string( i ) + "\n";
        EXPECT_EQ( texts[i], expected );
    }
}

TEST( CapturedErrorsTest, textOfNoCollectorGoesWhereItWent ) {
    testing::internal::CaptureStderr();
    {
        const CapturedErrors captured;
        std::cerr << "before ";
        {
            const CapturedErrors::Collector outer;
            std::cerr << "outer";
            {
                const CapturedErrors::Collector inner;
                std::cerr << "inner";
                EXPECT_EQ( inner.text(), "inner" );
            }
            std::cerr << " again";
            EXPECT_EQ( outer.text(), "outer again" );
        }
        std::cerr << "between ";
    }
    std::cerr << "after";
    EXPECT_EQ( testing::internal::GetCapturedStderr(), "before between after" );
}

TEST( CapturedErrorsTest, whatCannotBeWrittenIsNotClaimed ) {
    class : public std::streambuf {
    } closed;
    std::streambuf* const before = std::cerr.rdbuf( &closed );
    {
        const CapturedErrors captured;
        EXPECT_THROW( std::cerr.put( 'x' ), std::ios_base::failure );
    }
    std::cerr.clear();
    std::cerr.rdbuf( before );
}

TEST( PrintableTextTest, ofBytesThatAreNoCharactersTheMiddleCanBeLeftOutAsWell ) {
    EXPECT_EQ( withoutMiddle( std::string( 10000, '\x80' ) ), "[... 10000 characters left out ...]" );
}

TEST( SourceExcerptTest, thePlaceGetsACaretAndWhatIsWrongALine ) {
    const std::string text = "one\n/a, K, read # c\n\tthree\n";
    const struct {
        Marks marks;
        std::string excerpt;
    } rows[] = {
        { { 5, 5, 5 }, "    2 | /a, K, read # c\n      |  ^\n" },
        { { 4, 4, 6 }, "    2 | /a, K, read # c\n      | ^~\n" },
        { { 15, 11, 15 }, "    2 | /a, K, read # c\n      |        ~~~~^\n" },
        { { 13, 11, 15 }, "    2 | /a, K, read # c\n      |        ~~^~\n" },
        { { 20, 11, 15 },
          "    2 | /a, K, read # c\n      |        ~~~~^\n" }, // the place is on the line below
        { { 20, 15, 15 }, "    3 |         three\n      | ^\n" },
        { { 21, 20, 23 }, "    3 |         three\n      | ~~~~~~~~^~\n" },
        { { 26, 26, 26 }, "    3 |         three\n      |              ^\n" },
        { { 27, 27, 27 }, "    3 |         three\n      |              ^\n" },
        { { 99, 99, 99 }, "    3 |         three\n      |              ^\n" },
        { { 99, 0, 99 }, "    3 |         three\n      | ~~~~~~~~~~~~~^\n" },
    };
    for ( const auto& [marks, excerpt] : rows )
        EXPECT_EQ( sourceExcerpt( text, marks, false ), excerpt ) << marks.place;
    EXPECT_EQ( sourceExcerpt( "", { 0, 0, 0 }, false ), "    1 | \n      | ^\n" );
    EXPECT_EQ( sourceExcerpt( std::string( 1000, '\n' ), { 999, 999, 999 }, false ),
               " 1000 | \n      | ^\n" );
    EXPECT_EQ( sourceExcerpt( std::string( 100000, '\n' ), { 99999, 99999, 99999 }, false ),
               "100000 | \n       | ^\n" );
    EXPECT_EQ( sourceExcerpt( "abc", { 1, 1, 2 }, true ), "    1 | abc\n      |  \033[1;31m^\033[0m\n" );
}

TEST( SourceExcerptTest, aLineUnderALongTextIsCutWithIt ) {
    const std::string text( 300, 'x' );
    EXPECT_EQ( sourceExcerpt( text, { 150, 10, 290 }, false ),
               "    1 | ..." + std::string( 140, 'x' ) + "...\n      |    " + std::string( 80, '~' ) + "^" +
                   std::string( 59, '~' ) + "\n" );
    const std::string untilCharacter( 59, 'x' );
    EXPECT_EQ( sourceExcerpt( untilCharacter + "\xC3\xA9" + "y", { 0, 0, 0 }, false ),
               "    1 | " + untilCharacter + "\xC3\xA9...\n      | ^\n" );
}

TEST( SourceExcerptTest, aLongTextIsCutBetweenCharacters ) {
    std::string text;
    for ( int i = 0; i < 100; ++i )
        text += "\xE4\xBA\x8C";
    EXPECT_EQ( sourceExcerpt( text, { 150, 150, 153 }, false ), "    1 | ..." + text.substr( 72, 138 ) +
                                                                    "...\n      |    " +
                                                                    std::string( 52, ' ' ) + "^~\n" );
    const std::string noCharacter( 300, '\x80' );
    std::string escaped;
    for ( int i = 0; i < 150; ++i )
        escaped += "\\x80";
    EXPECT_EQ( sourceExcerpt( noCharacter, { 150, 150, 151 }, false ),
               "    1 | ..." + escaped + "\n      |    ^~~~\n" );
}

TEST( SourceTextTest, placesCountBytesAndCharacters ) {
    const std::string text = "one\r\n\xC3\xA9\xE4\xBA\x8C\xFF!\n\n  \n";
    const struct {
        std::size_t offset;
        TextPlace place;
    } rows[] = {
        { 0, { 1, 1, 1 } },  { 2, { 1, 3, 3 } },  { 3, { 1, 4, 4 } },  { 4, { 1, 4, 4 } },
        { 5, { 2, 1, 1 } },  { 7, { 2, 3, 2 } },  { 10, { 2, 6, 3 } }, { 11, { 2, 7, 4 } },
        { 12, { 2, 8, 5 } }, { 13, { 3, 1, 1 } }, { 99, { 2, 8, 5 } }, { 17, { 2, 8, 5 } },
    };
    for ( const auto& [offset, place] : rows ) {
        const TextPlace found = textPlace( text, offset );
        EXPECT_EQ( found.line, place.line ) << offset;
        EXPECT_EQ( found.column, place.column ) << offset;
        EXPECT_EQ( found.character, place.character ) << offset;
    }
}

class SourceFileTest : public CommandTest {};

/// Lets no file be opened while it lives.
class NoMoreDescriptors {
  public:
    NoMoreDescriptors() {
        ::getrlimit( RLIMIT_NOFILE, &before_ );
        rlimit none = before_;
        none.rlim_cur = 0;
        ::setrlimit( RLIMIT_NOFILE, &none );
    }
    NoMoreDescriptors( const NoMoreDescriptors& ) = delete;
    NoMoreDescriptors& operator=( const NoMoreDescriptors& ) = delete;
    ~NoMoreDescriptors() { ::setrlimit( RLIMIT_NOFILE, &before_ ); }

  private:
    rlimit before_{};
};

TEST_F( SourceFileTest, aSourceThatHasGoneOrIsNoFileIsNotRead ) {
    EXPECT_EQ( readSource( ( directory() / "gone" ).string() ), std::nullopt );
    EXPECT_EQ( readSource( directory().string() ), std::nullopt );
    const std::string pipe = ( directory() / "pipe" ).string();
    ASSERT_EQ( ::mkfifo( pipe.c_str(), 0600 ), 0 );
    EXPECT_EQ( readSource( pipe ), std::nullopt ); // it would never come to an end
    write( "agent", "text" );
    const std::string agent = ( directory() / "agent" ).string();
    EXPECT_EQ( readSource( agent ), "text" );
    const NoMoreDescriptors none;
    EXPECT_EQ( readSource( agent ), std::nullopt );
}

TEST_F( SourceFileTest, aLineThatIsNotThereAnyMoreIsEmpty ) {
    write( "agent", "one\r\ntwo" );
    const std::string agent = ( directory() / "agent" ).string();
    SourceLines lines;
    EXPECT_EQ( lines.line( agent, 1 ), "one" );
    EXPECT_EQ( lines.line( agent, 2 ), "two" );
    EXPECT_EQ( lines.line( agent, 3 ), "" );
    EXPECT_EQ( lines.line( agent, 0 ), "" );
    EXPECT_EQ( lines.line( ( directory() / "gone" ).string(), 1 ), "" );
}

TEST_F( SourceFileTest, anErrorInAFileThatHasGoneIsToldWithoutItsSource ) {
    write( "agent", "agentName: Fan\n/a, K, x\n" );
    const std::string agent = ( directory() / "agent" ).string();
    const AgentRun run = runAgentFile( {}, agent, nullptr, std::nullopt );
    ASSERT_TRUE( diagnosticOf( run, false )->place );
    std::filesystem::remove( agent );
    const auto diagnostic = diagnosticOf( run, false );
    EXPECT_EQ( diagnostic->code, "MP042" );
    EXPECT_EQ( diagnostic->place, std::nullopt );
    EXPECT_EQ( diagnostic->hint, "" );
}

TEST_F( SourceFileTest, whatHasChangedSinceItWasReadGetsNoHintOfWhatItWas ) {
    const struct {
        std::string line;
        std::string now;
    } rows[] = {
        { "/a, K, x\n", "agentName: Fan\n/a, K, r\n" },
        { "/a, k, r\n", "agentName: Fan\n" },
    };
    for ( const auto& [line, now] : rows ) {
        write( "agent", "agentName: Fan\n" + line );
        const AgentRun run = runAgentFile( {}, ( directory() / "agent" ).string(), nullptr, std::nullopt );
        EXPECT_NE( hintFor( *run.handler, "agentName: Fan\n" + line ), "" ) << line;
        EXPECT_EQ( hintFor( *run.handler, now ), "" ) << now;
    }
}

} // namespace

} // namespace Corvid::Testing
