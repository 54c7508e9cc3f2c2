# Linux on 32-bit x86, which is Debian's architecture i386. A 64-bit processor runs the programs without
# an emulator. They are linked with the loader of the unpacked packages, and LD_LIBRARY_PATH must name
# the folders of the libraries there.
set(TOOLS_PREFIX i686-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
get_filename_component(SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/trees/i386 ABSOLUTE)
include(${CMAKE_CURRENT_LIST_DIR}/debian-tree.cmake)
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,--dynamic-linker=${SYSROOT}/lib/ld-linux.so.2)
