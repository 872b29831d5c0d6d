# `cpack` (and `make deb`) builds tamrick_VERSION-1_ARCH.deb. The library
# dependencies are worked out by dpkg-shlibdeps; the Qt plugins the program
# loads at run time (the X11/Wayland platform and the extra image readers)
# are named by hand because no library links them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tamrick)
set(CPACK_PACKAGE_VENDOR "${TAMRICK_COMPANY}")
set(CPACK_PACKAGE_VERSION "${TAMRICK_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "raster paint and photo-retouching program")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
  "Tamrick opens a picture or starts a new one, paints on it with brush, shape and touch-up tools, "
  "selects parts of it, applies colour adjustments and filters with live preview, and saves it as "
  "BMP, GIF, JPEG or PNG. tamrick-cli runs the same engine without a window for batch work.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TAMRICK_COMPANY} <tamrick@quorvane.example>" CACHE STRING
  "The Maintainer field of the Debian package")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TAMRICK_HOMEPAGE}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
include(CPack)
