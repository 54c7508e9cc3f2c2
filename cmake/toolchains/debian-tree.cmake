# The GNU cross compiler for Linux with the name prefix TOOLS_PREFIX, and the headers and libraries of
# the packages that scripts/lanes/debian-tree unpacks into SYSROOT.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_COMPILER ${TOOLS_PREFIX}-g++)
set(CMAKE_SYSROOT ${SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
