// The linker puts the functions below in front of the real ones (--wrap).
#include "SystemFaults.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <system_error>
#include <thread>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <glob.h>
#include <locale.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <antlr3.h>

namespace CorvidTest {

void FaultyFunction::failBetween( long first, long last, int errorNumber ) noexcept {
    calls = 0;
    firstToFail = first;
    lastToFail = last;
    error = errorNumber;
}

bool FaultyFunction::fails() noexcept {
    ++calls;
    if ( calls < firstToFail || calls > lastToFail )
        return false;
    if ( error != 0 )
        errno = error;
    return true;
}

FaultyFunction newStringStream{ "antlr3StringStreamNew" };
FaultyFunction newLexer{ "antlr3LexerNewStream" };
FaultyFunction newTokenStream{ "antlr3CommonTokenStreamSourceNew" };
FaultyFunction newParser{ "antlr3ParserNewStream" };
FaultyFunction systemOpen{ "open" };
FaultyFunction systemFstat{ "fstat" };
FaultyFunction systemRead{ "read" };
FaultyFunction systemWrite{ "write" };
FaultyFunction systemReaddir{ "readdir" };
FaultyFunction systemLstat{ "lstat" };
FaultyFunction systemFchmod{ "fchmod" };
FaultyFunction systemRename{ "rename" };
FaultyFunction systemClose{ "close" };
FaultyFunction systemGlob{ "glob" };
FaultyFunction systemNewlocale{ "newlocale" };
FaultyFunction newThread{ "std::thread" };

namespace {

unsigned long longestRead = 0;
std::function<void()> afterEachRead;
std::function<void()> atTheEndOfFiles;
bool typesAreHidden = false;

} // namespace

void readsAtMost( unsigned long bytes ) noexcept {
    longestRead = bytes;
}

void afterEachReadDo( std::function<void()> action ) {
    afterEachRead = std::move( action );
}

void atTheEndOfFilesDo( std::function<void()> action ) {
    atTheEndOfFiles = std::move( action );
}

void entryTypesAreHidden( bool hidden ) noexcept {
    typesAreHidden = hidden;
}

} // namespace CorvidTest

using namespace CorvidTest;

