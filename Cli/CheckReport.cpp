#include "Cli/CheckReport.h"

#include <algorithm>

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
    void end( const CheckCounts& counts, ExitStatus status,
              const std::optional<Diagnostic>& problem ) override;
    void usageError( const Diagnostic& diagnostic ) override {
        const std::string hint = diagnostic.hint.empty() ? "" : "; " + diagnostic.hint;
        console_.complain( diagnostic.message + hint, diagnostic.code );
    }

  private:
    Console& console_;
    bool coloured_;
};

void TextReport::end( const CheckCounts& counts, ExitStatus /*status*/,
                      const std::optional<Diagnostic>& problem ) {
    if ( problem )
        usageError( *problem );
    std::string line = counted( counts.checked(), "file", "files" ) +
                       " checked: " + std::to_string( counts.valid ) + " valid";
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

std::span<const ReportFormat> reportFormats() {
    static constexpr ReportFormat formats[] = { { "text", newTextReport },
                                                { "json", newJsonReport },
                                                { "sarif", newSarifReport },
                                                { "gcc", newGccReport },
                                                { "github", newGithubReport } };
    return formats;
}

const ReportFormat* reportFormat( std::string_view name ) {
    const auto formats = reportFormats();
    const auto found = std::ranges::find( formats, name, &ReportFormat::name );
    return found == formats.end() ? nullptr : &*found;
}

} // namespace Corvid::Cli
