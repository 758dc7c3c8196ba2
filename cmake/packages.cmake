# The packages for Debian, which tools/package builds:
#
#   zorvueffect       the program, the plug-in, the window and the other modules, the manual
#   zorvueffect-cups  the filter for print queues
#   libkiln-dev       the contract
#
# Each has the components that its group names, and one of its own with the papers that the distribution asks for.
set(KILN_MAINTAINER "The Zorvu Effects project <maintainers@zorvueffect.invalid>" CACHE STRING
  "Whom the packages name as their maintainer")
set(papers ${PROJECT_BINARY_DIR}/documents/debian)

# The distribution's own form of CHANGELOG.md.
execute_process(COMMAND date --utc --rfc-email --date=${KILN_RELEASED} OUTPUT_VARIABLE date
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md lines ENCODING UTF-8)
set(changes "${PROJECT_NAME} (${PROJECT_VERSION}) unstable; urgency=medium\n\n")
set(isOfThisVersion FALSE)
foreach(line IN LISTS lines)
  if(line MATCHES "^## ")
    string(FIND "${line}" "## ${PROJECT_VERSION} " position)
    set(isOfThisVersion FALSE)
    if(position EQUAL 0)
      set(isOfThisVersion TRUE)
    endif()
  elseif(isOfThisVersion AND NOT line STREQUAL "")
    string(REGEX REPLACE "^- " "* " line "${line}")
    string(APPEND changes "  ${line}\n")
  endif()
endforeach()
string(APPEND changes "\n -- ${KILN_MAINTAINER}  ${date}\n")
file(WRITE ${papers}/changelog "${changes}")
execute_process(COMMAND ${KILN_GZIP} -9nf ${papers}/changelog COMMAND_ERROR_IS_FATAL ANY)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${PROJECT_NAME})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_VENDOR "The Zorvu Effects project")
set(CPACK_PACKAGE_CONTACT ${KILN_MAINTAINER})
set(CPACK_SET_DESTDIR ON) # some files are below no prefix
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE ${PROJECT_NAME})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_COMPONENTS_ALL)

# kiln_package(NAME COMPONENT...) with the lines of its description in ABOUT.
function(kiln_package name)
  cmake_parse_arguments(PARSE_ARGV 1 package "" "SECTION;ABOUT" "COMPONENTS;SETTINGS")
  install(FILES ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/package/debian/copyright ${papers}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${name}-papers EXCLUDE_FROM_ALL)
  string(TOUPPER ${name} id)
  set(components ${package_COMPONENTS} ${name}-papers)
  foreach(component IN LISTS components)
    string(TOUPPER ${component} componentId)
    set(CPACK_COMPONENT_${componentId}_GROUP ${name} PARENT_SCOPE)
  endforeach()
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${components} PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_PACKAGE_SECTION ${package_SECTION} PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_DESCRIPTION "${package_ABOUT}" PARENT_SCOPE)
  while(package_SETTINGS)
    list(POP_FRONT package_SETTINGS setting value)
    set(CPACK_DEBIAN_${id}_${setting} "${value}" PARENT_SCOPE)
  endwhile()
endfunction()

kiln_package(zorvueffect COMPONENTS runtime pictures window SECTION graphics SETTINGS
  PACKAGE_SHLIBDEPS ON
  PACKAGE_SUGGESTS "zorvueffect-cups"
  ABOUT "watermarks, overlays and page effects for printed PDFs
The effect tab of a printer driver's preferences, beside the page as it
will print: watermarks with an editor, letterheads and other overlays, mirror
image, negative image and rotation. The content of the pages stays as it is.
.
The program kiln shows the preferences in a window, and does the same from
the command line. For driver teams it runs the tab by scripts, and checks
plug-ins and hosts.")
kiln_package(zorvueffect-cups COMPONENTS queue SECTION graphics SETTINGS
  PACKAGE_ARCHITECTURE all
  PACKAGE_DEPENDS "zorvueffect (= ${PROJECT_VERSION}), cups, cups-filters"
  ABOUT "watermarks, overlays and page effects for CUPS queues
The filter that puts the effects of zorvueffect on every job of a print
queue, whatever program has sent it.
.
As root, \"kiln queue enable NAME\" puts the effects on a queue. The print
dialog of every program then offers them.")
# The help of the commands names these. The pictures in them would make the package half as large again.
file(GLOB documents CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
install(FILES ${documents} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zorvueffect/docs
  COMPONENT zorvueffect-papers EXCLUDE_FROM_ALL)
set(CPACK_DEBIAN_ZORVUEFFECT-CUPS_PACKAGE_CONTROL_EXTRA
  ${CMAKE_CURRENT_LIST_DIR}/package/debian/prerm ${CMAKE_CURRENT_LIST_DIR}/package/debian/postrm)
kiln_package(libkiln-dev COMPONENTS development SECTION libdevel SETTINGS
  PACKAGE_ARCHITECTURE all
  PACKAGE_SUGGESTS "zorvueffect, cmake, pkgconf"
  ABOUT "contract between driver-UI hosts and their plug-ins
The headers of the contract, with descriptions for CMake and pkg-config, and
with examples: a plug-in, and a host. The contract is headers alone.
.
The package zorvueffect has a plug-in, and checks for others.")

include(CPack)
