# Builds of the same sources by the same tools are equal byte for byte, wherever and whenever they are made.
# tools/check-reproducible compares two.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

# No path of the machine. The last option that fits is used.
check_cxx_compiler_flag(-ffile-prefix-map=a=b hasFilePrefixMap)
if(hasFilePrefixMap)
  add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
endif()

# No time of the build.
if(WIN32)
  check_linker_flag(CXX -Wl,--no-insert-timestamp linksNoTimestamp)
  if(linksNoTimestamp)
    add_link_options(-Wl,--no-insert-timestamp)
  endif()
endif()
