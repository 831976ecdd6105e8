// The form of static analysis tools, for services that collect and show their findings.

#include "Cli/CheckReport.h"
#include "Cli/ErrorsPage.h"
#include "Cli/JsonValues.h"
#include "Cli/PrintableText.h"

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

Json locationValue( const std::string& file ) {
    return { { "physicalLocation", { { "artifactLocation", { { "uri", uriOf( file ) } } } } } };
}

Json textValue( const std::string& text ) {
    return { { "text", jsonText( text ) } };
}

/// The first paragraph of a section: what the error is, in short.
std::string firstParagraph( const std::string& markdown ) {
    const auto begin = std::min( markdown.find_first_not_of( '\n' ), markdown.size() );
    std::string paragraph = markdown.substr( begin, markdown.find( "\n\n", begin ) - begin );
    std::ranges::replace( paragraph, '\n', ' ' );
    return paragraph;
}

Json ruleValue( const std::string& code ) {
    const ErrorExplanation explanation = *explanationOf( code );
    const std::string paragraph = firstParagraph( explanation.body );
    Json rule{ { "id", code }, { "shortDescription", textValue( explanation.title ) } };
    if ( !paragraph.starts_with( "```" ) ) // some titles say all
        rule["fullDescription"] = textValue( paragraph );
    rule["help"] = { { "text", readable( explanation.body ) }, { "markdown", explanation.body } };
    rule["defaultConfiguration"] = { { "level", "error" } };
    return rule;
}

Json rulesValue() {
    Json rules = Json::array();
    for ( const std::string& code : explainedCodes() )
        rules.push_back( ruleValue( code ) );
    return rules;
}

Json regionValue( const Diagnostic& diagnostic ) {
    return { { "startLine", diagnostic.begin.line },
             { "startColumn", diagnostic.begin.character },
             { "endLine", diagnostic.end.line },
             { "endColumn", diagnostic.end.character } };
}

Json inclusionValue( const Inclusion& inclusion ) {
    Json location = locationValue( inclusion.file );
    location["physicalLocation"]["region"] = { { "startLine", inclusion.line } };
    location["message"] = textValue( printable( inclusion ) );
    return location;
}

Json resultValue( const Diagnostic& diagnostic ) {
    const auto codes = explainedCodes();
    Json result{ { "ruleId", diagnostic.code } };
    result["ruleIndex"] = std::ranges::find( codes, diagnostic.code ) - codes.begin();
    result["level"] = "error";
    result["message"] = textValue(
        diagnostic.hint.empty() ? diagnostic.message : diagnostic.message + "\nhint: " + diagnostic.hint );
    Json location = locationValue( diagnostic.file );
    if ( diagnostic.place )
        location["physicalLocation"]["region"] = regionValue( diagnostic );
    result["locations"] = Json::array( { location } );
    if ( diagnostic.includedFrom )
        result["relatedLocations"] = Json::array( { inclusionValue( *diagnostic.includedFrom ) } );
    return result;
}

class SarifReport final : public CheckReport {
  public:
    explicit SarifReport( Console& console ) : out_( console.out ) {}

    [[nodiscard]] std::string describe( const AgentRun& run ) const override {
        const auto diagnostic = diagnosticOf( run, false );
        return diagnostic ? asciiText( resultValue( *diagnostic ) ) : std::string();
    }
    void file( const std::string& description ) override {
        begin();
        out_.append( std::exchange( isFirst_, false ) ? "\n " : ",\n " );
        out_.append( description );
    }
    void end( const CheckCounts& /*counts*/, ExitStatus status,
              const std::optional<Diagnostic>& problem ) override {
        begin();
        Json invocation;
        invocation["executionSuccessful"] = status != ExitStatus::trouble;
        invocation["exitCode"] = static_cast<int>( status );
        if ( problem )
            invocation["toolConfigurationNotifications"] =
                Json::array( { { { "descriptor", { { "id", problem->code } } },
                                 { "level", "error" },
                                 { "message", textValue( problem->message ) } } } );
        out_.append( "],\n\"invocations\": [" + asciiText( invocation ) + "]}]}\n" );
    }
    void usageError( const Diagnostic& diagnostic ) override { end( {}, ExitStatus::trouble, diagnostic ); }

  private:
    void begin() {
        if ( std::exchange( hasBegun_, true ) )
            return;
        Json driver = toolValue();
        driver["rules"] = rulesValue();
        out_.append(
            "{\"$schema\": \"https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/"
            "sarif-schema-2.1.0.json\",\n\"version\": \"2.1.0\",\n\"runs\": [{\"tool\": {\"driver\": " +
            asciiText( driver ) + "},\n\"columnKind\": \"unicodeCodePoints\",\n\"results\": [" );
    }

    Output& out_;
    bool hasBegun_ = false;
    bool isFirst_ = true;
};

} // namespace

std::unique_ptr<CheckReport> newSarifReport( Console& console ) {
    return std::make_unique<SarifReport>( console );
}

} // namespace Corvid::Cli
