# Compiles objects for the instrument's processor, which cannot be linked, because Debian has no
# libraries for it. The headers are those of the 32-bit GNU compiler for Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET thumbv7-windows-gnu)
set(CMAKE_AR llvm-ar-14)
set(CMAKE_RANLIB llvm-ranlib-14)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

file(GLOB headers /usr/lib/gcc/i686-w64-mingw32/*-posix/include/c++)
string(JOIN " " CMAKE_CXX_FLAGS_INIT
  "-nostdinc++"
  "-isystem ${headers}"
  "-isystem ${headers}/i686-w64-mingw32"
  "-isystem ${headers}/backward"
  "-isystem /usr/i686-w64-mingw32/include")
