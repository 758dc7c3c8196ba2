# What compilers and linkers do against the use of memory errors. tests/contract/hardening_posix_test.cpp holds it in
# the files that are built.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Each flag that the compiler has.
function(kiln_compile_flags)
  foreach(flag IN LISTS ARGN)
    string(MAKE_C_IDENTIFIER "has${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      add_compile_options(${flag})
    endif()
  endforeach()
endfunction()

# Each option that the linker has.
function(kiln_link_flags)
  foreach(flag IN LISTS ARGN)
    string(MAKE_C_IDENTIFIER "links${flag}" known)
    check_linker_flag(CXX ${flag} ${known})
    if(${known})
      add_link_options(${flag})
    endif()
  endforeach()
endfunction()

# Sets `level` to what the C library can check of the sizes of buffers. It needs an optimising compiler, and its checks
# are in the way of the sanitizers' own.
function(kiln_fortification level)
  string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" flags)
  set(${level} 0 PARENT_SCOPE)
  if(ZORVU_SANITIZE OR NOT "${CMAKE_CXX_FLAGS} ${${flags}}" MATCHES "-O[1-9sgf]")
    return()
  endif()
  foreach(number 3 2)
    set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${number}")
    check_cxx_source_compiles("#include <cstdio>\nint main() { return std::puts(\"\") < 0; }" hasFortification${number})
    if(hasFortification${number})
      set(${level} ${number} PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

# The standard library's own checks, of indexes for example. Benchmarks that are optimised as the product is measure
# what the product's code costs, without them.
if(BUILD_TESTING OR NOT ZORVU_BENCHMARKS)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

if(WIN32)
  # Control flow guard: Clang has it, mingw's g++ has not.
  kiln_compile_flags(-mguard=cf)
  kiln_link_flags(-mguard=cf)
  kiln_link_flags(-Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va)
else()
  kiln_compile_flags(-fstack-protector-strong -fstack-clash-protection)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|amd64|AMD64")
    kiln_compile_flags(-fcf-protection)
  endif()
  kiln_link_flags(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  kiln_fortification(KILN_FORTIFICATION)
  if(KILN_FORTIFICATION)
    # Spelt so that "-U_FORTIFY_SOURCE", where something is not optimised, is another option to CMake.
    add_compile_options("SHELL:-U _FORTIFY_SOURCE" -D_FORTIFY_SOURCE=${KILN_FORTIFICATION})
  endif()
endif()
