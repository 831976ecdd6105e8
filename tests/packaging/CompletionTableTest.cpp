#include "packaging/completion/CommandTable.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Corvid::Completion {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

class CompletionTableTest : public testing::Test {
  protected:
    CompletionTableTest() : command_( *program_.add_subcommand( "paint", "Paint a wall" ) ) {
        program_.set_help_flag();
        command_.set_help_flag();
    }

    CLI::App program_{ "", "painter" };
    CLI::App& command_;
    std::string text_;
};

TEST_F( CompletionTableTest, aValueOfAnUnknownKindIsRefusedWithWhatToDo ) {
    command_.add_option( "--with", text_, "What to paint with" )->type_name( "BRUSH" );
    try {
        (void)tableOf( program_ );
        FAIL() << "it was taken";
    } catch ( const std::runtime_error& error ) {
        EXPECT_THAT( error.what(), AllOf( HasSubstr( "paint --with: the value is called 'BRUSH'" ),
                                          HasSubstr( "type_name()" ),
                                          HasSubstr( "packaging/completion/CommandTable.cpp" ) ) );
    }
}

TEST_F( CompletionTableTest, aNameInLowerCaseIsTheWordsThatAreOffered ) {
    command_.add_option( "-c,--colour", text_, "In which colour" )->type_name( "red|green" );
    const OptionEntry option = tableOf( program_ ).commands.at( 0 ).options.at( 0 );
    EXPECT_THAT( option.spellings, ElementsAre( "-c", "--colour" ) );
    EXPECT_EQ( option.value.kind, Value::Kind::word );
    EXPECT_THAT( option.value.words, ElementsAre( "red", "green" ) );
}

TEST_F( CompletionTableTest, whatIsHiddenFromTheHelpIsNotOffered ) {
    command_.add_option( "--secretly", text_, "" )->group( "" );
    EXPECT_THAT( tableOf( program_ ).commands.at( 0 ).options, testing::IsEmpty() );
}

TEST_F( CompletionTableTest, filesAreOfferedWhereAnyOfTheArgumentsIsAFile ) {
    command_.add_option( "FILE", text_, "" )->type_name( "" );
    command_.add_option( "COLOUR", text_, "" )->type_name( "red|green" );
    EXPECT_EQ( tableOf( program_ ).commands.at( 0 ).argument.kind, Value::Kind::file );
}

} // namespace

} // namespace Corvid::Completion
