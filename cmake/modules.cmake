# A library of the product's own that lies beside the program, is loaded by name and exports what it marks as visible.
# What it links is so no burden to those who have no use for it.
function(kiln_module name)
  add_library(${name} MODULE ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    LIBRARY_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endfunction()
