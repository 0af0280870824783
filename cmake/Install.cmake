# What `make install` puts in place: the shared library and the parts around it with their public
# headers, a CMake package in which each part is a component, and a pkg-config file for each.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/sentrel)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# "device" and "host" are no names for the include folder of a machine.
set(parts_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/sentrel-parts)
# The installed tree can be moved: a pkg-config file finds the prefix from where it stands.
file(RELATIVE_PATH pc_to_prefix /prefix/${pkgconfig_dir} /prefix)

function(sentrel_install_made template name destination)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/${template} ${PROJECT_BINARY_DIR}/${name} @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name} DESTINATION ${destination})
endfunction()

function(sentrel_install_library)
  install(TARGETS sentrel EXPORT sentrel-targets
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(EXPORT sentrel-targets NAMESPACE sentrel:: DESTINATION ${package_dir})
  sentrel_install_made(sentrel.pc.in sentrel.pc ${pkgconfig_dir})

  configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/packaging/sentrel-config.cmake.in
    ${PROJECT_BINARY_DIR}/sentrel-config.cmake INSTALL_DESTINATION ${package_dir})
  write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/sentrel-config-version.cmake COMPATIBILITY SameMinorVersion)
  install(FILES
    ${PROJECT_BINARY_DIR}/sentrel-config.cmake ${PROJECT_BINARY_DIR}/sentrel-config-version.cmake
    DESTINATION ${package_dir})
endfunction()

# Installs the static library `target` as the component sentrel::`part`.
#   DESCRIPTION  one line
#   HEADERS      those of its headers that others may use; the rest are its own
#   PARTS        the other parts that it stands on
#   PACKAGES     the CMake packages that it needs, with their versions
#   MODULES      the pkg-config modules that it needs, each "PREFIX module..." as for
#                pkg_check_modules
#   REQUIRES     what a pkg-config user needs in place of PACKAGES
function(sentrel_install_part target part)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "DESCRIPTION" "HEADERS;PARTS;PACKAGES;MODULES;REQUIRES")
  add_library(sentrel::${part} ALIAS ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${part} OUTPUT_NAME sentrel-${part})
  target_sources(${target} PUBLIC FILE_SET HEADERS
    BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
  install(TARGETS ${target} EXPORT sentrel-${part}-targets
    FILE_SET HEADERS DESTINATION ${parts_include_dir})
  install(EXPORT sentrel-${part}-targets NAMESPACE sentrel:: DESTINATION ${package_dir})

  list(TRANSFORM arg_PARTS REPLACE ".+" "sentrel_find_part(\\0)\n" OUTPUT_VARIABLE parts)
  list(TRANSFORM arg_PACKAGES REPLACE ".+" "find_dependency(\\0)\n" OUTPUT_VARIABLE packages)
  list(TRANSFORM arg_MODULES REPLACE ".+" "sentrel_find_modules(\\0)\n" OUTPUT_VARIABLE modules)
  string(CONCAT finds ${parts} ${packages} ${modules})
  sentrel_install_made(part.cmake.in sentrel-${part}.cmake ${package_dir})

  list(TRANSFORM arg_PARTS PREPEND "sentrel-" OUTPUT_VARIABLE pc_parts)
  list(TRANSFORM arg_MODULES REPLACE "^[^ ]+ (.+)$" "\\1" OUTPUT_VARIABLE pc_modules)
  list(JOIN pc_parts " " pc_parts)
  string(REPLACE ";" " " requires "sentrel;${pc_parts};${pc_modules};${arg_REQUIRES}")
  sentrel_install_made(part.pc.in sentrel-${part}.pc ${pkgconfig_dir})
endfunction()
