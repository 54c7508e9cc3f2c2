# Installs the desktop tools and the simulator, and makes a Debian package of them.
include(GNUInstallDirs)
set(own_folder libexec/kestrel-updater)
set(doc_folder ${CMAKE_INSTALL_DATADIR}/doc/kestrel-updater)
set(sources ${PROJECT_SOURCE_DIR}/tools/updatekey/share)
set(packaged_pages
  release-engineers-guide.md safety.md technicians-guide.md updatekey-json.md)

install(TARGETS updatekey RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The programs that make the GUI data, beside the modules that they share, and links to them.
set(tools ${PROJECT_SOURCE_DIR}/tools/guidata)
set(tools_folder ${CMAKE_INSTALL_DATADIR}/kestrel-updater/tools)
configure_file(${tools}/sources.py ${PROJECT_BINARY_DIR}/guidata-tools/sources.py @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/guidata-tools/sources.py DESTINATION ${tools_folder})
install(FILES ${tools}/atlas.py ${tools}/bmfont.py ${tools}/typeface.py DESTINATION ${tools_folder})
foreach(tool fontbake stringtable rawimage)
  install(PROGRAMS ${tools}/${tool} DESTINATION ${tools_folder})
  file(CREATE_LINK ../share/kestrel-updater/tools/${tool} ${PROJECT_BINARY_DIR}/guidata-tools/${tool} SYMBOLIC)
  install(FILES ${PROJECT_BINARY_DIR}/guidata-tools/${tool} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()
# updatekey rehearse looks for the updater here.
install(TARGETS updater kstrl-standin RUNTIME DESTINATION ${own_folder})
install(TARGETS frame-counter LIBRARY DESTINATION ${own_folder}
        PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(CREATE_LINK ../${own_folder}/updater ${PROJECT_BINARY_DIR}/kestrel-updater SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/kestrel-updater DESTINATION ${CMAKE_INSTALL_BINDIR})
# List the files by name, because the folder may contain files of an earlier build.
foreach(file ${GUIDATA_FILES})
  file(RELATIVE_PATH place ${GUIDATA} ${file})
  cmake_path(GET place PARENT_PATH folder)
  install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrel-updater/guidata/${folder})
endforeach()
install(FILES ${sources}/updatekey.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrel-updater)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${doc_folder} RENAME copyright)
list(TRANSFORM packaged_pages PREPEND ${PROJECT_SOURCE_DIR}/docs/)
install(FILES ${packaged_pages} DESTINATION ${doc_folder})

# Make the operator's card, one page for each language.
set(card_folder ${PROJECT_BINARY_DIR}/card)
file(GLOB card_sources CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/data/card/* ${PROJECT_SOURCE_DIR}/data/lang/*.txt
  ${PROJECT_SOURCE_DIR}/docs/gallery/*.png)
list(TRANSFORM LANGUAGES PREPEND ${card_folder}/operator-card- OUTPUT_VARIABLE cards)
list(TRANSFORM cards APPEND .html)
add_custom_command(OUTPUT ${cards}
  COMMAND ${PROJECT_SOURCE_DIR}/scripts/card ${card_folder}
  DEPENDS ${PROJECT_SOURCE_DIR}/scripts/card ${card_sources}
          ${PROJECT_SOURCE_DIR}/ui/screen_layout.h ${PROJECT_SOURCE_DIR}/support/languages.h
  COMMENT "Making the operator's cards"
  VERBATIM)
add_custom_target(card ALL DEPENDS ${cards})
install(FILES ${cards} DESTINATION ${doc_folder})

# Compress without names and times (-n), so that the same input gives the same bytes.
set(packed_folder ${PROJECT_BINARY_DIR}/compressed)
file(MAKE_DIRECTORY ${packed_folder})
function(install_compressed source name destination)
  set(packed ${packed_folder}/${name}.gz)
  add_custom_command(OUTPUT ${packed}
    COMMAND gzip -9nc ${source} > ${packed}
    DEPENDS ${source}
    VERBATIM)
  add_custom_target(compress-${name} ALL DEPENDS ${packed})
  install(FILES ${packed} DESTINATION ${destination})
endfunction()
install_compressed(${sources}/changelog changelog ${doc_folder})

# Generate manual pages from the programs' own output.
find_program(HELP2MAN help2man)
function(install_manual name summary program)
  set(page ${packed_folder}/${name}.1)
  string(REPLACE ";" " " command "${program};${ARGN}")
  add_custom_command(OUTPUT ${page}
    COMMAND ${HELP2MAN} --no-info --no-discard-stderr --manual "Kestrel updater" --name ${summary}
            --version-string ${PROJECT_VERSION} --output ${page} ${command}
    COMMAND sed -i -e "s/^\\.TH [^ ]*/.TH ${name}/" -e "/^\\.SH NAME/{n;s/.* .- /${name} \\\\- /}"
            ${page}
    DEPENDS ${program}
    VERBATIM)
  install_compressed(${page} ${name}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endfunction()
set(completion ${sources}/completion)
install(FILES ${completion}/updatekey.bash RENAME updatekey
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${completion}/updatekey.zsh RENAME _updatekey
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES ${completion}/updatekey.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
if(HELP2MAN)
  install_manual(updatekey "make, check, rehearse and write update keys" $<TARGET_FILE:updatekey>)
  foreach(command make check info image sticks write diff rehearse diagnose)
    install_manual(updatekey-${command} "the command ${command} of updatekey" $<TARGET_FILE:updatekey>
                   ${command})
  endforeach()
  install_manual(kestrel-updater "update the software of a simulated instrument" $<TARGET_FILE:updater>)
  install_manual(fontbake "make a bitmap font in the instrument's format" ${tools}/fontbake)
  install_manual(stringtable "make a string table in the instrument's format" ${tools}/stringtable)
  install_manual(rawimage "make a background picture in the instrument's format" ${tools}/rawimage)
else()
  install(CODE "message(FATAL_ERROR \"The manual pages need help2man; scripts/bootstrap package installs it.\")")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrel-updater)
set(CPACK_PACKAGE_CONTACT "Kestrel updater maintainers <maintainers@kestrel-updater.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "update keys and updater simulator of the Kestrel instrument")
set(CPACK_PACKAGE_DESCRIPTION
  "Makes, checks and rehearses the update keys of the Kestrel, a handheld\n"
  "ground-penetrating-radar instrument, and runs the instrument's software\n"
  "updater on a folder that simulates the instrument.")
string(REPLACE ";" "" CPACK_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "mtools, dosfstools, fdisk, python3, python3-freetype, python3-pil")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xvfb, libgl1-mesa-dri")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
