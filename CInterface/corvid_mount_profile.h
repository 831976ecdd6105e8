/// @file
/// The C interface: parse an agent's mount-profile file, get the result as a JSON document, get the error.
///
/// @code{.c}
/// corvid_mount_profile* profile = NULL;
/// if ( corvid_mount_profile_parse( "profiles/Fan", NULL, &profile ) == CORVID_MOUNT_PROFILE_OK )
///     puts( corvid_mount_profile_outcome( profile ) == CORVID_MOUNT_PROFILE_VALID
///               ? corvid_mount_profile_json( profile, NULL )
///               : corvid_mount_profile_error_text( profile, CORVID_MOUNT_PROFILE_MESSAGE, NULL ) );
/// corvid_mount_profile_free( profile );
/// @endcode
///
/// - **Ownership**: the caller owns what corvid_mount_profile_parse() made and frees it with
///   corvid_mount_profile_free(). All texts belong to the result that they were asked of, and live as long as
///   it does. They end in a NUL; one that holds NULs itself is told from its length.
/// - **Errors**: what is wrong in a file is no failure of a call: the result tells it. Nothing is thrown,
///   nothing is printed. A null pointer is no crash: each function says what it answers.
/// - **Threads**: any number may parse at the same time. A result belongs to one thread at a time.
/// - **Stability**: functions, values and members are added, never changed or taken away, as long as
///   #CORVID_MOUNT_PROFILE_INTERFACE_VERSION only grows and the library keeps its SONAME.
///
/// The header is C99, and C++.
#ifndef CORVID_MOUNT_PROFILE_H
#define CORVID_MOUNT_PROFILE_H

#include <stddef.h>
#include <stdint.h>

/// Marks what the shared library shows.
#if defined( __GNUC__ )
#define CORVID_MOUNT_PROFILE_API __attribute__( ( visibility( "default" ) ) )
#else
#define CORVID_MOUNT_PROFILE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/// The interface that this header describes. Grows by one with each addition.
#define CORVID_MOUNT_PROFILE_INTERFACE_VERSION 1

/// The interface that the library at hand offers: at least #CORVID_MOUNT_PROFILE_INTERFACE_VERSION, or it is
/// older than the header.
CORVID_MOUNT_PROFILE_API uint32_t corvid_mount_profile_interface_version( void );

// C has no other way to name a type.
// NOLINTBEGIN(modernize-use-using)

/// How a call went.
typedef enum corvid_mount_profile_status {
    CORVID_MOUNT_PROFILE_OK = 0,
    CORVID_MOUNT_PROFILE_INVALID_ARGUMENT =
        1,                              ///< null where that is not allowed, or options that are not known
    CORVID_MOUNT_PROFILE_NO_MEMORY = 2, ///< memory ran out
    CORVID_MOUNT_PROFILE_INTERNAL = 3   ///< anything else; not known to happen
} corvid_mount_profile_status;

/// What became of a file.
typedef enum corvid_mount_profile_result {
    CORVID_MOUNT_PROFILE_NONE = 0,           ///< there is no result: the pointer is null
    CORVID_MOUNT_PROFILE_VALID = 1,          ///< the document holds the agent's profile
    CORVID_MOUNT_PROFILE_INVALID = 2,        ///< there is an error in it, or in a file that it includes
    CORVID_MOUNT_PROFILE_NOT_AGENT_FILE = 3, ///< no error, but no agent title line either
    CORVID_MOUNT_PROFILE_UNREADABLE = 4      ///< it, or a file that it includes, cannot be read
} corvid_mount_profile_result;

/// Which text of an error. All but the message and the code tell what is wrong in a file's content, and are
/// empty where nothing is.
typedef enum corvid_mount_profile_text {
    /// All of it in one line of printable ASCII: `FILE:LINE:COLUMN: error: TEXT`, without a place where there
    /// is none. Empty only for a valid file.
    CORVID_MOUNT_PROFILE_MESSAGE = 0,
    CORVID_MOUNT_PROFILE_FILE_NAME = 1,         ///< the agent file
    CORVID_MOUNT_PROFILE_INCLUDE_FILE_NAME = 2, ///< the include file, if the error lies in one
    CORVID_MOUNT_PROFILE_RECOGNIZER = 3,        ///< who found it: "lexer", "parser" or "post-parsing"
    CORVID_MOUNT_PROFILE_DESCRIPTION = 4,       ///< what is wrong, byte for byte
    CORVID_MOUNT_PROFILE_SOURCE_LINE = 5,       ///< of the lexer's errors: the text around the place
    CORVID_MOUNT_PROFILE_CODE = 6               ///< a code such as "MP042", which never changes
} corvid_mount_profile_text;

