# The application icon: data/icons/tamrick.svg rendered by rsvg-convert into
# the hicolor PNG sizes. The same PNGs are installed for the desktop and
# compiled into the program as its window icon.
# (TAMRICK_ICON_SIZES, TAMRICK_ICON_SVG and TAMRICK_ICON_DIR come from
# AppIdentity.cmake, so that the install rules see them too.)
find_program(RSVG_CONVERT rsvg-convert REQUIRED)

set(TAMRICK_ICON_PNGS "")
set(icon_qrc_files "")
foreach(size IN LISTS TAMRICK_ICON_SIZES)
  set(png ${TAMRICK_ICON_DIR}/${size}x${size}/apps/${TAMRICK_APP_ID}.png)
  add_custom_command(OUTPUT ${png}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${TAMRICK_ICON_DIR}/${size}x${size}/apps
    COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${png} ${TAMRICK_ICON_SVG}
    DEPENDS ${TAMRICK_ICON_SVG}
    COMMENT "Rendering the ${size}x${size} application icon" VERBATIM)
  list(APPEND TAMRICK_ICON_PNGS ${png})
  string(APPEND icon_qrc_files "    <file alias=\"${size}.png\">${png}</file>\n")
endforeach()

# The window icon: the rendered sizes under ":/appicon/SIZE.png".
set(TAMRICK_ICON_QRC ${PROJECT_BINARY_DIR}/generated/appicon.qrc)
file(WRITE ${TAMRICK_ICON_QRC}.in
  "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n  <qresource prefix=\"/appicon\">\n${icon_qrc_files}  </qresource>\n</RCC>\n")
configure_file(${TAMRICK_ICON_QRC}.in ${TAMRICK_ICON_QRC} COPYONLY)
qt6_add_resources(TAMRICK_ICON_RESOURCE_SOURCES ${TAMRICK_ICON_QRC} OPTIONS -name appicon)
set_source_files_properties(${TAMRICK_ICON_RESOURCE_SOURCES} PROPERTIES SKIP_AUTORCC ON)
