# What `cmake --install` puts in place: headers, libraries, the tool, a pkg-config file and a CMake package. Every path
# among them is relative, so that the installed copy may be moved as a whole.

include(CMakePackageConfigHelpers)

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/k_cnvrt)
set(pkgconfig_directory ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH library_from_tool /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
file(RELATIVE_PATH prefix_from_pkgconfig /${pkgconfig_directory} /)
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig ${prefix_from_pkgconfig})

set_target_properties(k_cnvrt PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS k_support k_cnvrt EXPORT k_cnvrt)
if(KCNVRT_TEXT)
    set_target_properties(k_cnvrt_text PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS k_cnvrt_text EXPORT k_cnvrt)
    install(DIRECTORY text/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
    # A program that links the shared library needs to know nothing of what that links.
    set(requires_from_text Requires.private)
    if(KCNVRT_STATIC)
        set(requires_from_text Requires)
    endif()
    configure_file(cmake/k_cnvrt_text.pc.in k_cnvrt_text.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/k_cnvrt_text.pc DESTINATION ${pkgconfig_directory})
endif()
if(KCNVRT_TOOL)
    set_target_properties(kcnvrt PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_tool}")
    install(TARGETS kcnvrt)
endif()
install(DIRECTORY include/ ${PROJECT_BINARY_DIR}/include/ support/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")

# For editors.
install(DIRECTORY schemas/ DESTINATION ${CMAKE_INSTALL_DATADIR}/k_cnvrt FILES_MATCHING PATTERN "*.schema.json")

configure_file(cmake/k_cnvrt.pc.in k_cnvrt.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/k_cnvrt.pc DESTINATION ${pkgconfig_directory})

configure_package_config_file(cmake/k_cnvrtConfig.cmake.in k_cnvrtConfig.cmake INSTALL_DESTINATION ${package_directory})
write_basic_package_version_file(k_cnvrtConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/k_cnvrtConfig.cmake ${PROJECT_BINARY_DIR}/k_cnvrtConfigVersion.cmake
        DESTINATION ${package_directory})
install(EXPORT k_cnvrt NAMESPACE k_cnvrt:: FILE k_cnvrtTargets.cmake DESTINATION ${package_directory})
