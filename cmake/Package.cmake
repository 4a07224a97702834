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
