# Counts which lines and branches of our own code are taken, for `./dev coverage`. Tests are not counted, and neither is
# generated code: they are compiled as always.
option(CORVID_COVERAGE "Count what of the code is executed" OFF)
if(CORVID_COVERAGE)
    add_link_options(--coverage)
endif()

# For `./dev mutate`, which compiles the same sources again and again.
option(CORVID_UNOPTIMISED "Compile our own code without optimisation" OFF)

# corvid_count_coverage(<target>...): for targets with our own code only.
function(corvid_count_coverage)
    foreach(target IN LISTS ARGN)
        if(CORVID_COVERAGE AND TARGET ${target})
            target_compile_options(${target} PRIVATE -O0 --coverage -fprofile-update=atomic)
        elseif(CORVID_UNOPTIMISED AND TARGET ${target})
            target_compile_options(${target} PRIVATE -O0)
        endif()
    endforeach()
endfunction()
