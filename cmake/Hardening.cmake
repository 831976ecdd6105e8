# What makes an error of ours harder to misuse: guarded stack frames, checked library calls where the compiler knows a
# buffer's size, tables of addresses that are read-only once the program runs, and a command that is loaded anywhere.
# Sanitizers check more, and do not go together with the checked library calls.
option(CORVID_HARDENING "Compile and link what is shipped with the usual hardening" ON)

# Position-independent code alone may still become a program of fixed addresses.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# corvid_harden(<target>...): for what is shipped.
function(corvid_harden)
    if(NOT CORVID_HARDENING OR CORVID_SANITIZE)
        return()
    endif()
    foreach(target IN LISTS ARGN)
        if(TARGET ${target})
            # The checked calls need an optimising compiler; some distributions define the macro by themselves.
            target_compile_options(${target} PRIVATE -fstack-protector-strong
                "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
            target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
        endif()
    endforeach()
endfunction()
