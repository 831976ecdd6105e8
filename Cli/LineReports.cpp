// The forms in which every error is a line: that of compilers, and that of a hosted CI's annotations.

#include "Cli/CheckReport.h"
#include "Cli/CommandCodes.h"
#include "Cli/PrintableText.h"

#include <algorithm>

namespace Corvid::Cli {

namespace {

/// Writes the lines of each error; nothing is said of valid files.
class LineReport : public CheckReport {
  public:
    explicit LineReport( Console& console ) : out_( console.out ) {}

    [[nodiscard]] std::string describe( const AgentRun& run ) const override {
        const auto diagnostic = diagnosticOf( run, false );
        return diagnostic ? linesOf( *diagnostic ) : std::string();
    }
    void file( const std::string& description ) override { out_.append( description ); }
    void end( const CheckCounts& /*counts*/, ExitStatus /*status*/,
              const std::optional<Diagnostic>& problem ) override {
        if ( problem )
            usageError( *problem );
    }
    void usageError( const Diagnostic& diagnostic ) override { out_.append( linesOf( diagnostic ) ); }

  private:
    [[nodiscard]] virtual std::string linesOf( const Diagnostic& diagnostic ) const = 0;

    Output& out_;
};

class GccReport final : public LineReport {
    using LineReport::LineReport;

    [[nodiscard]] std::string linesOf( const Diagnostic& diagnostic ) const override {
        std::string place = printable( diagnostic.file );
        if ( place.empty() )
            place = "mountprofile";
        if ( diagnostic.place )
            place += ":" + std::to_string( diagnostic.place->line ) + ":" +
                     std::to_string( diagnostic.place->column );
        std::string lines;
        if ( const auto& inclusion = diagnostic.includedFrom )
            lines += "In file included from " + printable( inclusion->file ) + ":" +
                     std::to_string( inclusion->line ) + ":\n";
        lines += place + ": error: " + diagnostic.message + codeMark( diagnostic.code ) + "\n";
        if ( !diagnostic.hint.empty() )
            lines += place + ": note: " + diagnostic.hint + "\n";
        return lines;
    }
};

class GithubReport final : public LineReport {
    using LineReport::LineReport;

    /// A text within a line that is read as a command: its own signs are written as `%` and a number.
    static std::string escaped( std::string_view text, std::string_view signs ) {
        std::string line;
        for ( const char c : text ) {
            if ( signs.find( c ) == std::string_view::npos )
                line += c;
            else
                appendPercentEncoded( line, c );
        }
        return line;
    }
    static std::string property( std::string_view name, std::string_view value ) {
        return std::string( name ) + "=" + escaped( value, "%\r\n:," ) + ",";
    }

    [[nodiscard]] std::string linesOf( const Diagnostic& diagnostic ) const override {
        std::string line = "::error ";
        if ( !diagnostic.file.empty() )
            line += property( "file", printable( diagnostic.file ) );
        if ( diagnostic.place ) {
            const TextPlace& begin = diagnostic.begin;
            const TextPlace& end = diagnostic.end;
            line += property( "line", std::to_string( begin.line ) );
            line += property( "col", std::to_string( begin.character ) );
            line += property( "endLine", std::to_string( end.line ) );
            line += property( "endColumn", std::to_string( end.character ) );
        }
        line += "title=" + std::string( diagnostic.code ) + "::";
        std::string text = diagnostic.message;
        if ( diagnostic.includedFrom )
            text += "\n" + printable( *diagnostic.includedFrom );
        if ( !diagnostic.hint.empty() )
            text += "\nhint: " + diagnostic.hint;
        return line + escaped( text, "%\r\n" ) + "\n";
    }
};

} // namespace

std::unique_ptr<CheckReport> newGccReport( Console& console ) {
    return std::make_unique<GccReport>( console );
}

std::unique_ptr<CheckReport> newGithubReport( Console& console ) {
    return std::make_unique<GithubReport>( console );
}

} // namespace Corvid::Cli
