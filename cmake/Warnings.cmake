# corvid_options: how our own code is compiled. Generated code is compiled without it.
add_library(corvid_options INTERFACE)
target_compile_options(corvid_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlapping copies in `"text" + std::string` where there are none (GCC bug 105651).
    target_compile_options(corvid_options INTERFACE -Wno-restrict)
endif()
if(NOT KIV_ASSERTIONS)
    target_compile_definitions(corvid_options INTERFACE KIV_NO_ASSERTIONS)
endif()
if(CORVID_SANITIZE)
    # GCC's warnings about data flow raise false alarms on instrumented code; the other builds hold to them.
    target_compile_options(corvid_options INTERFACE -Wno-error)
endif()
