# A library of the product that is loaded dynamically, so that its dependencies are loaded on demand only. It exports
# only symbols marked as visible. `component` is the one that installs it.
function(kiln_module name component)
  add_library(${name} MODULE ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    LIBRARY_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  install(TARGETS ${name} LIBRARY DESTINATION ${KILN_MODULES_DESTINATION} COMPONENT ${component})
endfunction()