extern "C" {

pANTLR3_INPUT_STREAM realStringStream( pANTLR3_UINT8, ANTLR3_UINT32, ANTLR3_UINT32,
                                       pANTLR3_UINT8 ) asm( "__real_antlr3StringStreamNew" );
pANTLR3_INPUT_STREAM wrappedStringStream( pANTLR3_UINT8, ANTLR3_UINT32, ANTLR3_UINT32,
                                          pANTLR3_UINT8 ) asm( "__wrap_antlr3StringStreamNew" );
pANTLR3_INPUT_STREAM wrappedStringStream( pANTLR3_UINT8 text, ANTLR3_UINT32 encoding, ANTLR3_UINT32 size,
                                          pANTLR3_UINT8 name ) {
    return newStringStream.fails() ? nullptr : realStringStream( text, encoding, size, name );
}

pANTLR3_LEXER realLexer( ANTLR3_UINT32, pANTLR3_INPUT_STREAM,
                         pANTLR3_RECOGNIZER_SHARED_STATE ) asm( "__real_antlr3LexerNewStream" );
pANTLR3_LEXER wrappedLexer( ANTLR3_UINT32, pANTLR3_INPUT_STREAM,
                            pANTLR3_RECOGNIZER_SHARED_STATE ) asm( "__wrap_antlr3LexerNewStream" );
pANTLR3_LEXER wrappedLexer( ANTLR3_UINT32 sizeHint, pANTLR3_INPUT_STREAM input,
                            pANTLR3_RECOGNIZER_SHARED_STATE state ) {
    return newLexer.fails() ? nullptr : realLexer( sizeHint, input, state );
}

pANTLR3_COMMON_TOKEN_STREAM
    realTokenStream( ANTLR3_UINT32, pANTLR3_TOKEN_SOURCE ) asm( "__real_antlr3CommonTokenStreamSourceNew" );
pANTLR3_COMMON_TOKEN_STREAM
    wrappedTokenStream( ANTLR3_UINT32,
                        pANTLR3_TOKEN_SOURCE ) asm( "__wrap_antlr3CommonTokenStreamSourceNew" );
pANTLR3_COMMON_TOKEN_STREAM wrappedTokenStream( ANTLR3_UINT32 sizeHint, pANTLR3_TOKEN_SOURCE source ) {
    return newTokenStream.fails() ? nullptr : realTokenStream( sizeHint, source );
}

pANTLR3_PARSER realParser( ANTLR3_UINT32, pANTLR3_TOKEN_STREAM,
                           pANTLR3_RECOGNIZER_SHARED_STATE ) asm( "__real_antlr3ParserNewStream" );
pANTLR3_PARSER wrappedParser( ANTLR3_UINT32, pANTLR3_TOKEN_STREAM,
                              pANTLR3_RECOGNIZER_SHARED_STATE ) asm( "__wrap_antlr3ParserNewStream" );
pANTLR3_PARSER wrappedParser( ANTLR3_UINT32 sizeHint, pANTLR3_TOKEN_STREAM tokens,
                              pANTLR3_RECOGNIZER_SHARED_STATE state ) {
    return newParser.fails() ? nullptr : realParser( sizeHint, tokens, state );
}

int realOpen( const char*, int, ... ) asm( "__real_open" );
int wrappedOpen( const char*, int, ... ) asm( "__wrap_open" );
int wrappedOpen( const char* path, int flags, ... ) {
    std::va_list arguments;
    va_start( arguments, flags );
    const mode_t mode = flags & O_CREAT ? va_arg( arguments, mode_t ) : 0;
    va_end( arguments );
    return systemOpen.fails() ? -1 : realOpen( path, flags, mode );
}

int realFstat( int, struct stat* ) asm( "__real_fstat" );
int wrappedFstat( int, struct stat* ) asm( "__wrap_fstat" );
int wrappedFstat( int descriptor, struct stat* status ) {
    return systemFstat.fails() ? -1 : realFstat( descriptor, status );
}

ssize_t realRead( int, void*, std::size_t ) asm( "__real_read" );
ssize_t wrappedRead( int, void*, std::size_t ) asm( "__wrap_read" );
ssize_t wrappedRead( int descriptor, void* buffer, std::size_t size ) {
    if ( systemRead.fails() )
        return -1;
    const ssize_t count = realRead( descriptor, buffer, longestRead ? std::min( size, longestRead ) : size );
    if ( count > 0 && afterEachRead )
        afterEachRead();
    if ( count == 0 && atTheEndOfFiles )
        atTheEndOfFiles();
    return count;
}

ssize_t realWrite( int, const void*, std::size_t ) asm( "__real_write" );
ssize_t wrappedWrite( int, const void*, std::size_t ) asm( "__wrap_write" );
ssize_t wrappedWrite( int descriptor, const void* buffer, std::size_t size ) {
    return systemWrite.fails() ? -1 : realWrite( descriptor, buffer, size );
}

int realLstat( const char*, struct stat* ) asm( "__real_lstat" );
int wrappedLstat( const char*, struct stat* ) asm( "__wrap_lstat" );
int wrappedLstat( const char* path, struct stat* status ) {
    return systemLstat.fails() ? -1 : realLstat( path, status );
}

int realFchmod( int, mode_t ) asm( "__real_fchmod" );
int wrappedFchmod( int, mode_t ) asm( "__wrap_fchmod" );
int wrappedFchmod( int descriptor, mode_t mode ) {
    return systemFchmod.fails() ? -1 : realFchmod( descriptor, mode );
}

int realRename( const char*, const char* ) asm( "__real_rename" );
int wrappedRename( const char*, const char* ) asm( "__wrap_rename" );
int wrappedRename( const char* from, const char* to ) {
    return systemRename.fails() ? -1 : realRename( from, to );
}

int realClose( int ) asm( "__real_close" );
int wrappedClose( int ) asm( "__wrap_close" );
int wrappedClose( int descriptor ) {
    return systemClose.fails() ? -1 : realClose( descriptor );
}

int realGlob( const char*, int, int ( * )( const char*, int ), glob_t* ) asm( "__real_glob" );
int wrappedGlob( const char*, int, int ( * )( const char*, int ), glob_t* ) asm( "__wrap_glob" );
int wrappedGlob( const char* pattern, int flags, int ( *onError )( const char*, int ), glob_t* found ) {
    return systemGlob.fails() ? GLOB_NOSPACE : realGlob( pattern, flags, onError, found );
}

locale_t realNewlocale( int, const char*, locale_t ) asm( "__real_newlocale" );
locale_t wrappedNewlocale( int, const char*, locale_t ) asm( "__wrap_newlocale" );
locale_t wrappedNewlocale( int categories, const char* name, locale_t base ) {
    return systemNewlocale.fails() ? nullptr : realNewlocale( categories, name, base );
}

dirent* realReaddir( DIR* ) asm( "__real_readdir" );
dirent* wrappedReaddir( DIR* ) asm( "__wrap_readdir" );
dirent* wrappedReaddir( DIR* directory ) {
    if ( systemReaddir.fails() )
        return nullptr;
    dirent* const entry = realReaddir( directory );
    if ( entry && typesAreHidden )
        entry->d_type = DT_UNKNOWN;
    return entry;
}

// Where libstdc++ makes the threads of std::thread and std::jthread; its second argument is a
// std::unique_ptr.
void realStartThread( std::thread*, void*, void ( * )() ) asm(
    "__real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE" );
void wrappedStartThread( std::thread*, void*, void ( * )() ) asm(
    "__wrap__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE" );
void wrappedStartThread( std::thread* thread, void* work, void ( *dependency )() ) {
    if ( newThread.fails() )
        throw std::system_error( newThread.error, std::generic_category() );
    realStartThread( thread, work, dependency );
}
}
