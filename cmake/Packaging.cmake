# What is installed where, and the Debian package. Included by the root after the folders with the targets.

include(GNUInstallDirs)
include(${CMAKE_CURRENT_LIST_DIR}/Icons.cmake)
set(PACKAGING_FOLDER ${PROJECT_SOURCE_DIR}/packaging)
set(QUILLBOX_SHARE ${CMAKE_INSTALL_DATADIR}/quillbox)

if(TARGET quillbox)
  install(TARGETS quillbox RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(TARGET quillbox-sound)
  # Beside the program's own folder, where it looks for it. Not below lib, where the package would have to tell the
  # linker of a library that nobody links.
  install(TARGETS quillbox-sound LIBRARY DESTINATION libexec/quillbox)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/templates/ DESTINATION ${QUILLBOX_SHARE}/templates
  FILES_MATCHING PATTERN "*.qbx")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/help/ DESTINATION ${QUILLBOX_SHARE}/help
  FILES_MATCHING PATTERN "*.html" PATTERN "*.css" PATTERN "*.png")
install(FILES ${PACKAGING_FOLDER}/quillbox.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
  RENAME ${QUILLBOX_APP_ID}.desktop)
configure_file(${PACKAGING_FOLDER}/quillbox.metainfo.xml ${PROJECT_BINARY_DIR}/packaging/quillbox.metainfo.xml @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/packaging/quillbox.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
  RENAME ${QUILLBOX_APP_ID}.metainfo.xml)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quillbox RENAME copyright)

set(QUILLBOX_MAINTAINER "The Quillbox authors <maintainers@quillbox.example>" CACHE STRING
  "Who answers for the package: name and address of whoever builds it for others")
# What a Debian package has to bring: a manual page and a changelog, both packed, and the reasons for what its checker
# finds otherwise. Packed without a time, so that two builds are the same.
find_program(GZIP gzip REQUIRED)
function(quillbox_packed SOURCE NAME DESTINATION)
  set(made ${PROJECT_BINARY_DIR}/packaging/${NAME})
  configure_file(${PACKAGING_FOLDER}/${SOURCE} ${made} @ONLY)
  execute_process(COMMAND ${GZIP} -9nkf ${made} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${made}.gz DESTINATION ${DESTINATION})
endfunction()
quillbox_packed(quillbox.1 quillbox.1 ${CMAKE_INSTALL_MANDIR}/man1)
quillbox_packed(debian-changelog changelog ${CMAKE_INSTALL_DATADIR}/doc/quillbox)
install(FILES ${PACKAGING_FOLDER}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
  RENAME quillbox)

# The icon in the theme of last resort, as a drawing and in the sizes that panels ask for.
set(HICOLOR ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${PACKAGING_FOLDER}/icons/quillbox.svg DESTINATION ${HICOLOR}/scalable/apps)
set(themeIcons)
foreach(size 16 22 24 32 48 64 128 256)
  set(png ${PROJECT_BINARY_DIR}/hicolor/${size}x${size}/quillbox.png)
  quillbox_render_icon(quillbox ${size} ${png})
  list(APPEND themeIcons ${png})
  install(FILES ${png} DESTINATION ${HICOLOR}/${size}x${size}/apps)
endforeach()
add_custom_target(quillbox_theme_icons ALL DEPENDS ${themeIcons})

if(QUILLBOX_TESTS)
  find_package(Python3 COMPONENTS Interpreter)
  if(Python3_FOUND)
    add_test(NAME installed_files COMMAND ${Python3_EXECUTABLE}
      ${PROJECT_SOURCE_DIR}/tests/installed/check.py ${PROJECT_SOURCE_DIR} ${PROJECT_VERSION})
  endif()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillbox)
set(CPACK_PACKAGE_VENDOR "The Quillbox authors")
set(CPACK_PACKAGE_CONTACT ${QUILLBOX_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "clipboard history, text snippets, calculator, timer and tasks in the tray")
set(CPACK_PACKAGE_DESCRIPTION
"Quillbox lives in the tray and keeps the texts that were copied last, so that
an older one is back on the clipboard with two clicks. In the same window are
named texts that stay, among them scripts that type keys into the program in
front, a small scientific calculator, a countdown and alarm clock, and a list
of tasks. It uses no network.")
set(CPACK_PACKAGE_EXECUTABLES quillbox Quillbox)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
  WORLD_READ WORLD_EXECUTE)
# Qt's side on X11, which no library names; and what opens the manual in the user's browser.
set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
# And on Wayland, for sessions without XWayland.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, qt6-wayland")
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/PackageTimes.cmake)
include(CPack)
