// The form for programs of all kinds; share/mountprofile-check-1.schema.json describes it.

#include "Cli/CheckReport.h"
#include "Cli/JsonValues.h"

namespace Corvid::Cli {

namespace {

Json placeValue( const TextPlace& place ) {
    return { { "line", place.line }, { "column", place.column } };
}

Json diagnosticValue( const Diagnostic& diagnostic ) {
    Json value{ { "code", diagnostic.code }, { "severity", "error" } };
    if ( !diagnostic.file.empty() )
        value["file"] = jsonText( diagnostic.file );
    if ( diagnostic.place ) {
        value["line"] = diagnostic.place->line;
        value["column"] = diagnostic.place->column;
        value["range"] = { { "start", placeValue( diagnostic.begin ) },
                           { "end", placeValue( diagnostic.end ) } };
    }
    value["message"] = jsonText( diagnostic.message );
    if ( !diagnostic.hint.empty() )
        value["hint"] = jsonText( diagnostic.hint );
    if ( const auto& inclusion = diagnostic.includedFrom )
        value["includedFrom"] = { { "file", jsonText( inclusion->file ) },
                                  { "line", inclusion->line },
                                  { "pattern", jsonText( inclusion->pattern ) },
                                  { "match", inclusion->match },
                                  { "matches", inclusion->matches } };
    return value;
}

class JsonReport final : public CheckReport {
  public:
    explicit JsonReport( Console& console ) : out_( console.out ) {}

    [[nodiscard]] std::string describe( const AgentRun& run ) const override {
        Json value{ { "file", jsonText( run.agentFile ) }, { "outcome", nameOf( run.outcome ) } };
        Json diagnostics = Json::array();
        if ( const auto diagnostic = diagnosticOf( run, false ) )
            diagnostics.push_back( diagnosticValue( *diagnostic ) );
        value["diagnostics"] = std::move( diagnostics );
        return asciiText( value );
    }
    void file( const std::string& description ) override {
        begin();
        out_.append( std::exchange( isFirst_, false ) ? "\n " : ",\n " );
        out_.append( description );
    }
    void end( const CheckCounts& counts, ExitStatus status,
              const std::optional<Diagnostic>& problem ) override;
    void usageError( const Diagnostic& diagnostic ) override { end( {}, ExitStatus::trouble, diagnostic ); }

  private:
    void begin() {
        if ( !std::exchange( hasBegun_, true ) )
            out_.append( "{\"schema\": \"urn:mountprofile:check:1\",\n\"tool\": " + asciiText( toolValue() ) +
                         ",\n\"files\": [" );
    }

    Output& out_;
    bool hasBegun_ = false;
    bool isFirst_ = true;
};

void JsonReport::end( const CheckCounts& counts, ExitStatus status,
                      const std::optional<Diagnostic>& problem ) {
    begin();
    out_.append( "]" );
    if ( problem )
        out_.append( ",\n\"error\": " + asciiText( diagnosticValue( *problem ) ) );
    Json summary;
    summary["checked"] = counts.checked();
    summary["valid"] = counts.valid;
    summary["invalid"] = counts.invalid;
    summary["notAgentFile"] = counts.notAgentFile;
    summary["unreadable"] = counts.unreadable;
    summary["passedOver"] = counts.passedOver;
    out_.append( ",\n\"summary\": " + asciiText( summary ) + ",\n\"exitStatus\": " );
    out_.appendNumber( static_cast<int>( status ) );
    out_.append( "}\n" );
}

} // namespace

std::unique_ptr<CheckReport> newJsonReport( Console& console ) {
    return std::make_unique<JsonReport>( console );
}

} // namespace Corvid::Cli
