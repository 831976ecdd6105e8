// The form of static analysis tools, for services that collect and show their findings.

#include "Cli/CheckReport.h"
#include "Cli/ErrorsPage.h"
#include "Cli/PrintableText.h"
#include "Cli/ReportWriter.h"

#include <algorithm>

namespace Corvid::Cli {

namespace {

/// A path as a reference: what has a meaning of its own there is written as `%` and the byte's number.
std::string uriOf( std::string_view path ) {
    static constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string uri = path.starts_with( '/' ) ? "file://" : "";
    for ( const char c : path ) {
        if ( plain.find( c ) != std::string_view::npos )
            uri += c;
        else
            appendPercentEncoded( uri, c );
    }
    return uri;
}

/// The first paragraph of a section: what the error is, in short.
std::string firstParagraph( const std::string& markdown ) {
    const auto begin = std::min( markdown.find_first_not_of( '\n' ), markdown.size() );
    std::string paragraph = markdown.substr( begin, markdown.find( "\n\n", begin ) - begin );
    std::ranges::replace( paragraph, '\n', ' ' );
    return paragraph;
}

class Writer : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    /// What is told of an error, behind the members that name its rule.
    void result( const Diagnostic& diagnostic );
    void rule( const std::string& code );
    void notification( const Diagnostic& diagnostic );

  private:
    void message( std::string_view before, std::string_view name, std::string_view text );
    /// Leaves two objects open: that of the place within the file, and the one around it.
    void file( const std::string& file );
    void region( const Diagnostic& diagnostic );
    void inclusion( const Inclusion& inclusion );
};

void Writer::message( std::string_view before, std::string_view name, std::string_view text ) {
    key( before, name );
    member( "{", "text", text );
    append( '}' );
}

void Writer::file( const std::string& file ) {
    key( "{", "physicalLocation" );
    key( "{", "artifactLocation" );
    member( "{", "uri", uriOf( file ) );
    append( '}' );
}

void Writer::region( const Diagnostic& diagnostic ) {
    key( ",", "region" );
    member( "{", "startLine", diagnostic.begin.line );
    member( ",", "startColumn", diagnostic.begin.character );
    member( ",", "endLine", diagnostic.end.line );
    member( ",", "endColumn", diagnostic.end.character );
    append( '}' );
}

void Writer::inclusion( const Inclusion& inclusion ) {
    file( inclusion.file );
    key( ",", "region" );
    member( "{", "startLine", inclusion.line );
    append( "}}" );
    message( ",", "message", printable( inclusion ) );
    append( '}' );
}

void Writer::result( const Diagnostic& diagnostic ) {
    member( ",", "level", "error" );
    std::string text = diagnostic.message;
    if ( !diagnostic.hint.empty() )
        text += "\nhint: " + diagnostic.hint;
    message( ",", "message", text );
    key( ",", "locations" );
    append( '[' );
    file( diagnostic.file );
    if ( diagnostic.place )
        region( diagnostic );
    append( "}}]" );
    if ( diagnostic.includedFrom ) {
        key( ",", "relatedLocations" );
        append( '[' );
        inclusion( *diagnostic.includedFrom );
        append( ']' );
    }
    append( '}' );
}

void Writer::rule( const std::string& code ) {
    const ErrorExplanation explanation = *explanationOf( code );
    const std::string paragraph = firstParagraph( explanation.body );
    member( "{", "id", code );
    message( ",", "shortDescription", explanation.title );
    if ( !paragraph.starts_with( "```" ) ) // some titles say all
        message( ",", "fullDescription", paragraph );
    key( ",", "help" );
    member( "{", "text", readable( explanation.body ) );
    member( ",", "markdown", explanation.body );
    append( '}' );
    key( ",", "defaultConfiguration" );
    member( "{", "level", "error" );
    append( "}}" );
}

void Writer::notification( const Diagnostic& diagnostic ) {
    key( "{", "descriptor" );
    member( "{", "id", diagnostic.code );
    append( '}' );
    member( ",", "level", "error" );
    message( ",", "message", diagnostic.message );
    append( '}' );
}

class SarifReport final : public CheckReport {
  public:
    explicit SarifReport( Console& console ) : out_( console.out ) {}

    /// The code of the error, and what is told behind it.
    [[nodiscard]] std::string describe( const AgentRun& run ) const override {
        const auto diagnostic = diagnosticOf( run, false );
        if ( !diagnostic )
            return {};
        TextInMemory text;
        text.append( diagnostic->code );
        Writer( text ).result( *diagnostic );
        return std::move( text ).take();
    }
    void file( const std::string& description ) override {
        begin();
        const std::string code = description.substr( 0, errorCodeLength );
        Writer writer( out_ );
        writer.member( codes_.empty() ? "\n {" : ",\n {", "ruleId", code );
        writer.member( ",", "ruleIndex", ruleIndex( code ) );
        writer.append( std::string_view( description ).substr( errorCodeLength ) );
    }
    void end( const CheckCounts& counts, ExitStatus status,
              const std::optional<Diagnostic>& problem ) override;
    void usageError( const Diagnostic& diagnostic ) override { end( {}, ExitStatus::trouble, diagnostic ); }

  private:
    void begin() {
        if ( !std::exchange( hasBegun_, true ) )
            out_.append( "{\"$schema\": \"https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/"
                         "sarif-schema-2.1.0.json\",\n\"version\": \"2.1.0\",\n\"runs\": "
                         "[{\"columnKind\": \"unicodeCodePoints\",\n\"results\": [" );
    }
    /// The rules are numbered in the order in which results name them first.
    std::ptrdiff_t ruleIndex( const std::string& code ) {
        const auto found = std::ranges::find( codes_, code );
        const auto index = found - codes_.begin();
        if ( found == codes_.end() )
            codes_.push_back( code );
        return index;
    }

    Output& out_;
    bool hasBegun_ = false;
    std::vector<std::string> codes_; ///< of the results
};

void SarifReport::end( const CheckCounts& /*counts*/, ExitStatus status,
                       const std::optional<Diagnostic>& problem ) {
    begin();
    Writer writer( out_ );
    writer.append( "],\n\"tool\": {\"driver\": " );
    writer.tool( "{" );
    writer.key( ",", "rules" );
    writer.list( '[', ']', ",", codes_, [&writer]( const std::string& code ) { writer.rule( code ); } );
    writer.append( "}},\n\"invocations\": [" );
    writer.key( "{", "executionSuccessful" );
    writer.append( status == ExitStatus::trouble ? "false" : "true" );
    writer.member( ",", "exitCode", static_cast<int>( status ) );
    if ( problem ) {
        writer.key( ",", "toolConfigurationNotifications" );
        writer.append( '[' );
        writer.notification( *problem );
        writer.append( ']' );
    }
    writer.append( "}]}]}\n" );
}

} // namespace

std::unique_ptr<CheckReport> newSarifReport( Console& console ) {
    return std::make_unique<SarifReport>( console );
}

} // namespace Corvid::Cli
