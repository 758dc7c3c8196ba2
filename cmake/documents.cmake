# What a system shows of the product besides its programs: manual pages, completion for shells, and the entry in menus.
# All is made by the build, and installed where the system looks for it.
find_program(KILN_GZIP gzip REQUIRED)

# The program writes its own manual, in each language that it speaks.
set(manual ${PROJECT_BINARY_DIR}/documents/man)
set(writing)
foreach(language "C:." "de_DE.UTF-8:de" "fr_FR.UTF-8:fr" "ja_JP.UTF-8:ja" "zh_CN.UTF-8:zh_CN" "zh_TW.UTF-8:zh_TW")
  string(REGEX MATCH "^(.+):(.+)$" whole ${language})
  list(APPEND writing
    COMMAND ${CMAKE_COMMAND} -E make_directory ${manual}/${CMAKE_MATCH_2}/man1
    COMMAND ${CMAKE_COMMAND} -E env --unset=LANGUAGE LC_ALL=${CMAKE_MATCH_1}
      $<TARGET_FILE:kiln> --manual ${manual}/${CMAKE_MATCH_2}/man1)
endforeach()
file(GLOB catalogues CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/formats/sentences/*.po)
add_custom_command(OUTPUT ${manual}.stamp
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${manual}
  ${writing}
  COMMAND ${KILN_GZIP} -9nr ${manual}
  COMMAND ${CMAKE_COMMAND} -E touch ${manual}.stamp
  DEPENDS kiln resources_sentences ${catalogues} VERBATIM
  COMMENT "Writing the manual pages")
add_custom_target(manual_pages ALL DEPENDS ${manual}.stamp)
install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_MANDIR})

set(completion ${PROJECT_SOURCE_DIR}/app/documents)
install(FILES ${completion}/kiln.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kiln)
install(FILES ${completion}/kiln.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions RENAME _kiln)
install(FILES ${completion}/kiln.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

set(desktop ${PROJECT_SOURCE_DIR}/window/desktop)
set(description org.zorvueffect.kiln.metainfo.xml)
configure_file(${desktop}/${description}.in ${PROJECT_BINARY_DIR}/documents/${description} @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/documents/${description} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
  COMPONENT window)
install(FILES ${desktop}/kiln.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT window)
install(FILES ${desktop}/kiln.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT window)

# The filter of print queues goes where the print scheduler looks, which is below no prefix; so it is installed only
# when it is asked for by its component, and calls the program by its whole path. The scheduler runs no filter that
# anybody but root may change.
set(KILN_FILTERS /usr/lib/cups/filter CACHE PATH "Where the print scheduler looks for filters")
configure_file(${CMAKE_CURRENT_LIST_DIR}/package/filter.in ${PROJECT_BINARY_DIR}/documents/filter @ONLY)
install(PROGRAMS ${PROJECT_BINARY_DIR}/documents/filter DESTINATION ${KILN_FILTERS} RENAME kiln COMPONENT queue
  EXCLUDE_FROM_ALL)
install(DIRECTORY DESTINATION /etc/kiln COMPONENT queue EXCLUDE_FROM_ALL)
