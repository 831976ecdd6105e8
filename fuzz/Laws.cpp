#include "Laws.h"

#include "Cli/CapturedErrors.h"
#include "DescriptionLaw.h"
#include "ProfileDocument/JsonDocument.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace CorvidFuzz {

using Corvid::MountProfileHdlr;
using Corvid::Outcome;
using Corvid::PassiveAgentProfile;
using Corvid::RecognitionError;

namespace {

bool allInputsAreChecked = false;

/// Another profile in a directory, with the group and a mount that runs would write into by mistake.
class Bystander {
  public:
    explicit Bystander( const Kiv::Ptr<Corvid::PassiveAgentProfileDir>& directory )
        : directory_( directory ) {
        run_.outcome = Outcome::valid;
        run_.handler = std::make_unique<MountProfileHdlr>( "", directory, nullptr, false );
        run_.handler->agentProfileIs( "bystander!" ); // a name that no title line can spell
        run_.handler->addMountGroup( "all", 99 );
        run_.handler->addMount( "a", "T", "r", "" );
        before_ = documentOf( run_ );
    }

    void check( const FinishedRun& run ) const {
        const bool hasProfile = run.handler->agentProfile().get() != nullptr;
        require( directory_->agentProfile().size() == ( hasProfile ? 2U : 1U ),
                 "a run makes the handler's profile and no other", run.agentFile );
        require( documentOf( run_ ) == before_, "a run leaves other profiles as they are", run.agentFile );
    }

  private:
    Kiv::Ptr<const Corvid::PassiveAgentProfileDir> directory_;
    Corvid::HandlerRun run_;
    std::string before_;
};

bool isUnprintable( char c ) {
    return c < ' ' || c > '~';
}

std::string_view lineOf( std::string_view text, std::uint32_t number ) {
    std::size_t start = 0;
    for ( std::uint32_t line = 1; line < number; ++line ) {
        start = text.find( '\n', start );
        if ( start == std::string_view::npos )
            return {};
        ++start;
    }
    return { text.data() + start, text.size() - start };
}

/// What stands in the file from the error's place on, up to the file's end. Null when there is no such place.
std::string_view restAtPlace( const RecognitionError& error, std::string_view text ) {
    const std::string_view rest = lineOf( text, error.line() );
    const std::size_t column = std::size_t{ error.column() } - 1;
    const std::size_t length = std::min( rest.find( '\n' ), rest.size() );
    if ( !rest.data() || error.column() == 0 || column > length )
        return {};
    return rest.substr( column );
}

/// Of an error that lies in this text. @param rest of the text, from the error's place on; null when only an
/// appended place has these numbers.
void checkDetails( const FinishedRun& run, std::string_view text, std::string_view rest ) {
    const Corvid::ErrorDetails& details = run.handler->errorDetails();
    require( std::ranges::find( Corvid::errorCodes(), details.code, &Corvid::ErrorCode::code ) !=
                 Corvid::errorCodes().end(),
             "an error has a code", details.code );
    if ( !details.hasPlace )
        return;
    require( details.begin <= details.end && details.end <= text.size() && details.place <= text.size(),
             "an error's range and place lie in its file", run.printed );
    const bool isAtEnd = details.place == text.size() && mayBeAppended( run.handler->errorDesc() );
    require( isAtEnd ||
                 ( rest.data() && details.place == static_cast<std::size_t>( rest.data() - text.data() ) ),
             "an error's place is the record's, or the file's end", run.printed );
}

} // namespace

void lawBroken( std::string_view law, std::string_view found ) {
    std::fprintf( stderr, "broken law: %.*s\nfound: %.*s\n", static_cast<int>( law.size() ), law.data(),
                  static_cast<int>( found.size() ), found.data() );
    std::abort();
}

