#include "AllocationFaults.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// Tests of faults run on one thread; atomic, because GoogleTest has others that allocate.
std::atomic<long> untilFailure = 0; // 0: none is to fail
std::atomic<bool> failed = false;
std::atomic<CorvidTest::Thrown> toBeThrown{};
std::atomic<long> live = 0;

void* allocate( std::size_t size ) {
    if ( untilFailure > 0 && --untilFailure == 0 ) {
        failed = true;
        if ( toBeThrown == CorvidTest::Thrown::somethingElse )
            throw 1;
        errno = ENOMEM;
        throw std::bad_alloc();
    }
    void* memory = std::malloc( size ? size : 1 );
    if ( !memory )
        throw std::bad_alloc();
    ++live;
    return memory;
}

void release( void* memory ) noexcept {
    if ( memory )
        --live;
    std::free( memory );
}

} // namespace

// All other forms are defined by these two in the compiler's library, but for memory of large alignment.
void* operator new( std::size_t size ) {
    return allocate( size );
}
void operator delete( void* memory ) noexcept {
    release( memory );
}
void operator delete( void* memory, std::size_t ) noexcept {
    release( memory );
}

namespace CorvidTest {

FailingAllocation::FailingAllocation( long number, Thrown thrown ) noexcept {
    toBeThrown = thrown;
    failed = false;
    untilFailure = number;
}

FailingAllocation::~FailingAllocation() {
    untilFailure = 0;
}

bool FailingAllocation::hasFailed() const noexcept { // NOLINT(readability-convert-member-functions-to-static)
    return failed;
}

long liveAllocations() noexcept {
    return live;
}

} // namespace CorvidTest
