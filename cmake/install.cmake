# Where the product is installed, and how others find it. Programs find their files relative to themselves, so that an
# installed tree can be moved as a whole. Components:
#
#   runtime      the program, the plug-in, the other modules, the resources; its manual and completion
#   pictures     the module that draws pages; the rest works without it
#   window       the window, which needs the windowing toolkit, and its entry in menus
#   development  the contract's headers, the descriptions for CMake and pkg-config, the examples
#   queue        the filter of print queues: by this name alone, and outside the prefix
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME runtime)
set(CMAKE_SKIP_INSTALL_RPATH ON)

# Windows looks for libraries beside the program.
set(modules ${CMAKE_INSTALL_LIBDIR}/kiln)
if(WIN32)
  set(modules ${CMAKE_INSTALL_BINDIR})
endif()
set(KILN_MODULES_DESTINATION ${modules} CACHE STRING "Where the plug-in and the other modules are installed")
set(KILN_RESOURCES_DESTINATION ${CMAKE_INSTALL_DATADIR}/kiln)

# Sets `variable` to the way from one destination to another.
function(kiln_way variable from to)
  cmake_path(ABSOLUTE_PATH from BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX})
  cmake_path(ABSOLUTE_PATH to BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX})
  cmake_path(RELATIVE_PATH to BASE_DIRECTORY ${from})
  set(${variable} ${to} PARENT_SCOPE)
endfunction()
kiln_way(KILN_MODULES_FROM_PROGRAM ${CMAKE_INSTALL_BINDIR} ${KILN_MODULES_DESTINATION})
kiln_way(KILN_RESOURCES_FROM_PROGRAM ${CMAKE_INSTALL_BINDIR} ${KILN_RESOURCES_DESTINATION})

# The contract, as a target and as packages of the version that its headers declare.
add_library(kiln_contract INTERFACE)
target_include_directories(kiln_contract INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(kiln_contract INTERFACE cxx_std_20)
set_target_properties(kiln_contract PROPERTIES EXPORT_NAME contract)

file(STRINGS ${PROJECT_SOURCE_DIR}/kiln/version.h kilnVersion REGEX "ContractVersion contractVersion\\{")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/kiln/version.h)
if(NOT kilnVersion MATCHES "\\{([0-9]+), ([0-9]+)\\}")
  message(FATAL_ERROR "kiln/version.h declares no version.")
endif()
set(KILN_CONTRACT_VERSION ${CMAKE_MATCH_1}.${CMAKE_MATCH_2})

set(kilnPackage ${CMAKE_INSTALL_DATADIR}/cmake/Kiln)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/kiln DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN *.h)
install(TARGETS kiln_contract EXPORT KilnTargets COMPONENT development)
install(EXPORT KilnTargets NAMESPACE Kiln:: DESTINATION ${kilnPackage} COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/package/KilnConfig.cmake.in
  ${PROJECT_BINARY_DIR}/package/KilnConfig.cmake
  INSTALL_DESTINATION ${kilnPackage}
  PATH_VARS KILN_MODULES_DESTINATION KILN_RESOURCES_DESTINATION)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/KilnConfigVersion.cmake
  VERSION ${KILN_CONTRACT_VERSION} COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES ${PROJECT_BINARY_DIR}/package/KilnConfig.cmake ${PROJECT_BINARY_DIR}/package/KilnConfigVersion.cmake
  DESTINATION ${kilnPackage} COMPONENT development)

set(kilnPkgConfig ${CMAKE_INSTALL_DATADIR}/pkgconfig)
kiln_way(KILN_INCLUDES_FROM_PKGCONFIG ${kilnPkgConfig} ${CMAKE_INSTALL_INCLUDEDIR})
kiln_way(KILN_MODULES_FROM_PKGCONFIG ${kilnPkgConfig} ${KILN_MODULES_DESTINATION})
kiln_way(KILN_RESOURCES_FROM_PKGCONFIG ${kilnPkgConfig} ${KILN_RESOURCES_DESTINATION})
configure_file(${CMAKE_CURRENT_LIST_DIR}/package/kiln.pc.in ${PROJECT_BINARY_DIR}/package/kiln.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/kiln.pc DESTINATION ${kilnPkgConfig} COMPONENT development)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libkiln-dev
  COMPONENT development)
