# The GNU compiler for desktop Windows on the CPU named by TOOLS_PREFIX. Its runtime is linked
# statically, so the program runs without an installed one.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${TOOLS_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${TOOLS_PREFIX}-windres)
set(DLLTOOL ${TOOLS_PREFIX}-dlltool)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_FIND_ROOT_PATH /usr/${TOOLS_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
