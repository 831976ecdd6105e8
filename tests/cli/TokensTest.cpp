#include "cli/CommandTest.h"

namespace Corvid::Testing {

namespace {

class TokensTest : public CommandTest {};

TEST_F( TokensTest, everyTokenIsALine ) {
    write( "agent", "# none\nmountGroup: a\\b\n\"\xC3\xA9\x01\" <= 0x1f 1.5 \\\n%slot" );
    EXPECT_THAT(
        run( { "tokens", "agent" } ),
        Answers( 1,
                 "41 MOUNTGROUP 2:0 mountGroup\n"
                 "12 COLON 2:10 :\n"
                 "35 LIDENT 2:12 a\n"
                 "56 STRING 3:0 \"\\xC3\\xA9\\x01\"\n"
                 "46 OP 3:6 <=\n"
                 "26 HEX 3:9 0x1f\n"
                 "23 FLOAT 3:14 1.5\n"
                 "49 PERCENTAGE 4:0 %\n"
                 "35 LIDENT 4:1 slot\n"
                 "43 NEWLN 1:0 \\x0A\n"
                 "EOF\n"
                 "ERROR 1 unexpected character after line continuation character, near '\\x5Cn'\\x0A\n",
                 "" ) );
}

TEST_F( TokensTest, aBackslashAndWhatIsNotShownAreEscaped ) {
    write( "agent", "\"\\x\x7F\"" );
    EXPECT_THAT( run( { "tokens", "agent" } ),
                 Answers( 0, "56 STRING 1:-1 \"\\x5Cx\\x7F\"\n43 NEWLN 1:0 \\x0A\nEOF\n", "" ) );
}

TEST_F( TokensTest, anEmptyFileHasOnlyTheAppendedLineEnd ) {
    write( "agent", "" );
    EXPECT_THAT( run( { "tokens", "agent" } ), Answers( 0, "43 NEWLN 1:0 \\x0A\nEOF\n", "" ) );
}

} // namespace

} // namespace Corvid::Testing
