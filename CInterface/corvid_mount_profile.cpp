#include "CInterface/corvid_mount_profile.h"

#include "ProfileDocument/HandlerRun.h"
#include "ProfileDocument/JsonDocument.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

struct corvid_mount_profile {
    corvid_mount_profile( const char* agentFile, bool addDefaults )
        : run( agentFile, nullptr, addDefaults ) {}

    Corvid::HandlerRun run;
    std::string message;
    std::string json; ///< empty until it is asked for
};

namespace {

using Corvid::Outcome;

/// No caller's options are longer than this, in whatever version; more is memory that was never set.
constexpr std::uint32_t longestOptions = 4096;

/// The options as this library knows them; none for those that ask for what it does not know.
std::optional<corvid_mount_profile_options> knownOptions( const corvid_mount_profile_options* given ) {
    corvid_mount_profile_options options = CORVID_MOUNT_PROFILE_OPTIONS_INIT;
    if ( !given )
        return options;
    if ( given->size < sizeof options || given->size > longestOptions )
        return {};
    const auto* bytes = reinterpret_cast<const unsigned char*>( given );
    if ( std::any_of( bytes + sizeof options, bytes + given->size, []( auto byte ) { return byte != 0; } ) )
        return {};
    std::memcpy( &options, given, sizeof options );
    if ( options.flags & ~std::uint32_t{ CORVID_MOUNT_PROFILE_NO_DEFAULTS } )
        return {};
    return options;
}

/// "FILE: error: WHY", in the form of all errors.
std::string messageWithoutPlace( const std::string& file, const std::string& why ) {
    Corvid::RecognitionError error;
    error.fileNameIs( file );
    error.lineIs( Corvid::RecognitionError::noLine );
    error.descriptionIs( why );
    return error.composeErrorDescMessage().str();
}

std::string messageOf( const Corvid::HandlerRun& run ) {
    switch ( run.outcome ) {
    case Outcome::valid:
        break;
    case Outcome::invalid:
        return run.handler->errorDesc().composeErrorDescMessage().str();
    case Outcome::notAgentFile:
        return messageWithoutPlace( run.agentFile, Corvid::whyNotAgentFile );
    case Outcome::unreadable:
        return messageWithoutPlace( run.agentFile, Corvid::whyUnreadable( run ) );
    }
    return {};
}

std::unique_ptr<corvid_mount_profile> parse( const char* agentFile,
                                             const corvid_mount_profile_options& options ) {
    auto profile = std::make_unique<corvid_mount_profile>(
        agentFile, ( options.flags & CORVID_MOUNT_PROFILE_NO_DEFAULTS ) == 0 );
    auto& handler = *profile->run.handler;
    handler.errorPrintedIs( false );
    if ( options.max_file_size )
        handler.maxFileSizeIs( options.max_file_size );
    profile->run.run();
    profile->message = messageOf( profile->run );
    return profile;
}

bool hasError( const corvid_mount_profile& profile ) {
    return profile.run.outcome == Outcome::invalid;
}

const Corvid::RecognitionError& errorOf( const corvid_mount_profile& profile ) {
    static const Corvid::RecognitionError none;
    return hasError( profile ) ? profile.run.handler->errorDesc() : none;
}

bool hasPlace( const corvid_mount_profile* profile ) {
    // GCOVR_EXCL_BR_START: an error without a place is one that assertions do not let happen
    return profile && hasError( *profile ) && errorOf( *profile ).hasPlace();
    // GCOVR_EXCL_BR_STOP
}

/// As `mountprofile explain` knows it.
std::string_view codeOf( const Corvid::HandlerRun& run ) {
    switch ( run.outcome ) {
    case Outcome::valid:
        break;
    case Outcome::invalid:
        return run.handler->errorDetails().code;
    case Outcome::notAgentFile:
        return Corvid::notAgentFileCode;
    case Outcome::unreadable:
        return Corvid::unreadableCode;
    }
    return "";
}

std::optional<std::string_view> textOf( const corvid_mount_profile& profile,
                                        corvid_mount_profile_text which ) {
    switch ( which ) {
    case CORVID_MOUNT_PROFILE_MESSAGE:
        return profile.message;
    case CORVID_MOUNT_PROFILE_FILE_NAME:
        return errorOf( profile ).fileName();
    case CORVID_MOUNT_PROFILE_INCLUDE_FILE_NAME:
        return errorOf( profile ).includeFileName();
    case CORVID_MOUNT_PROFILE_RECOGNIZER:
        return errorOf( profile ).recognizer();
    case CORVID_MOUNT_PROFILE_DESCRIPTION:
        return errorOf( profile ).description();
    case CORVID_MOUNT_PROFILE_SOURCE_LINE:
        return errorOf( profile ).sourceLine();
    case CORVID_MOUNT_PROFILE_CODE:
        return codeOf( profile.run );
    }
    return {};
}

const char* handOut( std::optional<std::string_view> text, std::size_t* length ) {
    if ( length )
        *length = text ? text->size() : 0;
    return text ? text->data() : nullptr;
}

} // namespace

