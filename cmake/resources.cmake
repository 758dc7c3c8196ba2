# The host's run-time files below share/kiln beside bin: one folder per chrome package, and the models.
set(ZORVU_RESOURCES ${CMAKE_BINARY_DIR}/share/kiln)

# Copies each file of a folder there when it changes; detects added and removed files at the next build.
function(zorvu_resources folder destination)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/${folder} ${PROJECT_SOURCE_DIR}/${folder}/*)
  set(copies)
  foreach(file IN LISTS files)
    set(copy ${ZORVU_RESOURCES}/${destination}/${file})
    add_custom_command(OUTPUT ${copy}
      COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/${folder}/${file} ${copy}
      DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/${file} VERBATIM)
    list(APPEND copies ${copy})
  endforeach()
  file(GLOB_RECURSE present RELATIVE ${ZORVU_RESOURCES}/${destination} ${ZORVU_RESOURCES}/${destination}/*)
  list(REMOVE_ITEM present ${files})
  foreach(file IN LISTS present)
    file(REMOVE ${ZORVU_RESOURCES}/${destination}/${file})
  endforeach()
  string(MAKE_C_IDENTIFIER resources_${destination} target)
  add_custom_target(${target} ALL DEPENDS ${copies})
  set(component runtime)
  if(folder MATCHES "^window/")
    set(component window)
  endif()
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}/ DESTINATION ${KILN_RESOURCES_DESTINATION}/${destination}
    COMPONENT ${component})
endfunction()

zorvu_resources(effect/content effect/content)
zorvu_resources(base/content base/content)
zorvu_resources(check/content check/content)
zorvu_resources(host/models models)
zorvu_resources(formats/sentences sentences)
if(NOT WIN32)
  zorvu_resources(window/content window/content)
endif()
