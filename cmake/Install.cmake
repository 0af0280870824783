# What `make install` puts in place: the shared library, its headers, a CMake package and a
# pkg-config file.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/sentrel)

install(TARGETS sentrel EXPORT sentrel-targets)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/sentrel/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/sentrel
  FILES_MATCHING PATTERN "*.h")
install(EXPORT sentrel-targets NAMESPACE sentrel:: DESTINATION ${package_dir})

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/packaging/sentrel-config.cmake.in sentrel-config.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(sentrel-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/sentrel-config.cmake
  ${PROJECT_BINARY_DIR}/sentrel-config-version.cmake
  DESTINATION ${package_dir})

# The installed tree can be moved: the pkg-config file finds the prefix from where it stands.
file(RELATIVE_PATH pc_to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/packaging/sentrel.pc.in sentrel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/sentrel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
