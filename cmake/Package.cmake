# What is installed where, and the Debian package of it: the host tools and the simulator.
include(GNUInstallDirs)
set(own_folder ${CMAKE_INSTALL_LIBDIR}/kestrel-updater)
if(CMAKE_INSTALL_LIBDIR MATCHES "/")
  set(own_folder lib/kestrel-updater)  # programs are not for several architectures at once
endif()
set(doc_folder ${CMAKE_INSTALL_DATADIR}/doc/kestrel-updater)
set(sources ${PROJECT_SOURCE_DIR}/tools/updatekey/share)

install(TARGETS updatekey fontbake stringtable rawimage RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# A rehearsal finds the updater there.
install(TARGETS updater kstrl-standin RUNTIME DESTINATION ${own_folder})
install(TARGETS frame-counter LIBRARY DESTINATION ${own_folder}
        PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(CREATE_LINK ../lib/kestrel-updater/updater ${PROJECT_BINARY_DIR}/kestrel-updater SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/kestrel-updater DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${sources}/updatekey.bash RENAME updatekey
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(DIRECTORY ${PROJECT_BINARY_DIR}/guidata DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrel-updater
        OPTIONAL)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${doc_folder} RENAME copyright)

# Compressed with the same bytes every time.
function(install_compressed source name destination)
  set(packed ${PROJECT_BINARY_DIR}/compressed/${name}.gz)
  add_custom_command(OUTPUT ${packed}
    COMMAND gzip -9nc ${source} > ${packed}
    DEPENDS ${source}
    VERBATIM)
  add_custom_target(compress-${name} ALL DEPENDS ${packed})
  install(FILES ${packed} DESTINATION ${destination})
endfunction()
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/compressed)
install_compressed(${sources}/updatekey.1 updatekey.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(${sources}/kestrel-updater.1 kestrel-updater.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(${sources}/changelog changelog ${doc_folder})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrel-updater)
set(CPACK_PACKAGE_CONTACT "Kestrel updater maintainers <maintainers@kestrel-updater.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "update keys and updater simulator of the Kestrel instrument")
set(CPACK_PACKAGE_DESCRIPTION
  "Makes, judges and rehearses the update keys of the Kestrel, a handheld\n"
  "ground-penetrating-radar instrument, and runs the instrument's software\n"
  "updater on a folder that stands for the instrument.")
string(REPLACE ";" "" CPACK_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xvfb, xauth, libgl1-mesa-dri")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
