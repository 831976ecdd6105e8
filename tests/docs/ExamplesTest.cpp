// The agent files below examples/ come out as they should, and none is forgotten here.
#include "docs/MarkdownFile.h"

#include "ProfileParser/MountProfileHdlr.h"
#include "support/ParsedProfile.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace CorvidTest {

namespace {

struct ExampleFile {
    std::string path;  ///< below the source tree
    std::string agent; ///< the profile's name
    std::size_t groups;
    std::string error; ///< the end of the printed line; empty for a valid file
};

const std::vector<ExampleFile>& exampleFiles() {
    static const std::vector<ExampleFile> files{
        { "examples/broken/agent", "Broken-", 1,
          "examples/broken/agent:6:1: error: In mount group 'all' ,  near '/', Expecting end of line." },
        { "examples/fan/agent", "Fan-", 4, "" },
        { "examples/probes/agent", "ProbeRunner-", 2, "" },
        { "examples/standalone/agent", "boot-loader-2", 2, "" },
        { "examples/test-root/agent", "ConfigWatch", 1,
          "No include file found matching " CORVID_SOURCE_DIR "/examples/test-root/ConfigMountProfile" },
    };
    return files;
}

} // namespace

TEST( Examples, EveryAgentFileHasTheOutcomeThatItIsMeantToHave ) {
    ::unsetenv( "K7_CHROOT" );
    for ( const auto& file : exampleFiles() ) {
        const Kiv::Ptr<Corvid::PassiveAgentProfileDir> root( new Corvid::PassiveAgentProfileDir );
        Corvid::MountProfileHdlr handler( sourcePath( file.path ), root, nullptr, true );
        const CapturedStandardError printed;
        handler.run();
        ASSERT_TRUE( handler.agentProfile() ) << file.path;
        EXPECT_EQ( handler.agentProfile()->name().str(), file.agent );
        EXPECT_EQ( handler.agentProfile()->mountGroup().size(), file.groups ) << file.path;
        EXPECT_EQ( handler.agentProfile()->validProfile(), file.error.empty() ) << printed.text();
        EXPECT_THAT( printed.text(), testing::EndsWith( file.error.empty() ? "" : file.error + "\n" ) );
        EXPECT_EQ( printed.text().empty(), file.error.empty() ) << printed.text();
    }
}

TEST( Examples, NoAgentFileIsLeftOut ) {
    std::vector<std::string> found;
    for ( const auto& entry : std::filesystem::recursive_directory_iterator( sourcePath( "examples" ) ) )
        if ( entry.path().filename() == "agent" )
            found.push_back( std::filesystem::relative( entry.path(), sourcePath( "" ) ).string() );
    std::vector<std::string> known;
    for ( const auto& file : exampleFiles() )
        known.push_back( file.path );
    EXPECT_THAT( found, testing::UnorderedElementsAreArray( known ) );
}

} // namespace CorvidTest
