# The GNU cross compiler for desktop Windows with the name prefix TOOLS_PREFIX. Its runtime is linked
# statically, so that the program needs no runtime DLLs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${TOOLS_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${TOOLS_PREFIX}-windres)
set(DLLTOOL ${TOOLS_PREFIX}-dlltool)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_FIND_ROOT_PATH /usr/${TOOLS_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
