#pragma once

/* What scanner and parser of mount lines share; C, as both generators emit it. */

struct MountLinesText {
    const char* start;
    const char* end;
};

struct MountLinesState {
    void* records;
    const char* error; /* null as long as there is none */
};

#ifdef __cplusplus
extern "C" {
#endif
void mountLinesAdd( void* records, struct MountLinesText path, struct MountLinesText type,
                    struct MountLinesText flags );
#ifdef __cplusplus
}
#endif
