// The form for programs of all kinds; share/mountprofile-check-1.schema.json describes it.

#include "Cli/CheckReport.h"
#include "Cli/ReportWriter.h"

namespace Corvid::Cli {

namespace {

class Writer : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    void file( const AgentRun& run );
    void diagnostic( const Diagnostic& diagnostic );
    void summary( const CheckCounts& counts );

  private:
    void range( const Diagnostic& diagnostic );
    void place( const TextPlace& place );
    void inclusion( const Inclusion& inclusion );
};

void Writer::place( const TextPlace& place ) {
    member( "{", "line", place.line );
    member( ",", "column", place.column );
    append( '}' );
}

void Writer::range( const Diagnostic& diagnostic ) {
    key( "{", "start" );
    place( diagnostic.begin );
    key( ",", "end" );
    place( diagnostic.end );
    append( '}' );
}

void Writer::inclusion( const Inclusion& inclusion ) {
    member( "{", "file", inclusion.file );
    member( ",", "line", inclusion.line );
    member( ",", "pattern", inclusion.pattern );
    member( ",", "match", inclusion.match );
    member( ",", "matches", inclusion.matches );
    append( '}' );
}

void Writer::diagnostic( const Diagnostic& diagnostic ) {
    member( "{", "code", diagnostic.code );
    member( ",", "severity", "error" );
    if ( !diagnostic.file.empty() )
        member( ",", "file", diagnostic.file );
    if ( diagnostic.place ) {
        member( ",", "line", diagnostic.place->line );
        member( ",", "column", diagnostic.place->column );
        key( ",", "range" );
        range( diagnostic );
    }
    member( ",", "message", diagnostic.message );
    if ( !diagnostic.hint.empty() )
        member( ",", "hint", diagnostic.hint );
    if ( diagnostic.includedFrom ) {
        key( ",", "includedFrom" );
        inclusion( *diagnostic.includedFrom );
    }
    append( '}' );
}

void Writer::file( const AgentRun& run ) {
    member( "{", "file", run.agentFile );
    member( ",", "outcome", nameOf( run.outcome ) );
    key( ",", "diagnostics" );
    append( '[' );
    if ( const auto found = diagnosticOf( run, false ) )
        diagnostic( *found );
    append( "]}" );
}

void Writer::summary( const CheckCounts& counts ) {
    member( "{", "checked", counts.checked() );
    member( ",", "valid", counts.valid );
    member( ",", "invalid", counts.invalid );
    member( ",", "notAgentFile", counts.notAgentFile );
    member( ",", "unreadable", counts.unreadable );
    member( ",", "passedOver", counts.passedOver );
    append( '}' );
}

class JsonReport final : public CheckReport {
  public:
    explicit JsonReport( Console& console ) : out_( console.out ) {}

    [[nodiscard]] std::string describe( const AgentRun& run ) const override {
        TextInMemory text;
        Writer( text ).file( run );
        return std::move( text ).take();
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
        if ( std::exchange( hasBegun_, true ) )
            return;
        out_.append( "{\"schema\": \"urn:mountprofile:check:1\",\n\"tool\": " );
        Writer( out_ ).tool( "{" );
        out_.append( "},\n\"files\": [" );
    }

    Output& out_;
    bool hasBegun_ = false;
    bool isFirst_ = true;
};

void JsonReport::end( const CheckCounts& counts, ExitStatus status,
                      const std::optional<Diagnostic>& problem ) {
    begin();
    out_.append( ']' );
    if ( problem ) {
        out_.append( ",\n\"error\": " );
        Writer( out_ ).diagnostic( *problem );
    }
    out_.append( ",\n\"summary\": " );
    Writer( out_ ).summary( counts );
    out_.append( ",\n\"exitStatus\": " );
    out_.appendNumber( static_cast<int>( status ) );
    out_.append( "}\n" );
}

} // namespace

std::unique_ptr<CheckReport> newJsonReport( Console& console ) {
    return std::make_unique<JsonReport>( console );
}

} // namespace Corvid::Cli
