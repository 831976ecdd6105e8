# The reference of the library, in HTML, from the headers that are installed: `cmake --build … --target reference`.
set(REFERENCE_INPUT "\"${PROJECT_SOURCE_DIR}/docs/reference/mainpage.md\"")
get_target_property(c_headers CorvidMountProfileHdlr HEADER_SET_c_headers)
get_target_property(cxx_headers CorvidMountProfileHdlr HEADER_SET)
file(GLOB_RECURSE platform_headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/Platform/include/*.h")
foreach(header IN LISTS c_headers cxx_headers platform_headers)
    get_filename_component(header "${header}" ABSOLUTE)
    string(APPEND REFERENCE_INPUT " \\\n    \"${header}\"")
endforeach()
configure_file(docs/reference/Doxyfile.in reference/Doxyfile @ONLY)
add_custom_target(reference
    COMMAND doxygen "${PROJECT_BINARY_DIR}/reference/Doxyfile"
    COMMENT "Making ${PROJECT_BINARY_DIR}/reference/html/index.html"
    VERBATIM)
