# Install rules: the two programs, and what makes Tamrick a citizen of the
# desktop (launcher entry, icons, AppStream metainfo, manual pages, bash
# completion). Everything the programs need at run time is compiled in, so the
# installed copy runs with the build folder gone.
include(GNUInstallDirs)

set(TAMRICK_HOMEPAGE "https://quorvane.example/tamrick" CACHE STRING "Tamrick's web page, for the metainfo")
set(TAMRICK_SCREENSHOT_URL "${TAMRICK_HOMEPAGE}/screenshot.png" CACHE STRING "The metainfo's screenshot")
set(TAMRICK_LICENSE "LicenseRef-proprietary" CACHE STRING "SPDX licence of Tamrick, for the metainfo")

# The picture types Tamrick opens: its own BMP and JPEG readers, and the types
# Qt's image readers know with the qt6-image-formats-plugins package (which
# the Debian package depends on).
set(TAMRICK_MIME_TYPE_LIST
  image/bmp image/x-bmp image/gif image/jpeg image/png
  image/tiff image/webp image/x-tga image/x-icns image/vnd.microsoft.icon image/vnd.wap.wbmp
  image/x-portable-bitmap image/x-portable-graymap image/x-portable-pixmap
  image/x-xbitmap image/x-xpixmap)
list(JOIN TAMRICK_MIME_TYPE_LIST ";" TAMRICK_MIME_TYPES)
string(APPEND TAMRICK_MIME_TYPES ";")
set(TAMRICK_METAINFO_MIME_TYPES "")
foreach(type IN LISTS TAMRICK_MIME_TYPE_LIST)
  string(APPEND TAMRICK_METAINFO_MIME_TYPES "    <mediatype>${type}</mediatype>\n")
endforeach()

set(TAMRICK_DESKTOP_FILE ${PROJECT_BINARY_DIR}/desktop/${TAMRICK_APP_ID}.desktop)
set(TAMRICK_METAINFO_FILE ${PROJECT_BINARY_DIR}/desktop/${TAMRICK_APP_ID}.metainfo.xml)
configure_file(${PROJECT_SOURCE_DIR}/data/desktop/tamrick.desktop.in ${TAMRICK_DESKTOP_FILE} @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/data/desktop/tamrick.metainfo.xml.in ${TAMRICK_METAINFO_FILE} @ONLY)

# Manual pages and completion come from the programs themselves, so they say
# what the programs do.
set(TAMRICK_MAN_DIR ${PROJECT_BINARY_DIR}/man)
add_custom_command(OUTPUT ${TAMRICK_MAN_DIR}/tamrick-cli.1 ${TAMRICK_MAN_DIR}/tamrick.1
                          ${TAMRICK_MAN_DIR}/tamrick-cli.bash
  COMMAND ${CMAKE_COMMAND} -E make_directory ${TAMRICK_MAN_DIR}
  COMMAND tamrick-cli --man > ${TAMRICK_MAN_DIR}/tamrick-cli.1
  COMMAND tamrick --man > ${TAMRICK_MAN_DIR}/tamrick.1
  COMMAND tamrick-cli --bash-completion > ${TAMRICK_MAN_DIR}/tamrick-cli.bash
  DEPENDS tamrick tamrick-cli
  COMMENT "Writing the manual pages and the bash completion")
add_custom_target(tamrick_manuals ALL
  DEPENDS ${TAMRICK_MAN_DIR}/tamrick-cli.1 ${TAMRICK_MAN_DIR}/tamrick.1 ${TAMRICK_MAN_DIR}/tamrick-cli.bash)

install(TARGETS tamrick tamrick-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${TAMRICK_DESKTOP_FILE} DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${TAMRICK_METAINFO_FILE} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${TAMRICK_ICON_SVG} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
  RENAME ${TAMRICK_APP_ID}.svg)
install(DIRECTORY ${TAMRICK_ICON_DIR} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES ${TAMRICK_MAN_DIR}/tamrick.1 ${TAMRICK_MAN_DIR}/tamrick-cli.1
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${TAMRICK_MAN_DIR}/tamrick-cli.bash
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME tamrick-cli)
