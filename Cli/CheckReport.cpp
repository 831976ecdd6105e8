#include "Cli/CheckReport.h"

#include "Cli/Diagnostics.h"

#include <string_view>

namespace Corvid::Cli {

namespace {

std::string counted( std::size_t count, std::string_view one, std::string_view many ) {
    return std::to_string( count ) + " " + std::string( count == 1 ? one : many );
}

class TextReport final : public CheckReport {
  public:
    explicit TextReport( Console& console )
        : console_( console ), coloured_( mayBeColoured( console.err ) ) {}

    [[nodiscard]] std::string describe( const AgentRun& run ) const override {
        return diagnosticsOf( run, coloured_ );
    }
    void file( const std::string& description ) override {
        console_.err.append( description );
        console_.err.flush();
    }
    void end( const CheckCounts& counts ) override;

  private:
    Console& console_;
    bool coloured_;
};

void TextReport::end( const CheckCounts& counts ) {
    const std::size_t checked = counts.valid + counts.invalid + counts.notAgentFile + counts.unreadable;
    std::string line =
        counted( checked, "file", "files" ) + " checked: " + std::to_string( counts.valid ) + " valid";
    if ( counts.invalid )
        line += ", " + std::to_string( counts.invalid ) + " invalid";
    if ( counts.notAgentFile )
        line += ", " + counted( counts.notAgentFile, "not an agent file", "not agent files" );
    if ( counts.unreadable )
        line += ", " + std::to_string( counts.unreadable ) + " unreadable";
    if ( counts.passedOver )
        line += "; " + counted( counts.passedOver, "other file", "other files" ) + " passed over";
    console_.out.append( line + "\n" );
}

} // namespace

CheckReport::~CheckReport() = default;

std::unique_ptr<CheckReport> newTextReport( Console& console ) {
    return std::make_unique<TextReport>( console );
}

} // namespace Corvid::Cli
