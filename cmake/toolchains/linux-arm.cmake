# Linux on 32-bit ARM with a floating-point unit, which is Debian's architecture armhf. An emulator runs
# the programs.
set(TOOLS_PREFIX arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
get_filename_component(SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/trees/armhf ABSOLUTE)
include(${CMAKE_CURRENT_LIST_DIR}/debian-tree.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static -L ${SYSROOT})
