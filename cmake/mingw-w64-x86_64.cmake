# Builds for 64-bit Windows with the distribution's mingw-w64, and runs the result under Wine.
#
# Finds libraries in KILN_WINDOWS_LIBS only (created by tools/windows/build-libraries), never those of the build
# machine, which have another format.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

get_filename_component(kilnSourceFolder "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)

# POSIX threads: the win32 thread model of this compiler has no std::mutex.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# CMake's compiler checks need the same folder.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KILN_WINDOWS_LIBS)
set(KILN_WINDOWS_LIBS "${kilnSourceFolder}/build/windows-libs" CACHE PATH "Libraries for Windows")

set(CMAKE_FIND_ROOT_PATH "${KILN_WINDOWS_LIBS}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Windows 10 is the oldest supported system. With UNICODE, functions for narrow text must be called explicitly, with
# the suffix A.
set(kilnWindowsDefines "-D_WIN32_WINNT=0x0A00 -DWINVER=0x0A00 -DUNICODE -D_UNICODE -DNOMINMAX")
set(CMAKE_C_FLAGS_INIT "${kilnWindowsDefines}")
set(CMAKE_CXX_FLAGS_INIT "${kilnWindowsDefines}")

# Link the compiler's runtimes statically: drivers do not ship compiler DLLs.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")

set(CMAKE_CROSSCOMPILING_EMULATOR "${kilnSourceFolder}/tools/windows/wine")
