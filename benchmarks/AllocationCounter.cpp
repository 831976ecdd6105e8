#include "AllocationCounter.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>

#include <malloc.h>

// The C library's own functions under the names by which a replacement of malloc() reaches them.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
void* __libc_malloc( std::size_t size );
void* __libc_calloc( std::size_t count, std::size_t size );
void* __libc_realloc( void* block, std::size_t size );
void* __libc_memalign( std::size_t alignment, std::size_t size );
void __libc_free( void* block );
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace {

constexpr std::size_t blockHeader = sizeof( std::size_t );
std::atomic<bool> counting{ false };
std::atomic<std::ptrdiff_t> liveBytes{ 0 };
std::atomic<std::ptrdiff_t> peakBytes{ 0 };
std::atomic<std::ptrdiff_t> totalBytes{ 0 };
std::atomic<std::ptrdiff_t> allocations{ 0 };

std::ptrdiff_t sizeOf( void* block ) noexcept {
    return block ? static_cast<std::ptrdiff_t>( malloc_usable_size( block ) + blockHeader ) : 0;
}

void* counted( void* block ) noexcept {
    if ( !counting.load( std::memory_order_relaxed ) )
        return block;
    const std::ptrdiff_t size = sizeOf( block );
    const std::ptrdiff_t live = liveBytes.fetch_add( size, std::memory_order_relaxed ) + size;
    totalBytes.fetch_add( size, std::memory_order_relaxed );
    allocations.fetch_add( 1, std::memory_order_relaxed );
    std::ptrdiff_t peak = peakBytes.load( std::memory_order_relaxed );
    while ( live > peak && !peakBytes.compare_exchange_weak( peak, live, std::memory_order_relaxed ) )
        ;
    return block;
}

void uncount( std::ptrdiff_t size ) noexcept {
    if ( counting.load( std::memory_order_relaxed ) )
        liveBytes.fetch_sub( size, std::memory_order_relaxed );
}

} // namespace

// Also for the libraries' calls: without this the program's own symbols are hidden from them.
#pragma GCC visibility push( default )
extern "C" {

void* malloc( std::size_t size ) noexcept {
    return counted( __libc_malloc( size ) );
}

void* calloc( std::size_t count, std::size_t size ) noexcept {
    return counted( __libc_calloc( count, size ) );
}

void* realloc( void* block, std::size_t size ) noexcept {
    const std::ptrdiff_t old = sizeOf( block );
    void* const moved = __libc_realloc( block, size );
    if ( moved || size == 0 )
        uncount( old );
    return moved ? counted( moved ) : nullptr;
}

void* memalign( std::size_t alignment, std::size_t size ) noexcept {
    return counted( __libc_memalign( alignment, size ) );
}

void* aligned_alloc( std::size_t alignment, std::size_t size ) noexcept {
    return memalign( alignment, size );
}

int posix_memalign( void** block, std::size_t alignment, std::size_t size ) noexcept {
    *block = memalign( alignment, size );
    return *block ? 0 : ENOMEM;
}

void free( void* block ) noexcept {
    uncount( sizeOf( block ) );
    __libc_free( block );
}
}
#pragma GCC visibility pop

namespace Bench {

void startCountingAllocations() noexcept {
    liveBytes = peakBytes = totalBytes = allocations = 0;
    counting = true;
}

std::optional<AllocationCounts> stopCountingAllocations() noexcept {
    counting = false;
    return AllocationCounts{ liveBytes, peakBytes, totalBytes, allocations };
}

} // namespace Bench