FinishedRun run( const std::string& agentFile, const RunOptions& options ) {
    static const Corvid::Cli::CapturedErrors capturedErrors;
    const Corvid::Cli::CapturedErrors::Collector errors;
    const Kiv::Ptr<Corvid::PassiveAgentProfileDir> directory( new Corvid::PassiveAgentProfileDir );
    const Bystander bystander( directory );
    FinishedRun run;
    run.agentFile = agentFile;
    run.handler = std::make_unique<MountProfileHdlr>( agentFile, directory, options.entityManager,
                                                      options.addDefaults );
    run.handler->plainTokensIs( options.plainTokens );
    run.run();
    run.printed = errors.text();
    bystander.check( run );
    return run;
}

std::string documentOf( const Corvid::HandlerRun& run ) {
    Corvid::TextInMemory document;
    Corvid::writeJsonDocument( document, run );
    return std::move( document ).take();
}

void checkOutcome( const FinishedRun& run ) {
    const MountProfileHdlr& handler = *run.handler;
    const PassiveAgentProfile* profile = handler.agentProfile().get();
    const std::string description = handler.errorDesc().description().str();
    switch ( run.outcome ) {
    case Outcome::valid:
        require( description.empty() && run.printed.empty() && profile && profile->validProfile() &&
                     profile->errorDesc() == RecognitionError(),
                 "a valid file has a valid profile and no error", description );
        return;
    case Outcome::invalid:
        require( !description.empty() && ( !profile || ( !profile->validProfile() &&
                                                         profile->errorDesc() == handler.errorDesc() ) ),
                 "an invalid file has a description, which its profile shares", description );
        require( run.printed == handler.errorDesc().composeErrorDescMessage().str() + "\n" &&
                     std::ranges::count_if( run.printed, isUnprintable ) == 1,
                 "an error is printed as one line of printable ASCII", run.printed );
        return;
    case Outcome::notAgentFile:
        require( description.empty() && run.printed.empty() && !profile, "what is no agent file does nothing",
                 description );
        return;
    case Outcome::unreadable:
        require( run.exception.starts_with( "void Corvid::MountProfileHdlr::parseFile(" ) &&
                     run.printed.empty() && ( !profile || profile->validProfile() ),
                 "a file that cannot be read leaves the profile as it was", run.exception );
    }
}

void checkError( const FinishedRun& run, const Files& files ) {
    if ( run.outcome != Outcome::invalid )
        return;
    const RecognitionError& error = run.handler->errorDesc();
    require( error.fileName() == run.agentFile, "an error names the agent file", error.fileName().str() );
    const auto file = files.find( error.placeFileName().str() );
    require( file != files.end(), "an error lies in a file of the input", error.placeFileName().str() );
    const std::string_view rest = restAtPlace( error, file->second );
    require( rest.data() || mayBeAppended( error ), "an error lies in its file", run.printed );
    checkDetails( run, file->second, rest );
    const std::string problem = descriptionProblem( error, run.handler->currMgName(), rest );
    require( problem.empty(), "a description is composed of the prescribed texts",
             problem + ": " + error.description().str() );
}

void checkRepetition( const FinishedRun& first, const RunOptions& options ) {
    const FinishedRun second = run( first.agentFile, options );
    require( second.printed == first.printed, "a second run prints the same", second.printed );
    const std::string document = documentOf( second );
    require( document == documentOf( first ), "a second run gives the same document", document );
}

bool isOneOf( std::size_t many, std::string_view input ) {
    return allInputsAreChecked || std::hash<std::string_view>()( input ) % many == 0;
}

void checkAllInputs() {
    allInputsAreChecked = true;
}

FinishedRun checkedRun( const std::string& agentFile, const Files& files, const RunOptions& options ) {
    FinishedRun first = run( agentFile, options );
    checkOutcome( first );
    checkError( first, files );
    if ( isOneOf( 8, files.at( agentFile ) ) )
        checkRepetition( first, options );
    return first;
}

std::vector<std::string_view> partsOf( const std::uint8_t* data, std::size_t size ) {
    std::string_view text = textOf( data, size );
    std::vector<std::string_view> parts;
    for ( auto end = text.find( separator ); end != std::string_view::npos; end = text.find( separator ) ) {
        parts.push_back( text.substr( 0, end ) );
        text.remove_prefix( end + 1 );
    }
    parts.push_back( text );
    return parts;
}

} // namespace CorvidFuzz
