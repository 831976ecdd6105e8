set(CORVID_SANITIZE "" CACHE STRING "Sanitizers to build everything with, for example address,undefined")
if(CORVID_SANITIZE)
    add_compile_options(-fsanitize=${CORVID_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${CORVID_SANITIZE})
endif()

# corvid_precompile_headers(<target>...): the standard headers of most files. Only where compilation takes longest: in the
# other builds every file has to include what it needs.
function(corvid_precompile_headers)
    foreach(target IN LISTS ARGN)
        if(CORVID_SANITIZE AND TARGET ${target})
            target_precompile_headers(${target} PRIVATE
                <algorithm> <functional> <map> <memory> <optional> <stdexcept> <string> <vector>)
        endif()
    endforeach()
endfunction()
