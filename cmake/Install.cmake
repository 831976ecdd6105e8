# What `cmake --install` brings: the library with its headers, the ways to find it (CMake package, pkg-config), and the
# command with its manual pages and completion scripts. The whole can be moved afterwards.
include(CMakePackageConfigHelpers)

set(CORVID_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/corvid-mount-profile")
set(CORVID_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/CorvidMountProfileHdlr")

# A platform of its own kind brings its own headers.
get_target_property(PLATFORM_INCLUDE_DIRS Corvid::Platform INTERFACE_INCLUDE_DIRECTORIES)
if("${PROJECT_SOURCE_DIR}/Platform/include" IN_LIST PLATFORM_INCLUDE_DIRS)
    install(DIRECTORY Platform/include/ DESTINATION "${CORVID_INCLUDEDIR}" COMPONENT headers
        FILES_MATCHING PATTERN "*.h")
endif()

set(CORVID_THREAD_SAFE_POINTERS 0)
if(KIV_THREAD_SAFE_POINTERS)
    set(CORVID_THREAD_SAFE_POINTERS 1)
endif()
target_compile_definitions(CorvidMountProfileHdlr INTERFACE
    $<INSTALL_INTERFACE:KIV_THREAD_SAFE_POINTERS=${CORVID_THREAD_SAFE_POINTERS}>)
set_target_properties(CorvidMountProfileHdlr PROPERTIES EXPORT_NAME MountProfileHdlr)
install(TARGETS CorvidMountProfileHdlr EXPORT CorvidMountProfileHdlr
    FILE_SET HEADERS DESTINATION "${CORVID_INCLUDEDIR}" COMPONENT headers
    FILE_SET c_headers DESTINATION "${CORVID_INCLUDEDIR}" COMPONENT headers
    INCLUDES DESTINATION "${CORVID_INCLUDEDIR}") # for a CMake that knows no file sets yet
install(EXPORT CorvidMountProfileHdlr NAMESPACE Corvid::
    FILE CorvidMountProfileHdlrTargets.cmake DESTINATION "${CORVID_CMAKEDIR}")
configure_package_config_file(cmake/CorvidMountProfileHdlrConfig.cmake.in CorvidMountProfileHdlrConfig.cmake
    INSTALL_DESTINATION "${CORVID_CMAKEDIR}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(CorvidMountProfileHdlrConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/CorvidMountProfileHdlrConfig.cmake"
    "${PROJECT_BINARY_DIR}/CorvidMountProfileHdlrConfigVersion.cmake"
    DESTINATION "${CORVID_CMAKEDIR}")

file(RELATIVE_PATH PREFIX_FROM_PKGCONFIGDIR
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" PREFIX_FROM_PKGCONFIGDIR "${PREFIX_FROM_PKGCONFIGDIR}")
configure_file(cmake/corvid-mount-profile.pc.in corvid-mount-profile.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/corvid-mount-profile.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
install(FILES packaging/man/corvid-mount-profile.3 DESTINATION "${CMAKE_INSTALL_MANDIR}/man3")

set(CORVID_ZSH_COMPLETION_DIR "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" CACHE STRING
    "Where zsh looks for completion functions, below the prefix")

set(CORVID_PRODUCT CorvidMountProfileHdlr)
if(TARGET mountprofile)
    list(APPEND CORVID_PRODUCT mountprofile completion)
    file(RELATIVE_PATH LIBDIR_FROM_BINDIR "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(mountprofile PROPERTIES INSTALL_RPATH "$ORIGIN/${LIBDIR_FROM_BINDIR}")
    install(TARGETS mountprofile)
    install(FILES packaging/man/mountprofile.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES share/mountprofile-check-1.schema.json DESTINATION "${CMAKE_INSTALL_DATADIR}/mountprofile")
    install(FILES packaging/man/mountprofile.5 DESTINATION "${CMAKE_INSTALL_MANDIR}/man5")
    install(FILES "${COMPLETION_DIR}/mountprofile" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
    install(FILES "${COMPLETION_DIR}/_mountprofile" DESTINATION "${CORVID_ZSH_COMPLETION_DIR}")
    install(FILES "${COMPLETION_DIR}/mountprofile.fish" DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
endif()
# All that is installed, without tests.
add_custom_target(product DEPENDS ${CORVID_PRODUCT})
