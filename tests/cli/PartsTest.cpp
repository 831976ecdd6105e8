// What of the command's parts cannot be seen from outside, or only with luck.

#include "Cli/CapturedErrors.h"
#include "Cli/OrderedWork.h"
#include "Cli/ProgressBar.h"
#include "Cli/SourceExcerpt.h"
#include "cli/CommandTest.h"

#include <fcntl.h>
#include <iostream>
#include <latch>
#include <thread>
#include <unistd.h>

namespace Corvid::Testing {

namespace {

using namespace Corvid::Cli;
using namespace std::chrono_literals;

class ProgressBarTest : public CommandTest {
  protected:
    ProgressBarTest()
        : descriptor_( ::open( ( directory() / "bar" ).c_str(), O_CREAT | O_WRONLY, 0600 ) ),
          out_( descriptor_ ) {}
    ~ProgressBarTest() override { ::close( descriptor_ ); }
    [[nodiscard]] std::string shown() {
        out_.flush();
        return readFile( directory() / "bar" );
    }

    int descriptor_;
    Output out_;
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
        EXPECT_EQ( work.take( 1min ), number * number );
    EXPECT_EQ( work.done(), 3U );
}

TEST( OrderedWorkTest, impatienceYieldsNothing ) {
    std::latch asked( 1 );
    OrderedWork<int> work( 2, 2, [&]( std::size_t ) {
        asked.wait();
        return 7;
    } );
    EXPECT_EQ( work.take( 1ms ), std::nullopt );
    asked.count_down();
    EXPECT_EQ( work.take( 1min ), 7 );
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
    EXPECT_THROW( for ( int i = 0; i < 5; ++i ) static_cast<void>( work.take( 1min ) ), std::runtime_error );
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

class SourceExcerptTest : public CommandTest {
  protected:
    SourceExcerptTest() {
        write( "agent", "one\ntwo\n" );
        error_.fileNameIs( ( directory() / "agent" ).string() );
        error_.lineIs( 2 );
        error_.charPositionInLineIs( 1 );
    }

    RecognitionError error_;
};

TEST_F( SourceExcerptTest, anErrorWithoutAPlaceHasNone ) {
    EXPECT_EQ( sourceExcerpt( error_, false ), "    2 | two\n      |  ^\n" );
    error_.lineIs( RecognitionError::noLine );
    EXPECT_EQ( sourceExcerpt( error_, false ), "" );
}

TEST_F( SourceExcerptTest, aFileThatHasGoneOrIsNoFileAnyMoreHasNone ) {
    error_.includeFileNameIs( directory().string() );
    EXPECT_EQ( sourceExcerpt( error_, false ), "" );
    error_.includeFileNameIs( ( directory() / "gone" ).string() );
    EXPECT_EQ( sourceExcerpt( error_, false ), "" );
}

TEST_F( SourceExcerptTest, aPlaceThatTheFileNoLongerHasIsItsEnd ) {
    error_.charPositionInLineIs( 77 );
    EXPECT_EQ( sourceExcerpt( error_, false ), "    2 | two\n      |    ^\n" );
    error_.lineIs( 3'000'000'000 );
    EXPECT_EQ( sourceExcerpt( error_, false ), "    2 | two\n      |    ^\n" );
    write( "agent", "" );
    EXPECT_EQ( sourceExcerpt( error_, false ), "    1 | \n      | ^\n" );
}

} // namespace

} // namespace Corvid::Testing
