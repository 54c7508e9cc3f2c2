# Release builds get stack protection, checked libc calls and position-independent code. Debug and
# sanitizer builds have other checks.
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo" AND NOT WIN32)
  include(CheckPIESupported)
  check_pie_supported()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
  add_link_options(-Wl,-z,relro,-z,now)
elseif(CMAKE_BUILD_TYPE STREQUAL "MinSizeRel" AND MINGW)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
  add_link_options(-fstack-protector-strong -Wl,--dynamicbase,--nxcompat)
endif()
