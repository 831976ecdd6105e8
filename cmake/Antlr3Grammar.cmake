# The ANTLR 3 tool and its C runtime, and generation of lexer and parser at build time.
find_program(ANTLR3_TOOL antlr3 REQUIRED DOC "The ANTLR 3 tool")
find_path(ANTLR3C_INCLUDE_DIR antlr3.h REQUIRED)
find_library(ANTLR3C_LIBRARY antlr3c REQUIRED)

add_library(Antlr3::Runtime UNKNOWN IMPORTED)
set_target_properties(Antlr3::Runtime PROPERTIES
    IMPORTED_LOCATION "${ANTLR3C_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${ANTLR3C_INCLUDE_DIR}")

# antlr3_grammar(<variable> <grammar>): generates <name>Lexer.c, <name>Parser.c and their headers from a grammar, a
# path below the source root, and sets <variable> to the directory that they are in. The target <name>_generated makes
# them. The tool runs from the source root, because the path given to it becomes the grammar file name that lexer and
# parser report.
function(antlr3_grammar output_variable grammar)
    get_filename_component(name "${grammar}" NAME_WE)
    set(directory "${CMAKE_BINARY_DIR}/generated")
    set(generated
        "${directory}/${name}Lexer.c" "${directory}/${name}Lexer.h"
        "${directory}/${name}Parser.c" "${directory}/${name}Parser.h")
    add_custom_command(
        OUTPUT ${generated}
        COMMAND ${CMAKE_COMMAND} -DTOOL=${ANTLR3_TOOL} -DGRAMMAR=${grammar} -DDIRECTORY=${directory} -DNAME=${name}
            -P "${PROJECT_SOURCE_DIR}/cmake/RunAntlr3.cmake"
        DEPENDS "${PROJECT_SOURCE_DIR}/${grammar}" "${PROJECT_SOURCE_DIR}/cmake/RunAntlr3.cmake"
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        COMMENT "Generating lexer and parser from ${grammar}"
        VERBATIM)
    # What reads the sources but compiles nothing needs no more than this target.
    add_custom_target(${name}_generated DEPENDS ${generated})
    # Actions are C++.
    set_source_files_properties("${directory}/${name}Lexer.c" "${directory}/${name}Parser.c" PROPERTIES LANGUAGE CXX)
    set(${output_variable} "${directory}" PARENT_SCOPE)
endfunction()
