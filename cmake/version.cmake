# KILN_RELEASED: when the version was released, from the heading in CHANGELOG.md. The version itself is that of the
# project in CMakeLists.txt; every other file takes it from there.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md headings REGEX "^## " ENCODING UTF-8)
list(GET headings 0 heading)
if(NOT heading MATCHES "^## ([0-9.]+) \\(([0-9]+-[0-9]+-[0-9]+)\\)$" OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "CHANGELOG.md begins with \"${heading}\", not with \"## ${PROJECT_VERSION} (YEAR-MM-DD)\".")
endif()
set(KILN_RELEASED ${CMAKE_MATCH_2})
