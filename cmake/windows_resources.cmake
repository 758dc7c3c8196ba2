# The version resource and the icon of a program or library for Windows.
enable_language(RC)

function(zorvu_windows_resource target description)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set(kind VFT_APP)
  else()
    set(kind VFT_DLL)
  endif()
  set(ICON ${PROJECT_SOURCE_DIR}/cmake/windows/product.ico)
  string(REPLACE "." "," VERSION_NUMBERS "${PROJECT_VERSION},0")
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  # Two steps: the file's name is only known at generation time.
  configure_file(${PROJECT_SOURCE_DIR}/cmake/windows/version.rc.in ${script}.in @ONLY)
  file(GENERATE OUTPUT ${script} INPUT ${script}.in TARGET ${target})
  set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS ${ICON})
  target_sources(${target} PRIVATE ${script})
endfunction()
