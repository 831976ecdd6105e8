/* Parses an agent's mount-profile file through the C interface: its document goes to standard output, what is
 * wrong in it to standard error. */
#include <corvid_mount_profile.h>

#include <stdio.h>

static int tell( corvid_mount_profile* profile ) {
    const char* document = corvid_mount_profile_json( profile, NULL );
    if ( corvid_mount_profile_outcome( profile ) == CORVID_MOUNT_PROFILE_VALID && document ) {
        fputs( document, stdout );
        return 0;
    }
    fprintf( stderr, "%s\n", corvid_mount_profile_error_text( profile, CORVID_MOUNT_PROFILE_MESSAGE, NULL ) );
    return 1;
}

int main( int argc, char** argv ) {
    corvid_mount_profile_options options = CORVID_MOUNT_PROFILE_OPTIONS_INIT;
    corvid_mount_profile* profile = NULL;
    corvid_mount_profile_status status;
    int result = 2;

    if ( argc != 2 ) {
        fputs( "usage: profile-of FILE\n", stderr );
        return result;
    }
    options.flags = CORVID_MOUNT_PROFILE_NO_DEFAULTS;
    status = corvid_mount_profile_parse( argv[1], &options, &profile );
    if ( status == CORVID_MOUNT_PROFILE_OK )
        result = tell( profile );
    else
        fprintf( stderr, "%s\n", corvid_mount_profile_status_text( status ) );
    corvid_mount_profile_free( profile );
    return result;
}
