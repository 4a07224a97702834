# The targets that find_package(meridek_felspar) provides from an installation:
# meridek_felspar::meridek_felspar, the library that the workstation loads, and meridek_felspar::headless, the
# workstation without a window.
include(CMakePackageConfigHelpers)
set(package_folder lib/cmake/meridek_felspar)
install(EXPORT meridek_felspar NAMESPACE meridek_felspar:: FILE meridek_felsparTargets.cmake
        DESTINATION ${package_folder})
configure_package_config_file(cmake/meridek_felsparConfig.cmake.in ${PROJECT_BINARY_DIR}/meridek_felsparConfig.cmake
                              INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/meridek_felsparConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/meridek_felsparConfig.cmake
              ${PROJECT_BINARY_DIR}/meridek_felsparConfigVersion.cmake DESTINATION ${package_folder})

# What a user reads, runs and completes.
install(FILES README.md CHANGELOG.md LICENSE THIRD_PARTY.md DESTINATION share/doc/felspar)
install(DIRECTORY scripts/ DESTINATION share/doc/felspar/examples)
install(FILES ${PROJECT_BINARY_DIR}/share/man/man1/felspar.1 DESTINATION share/man/man1)
install(FILES ${PROJECT_BINARY_DIR}/completions/felspar.bash DESTINATION share/bash-completion/completions
        RENAME felspar)
install(FILES ${PROJECT_BINARY_DIR}/completions/felspar.zsh DESTINATION share/zsh/site-functions RENAME _felspar)
install(FILES ${PROJECT_BINARY_DIR}/completions/felspar.fish DESTINATION share/fish/vendor_completions.d)

# `cpack` in the build folder writes the Debian package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME felspar)
set(CPACK_PACKAGE_VENDOR "The MERIDEK_FELSPAR authors")
set(CPACK_PACKAGE_CONTACT "The MERIDEK_FELSPAR authors <maintainers@meridek-felspar.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "audio workstation without a window, for dialogue")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "It lays out localised dialogue in pairs of lines, matches their loudness,
evens out the volume of speech, and runs Lua and Python scripts of the
workstation on project files, which it keeps byte for byte where nothing
changes.
.
The package holds the command felspar, the extension library for the
workstation, the Python package meridek_felspar, and what C++ programs need
to use them.")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "python3:any")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "nlohmann-json3-dev")
# CPack would add scripts that call ldconfig, which the libraries, in a folder of their own, do not need.
foreach(script postinst prerm postrm)
    list(APPEND CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/${script})
endforeach()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/arrange.cmake)
set(CPACK_FELSPAR_SOURCE ${PROJECT_SOURCE_DIR})
include(CPack)
