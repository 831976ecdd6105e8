// For coverage only: what a process has counted is written when it ends by exit(). Death tests, and children
// that a test forks, end otherwise; the linker sends their calls here.

extern "C" {

void __gcov_dump();
[[noreturn]] void __real__exit( int status );
[[noreturn]] void __real_abort();

[[noreturn]] void __wrap__exit( int status ) {
    __gcov_dump();
    __real__exit( status );
}

[[noreturn]] void __wrap_abort() {
    __gcov_dump();
    __real_abort();
}

} // extern "C"
