# Counts which lines and branches of our own code are taken, for `./dev coverage`. The tests are compiled
# for it as well: they hold copies of what our headers define, and the linker may take theirs.
option(CORVID_COVERAGE "Count what of the code is executed" OFF)
if(CORVID_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

# For `./dev mutate`, which compiles the same sources again and again.
option(CORVID_UNOPTIMISED "Compile our own code without optimisation" OFF)

# corvid_leave_unoptimised(<target>...): for targets with our own code only.
function(corvid_leave_unoptimised)
    foreach(target IN LISTS ARGN)
        if(CORVID_UNOPTIMISED AND TARGET ${target})
            target_compile_options(${target} PRIVATE -O0)
        endif()
    endforeach()
endfunction()
