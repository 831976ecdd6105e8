# corvid_options: how our own code is compiled. Generated code is compiled without it.
add_library(corvid_options INTERFACE)
target_compile_options(corvid_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
if(NOT KIV_ASSERTIONS)
    target_compile_definitions(corvid_options INTERFACE KIV_NO_ASSERTIONS)
endif()