std::uint32_t corvid_mount_profile_interface_version( void ) {
    return CORVID_MOUNT_PROFILE_INTERFACE_VERSION;
}

corvid_mount_profile_status corvid_mount_profile_parse( const char* agent_file,
                                                        const corvid_mount_profile_options* options,
                                                        corvid_mount_profile** profile ) {
    if ( profile )
        *profile = nullptr;
    const auto known = knownOptions( options );
    if ( !agent_file || !profile || !known )
        return CORVID_MOUNT_PROFILE_INVALID_ARGUMENT;
    try {
        *profile = parse( agent_file, *known ).release();
        return CORVID_MOUNT_PROFILE_OK;
    } catch ( const std::bad_alloc& ) {
        return CORVID_MOUNT_PROFILE_NO_MEMORY;
    } catch ( ... ) { // the caller may be of a language that knows no exceptions
        return CORVID_MOUNT_PROFILE_INTERNAL;
    }
}

corvid_mount_profile_result corvid_mount_profile_outcome( const corvid_mount_profile* profile ) {
    if ( !profile )
        return CORVID_MOUNT_PROFILE_NONE;
    switch ( profile->run.outcome ) {
    case Outcome::valid:
        return CORVID_MOUNT_PROFILE_VALID;
    case Outcome::invalid:
        return CORVID_MOUNT_PROFILE_INVALID;
    case Outcome::notAgentFile:
        return CORVID_MOUNT_PROFILE_NOT_AGENT_FILE;
    case Outcome::unreadable:
        break;
    }
    return CORVID_MOUNT_PROFILE_UNREADABLE;
}

const char* corvid_mount_profile_json( corvid_mount_profile* profile, std::size_t* length ) {
    if ( !profile )
        return handOut( {}, length );
    try {
        if ( profile->json.empty() ) {
            Corvid::TextInMemory document;
            Corvid::writeJsonDocument( document, profile->run );
            profile->json = std::move( document ).take();
        }
        return handOut( profile->json, length );
    } catch ( ... ) { // for want of memory: there is nothing else to fail
        return handOut( {}, length );
    }
}

const char* corvid_mount_profile_error_text( const corvid_mount_profile* profile,
                                             corvid_mount_profile_text which, std::size_t* length ) {
    return handOut( profile ? textOf( *profile, which ) : std::nullopt, length );
}

std::uint32_t corvid_mount_profile_error_line( const corvid_mount_profile* profile ) {
    return hasPlace( profile ) ? errorOf( *profile ).line() : 0;
}

std::uint32_t corvid_mount_profile_error_column( const corvid_mount_profile* profile ) {
    return hasPlace( profile ) ? errorOf( *profile ).column() : 0;
}

std::uint32_t corvid_mount_profile_error_kind( const corvid_mount_profile* profile ) {
    return profile ? errorOf( *profile ).exceptionType() : 0;
}

void corvid_mount_profile_free( corvid_mount_profile* profile ) {
    delete profile;
}

const char* corvid_mount_profile_status_text( corvid_mount_profile_status status ) {
    switch ( status ) {
    case CORVID_MOUNT_PROFILE_OK:
        return "no error";
    case CORVID_MOUNT_PROFILE_INVALID_ARGUMENT:
        return "invalid argument: a null pointer, or options that this library does not know";
    case CORVID_MOUNT_PROFILE_NO_MEMORY:
        return "out of memory";
    case CORVID_MOUNT_PROFILE_INTERNAL:
        return "internal error";
    }
    return "unknown status";
}