/// Bits of corvid_mount_profile_options::flags.
typedef enum corvid_mount_profile_flag {
    /// Leave out the mounts that every agent gets.
    CORVID_MOUNT_PROFILE_NO_DEFAULTS = 1
} corvid_mount_profile_flag;

/// How a file is parsed. Begin with #CORVID_MOUNT_PROFILE_OPTIONS_INIT, so that members that are added later
/// keep their meaning.
typedef struct corvid_mount_profile_options {
    uint32_t size;          ///< bytes of this struct as the caller knows it
    uint32_t flags;         ///< bits of #corvid_mount_profile_flag
    uint64_t max_file_size; ///< the largest file that is read, in bytes; 0 for the default of 16 MiB
} corvid_mount_profile_options;

/// Options that change nothing.
#define CORVID_MOUNT_PROFILE_OPTIONS_INIT                                                                    \
    { sizeof( corvid_mount_profile_options ), 0, 0 }

/// A file that was parsed.
typedef struct corvid_mount_profile corvid_mount_profile;

// NOLINTEND(modernize-use-using)

/// Parses an agent file and all that it includes, without an entity manager: no mounts of a peer are added,
/// and a file that asks for the configured paths of a test root cannot be read.
/// @param agent_file its path.
/// @param options may be null: as #CORVID_MOUNT_PROFILE_OPTIONS_INIT.
/// @param profile receives the result, whatever became of the file; null unless the status is
///     CORVID_MOUNT_PROFILE_OK.
/// @return #CORVID_MOUNT_PROFILE_INVALID_ARGUMENT also for options that this library does not know: a flag,
/// or
///     a member that it does not have and that is not 0.
CORVID_MOUNT_PROFILE_API corvid_mount_profile_status corvid_mount_profile_parse(
    const char* agent_file, const corvid_mount_profile_options* options, corvid_mount_profile** profile );

/// What became of the file; #CORVID_MOUNT_PROFILE_NONE for null.
CORVID_MOUNT_PROFILE_API corvid_mount_profile_result
corvid_mount_profile_outcome( const corvid_mount_profile* profile );

/// The result as one JSON object and a newline, byte for byte what `mountprofile show --json` prints. ASCII.
/// Made when it is asked for the first time.
/// @param length receives the document's bytes without its NUL; may be null.
/// @return null for null, and when memory runs out.
CORVID_MOUNT_PROFILE_API const char* corvid_mount_profile_json( corvid_mount_profile* profile,
                                                                size_t* length );

/// A text of the error.
/// @param length receives the text's bytes without its NUL; may be null.
/// @return null for null, and for a text that this library does not know.
CORVID_MOUNT_PROFILE_API const char* corvid_mount_profile_error_text( const corvid_mount_profile* profile,
                                                                      corvid_mount_profile_text which,
                                                                      size_t* length );

/// The line of the error, the first is 1; 0 without an error, for an error that has no place, and for null.
CORVID_MOUNT_PROFILE_API uint32_t corvid_mount_profile_error_line( const corvid_mount_profile* profile );

/// The column of the error in bytes, the first is 1; 0 where the line is. Every file is read as if a line end
/// of its own stood behind it: an error that is found only there, as in a last line without a line end, has a
/// place such as 1:2, wherever the file ends, also in the message.
CORVID_MOUNT_PROFILE_API uint32_t corvid_mount_profile_error_column( const corvid_mount_profile* profile );

/// The kind of the error: the document's `exceptionType`; 0 without an error, and for null.
CORVID_MOUNT_PROFILE_API uint32_t corvid_mount_profile_error_kind( const corvid_mount_profile* profile );

/// Frees a result and all its texts. Nothing for null.
CORVID_MOUNT_PROFILE_API void corvid_mount_profile_free( corvid_mount_profile* profile );

/// A status in words, for people; never null, never to be freed.
CORVID_MOUNT_PROFILE_API const char* corvid_mount_profile_status_text( corvid_mount_profile_status status );

#ifdef __cplusplus
}
#endif

#endif
