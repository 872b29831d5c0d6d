# Who Tamrick is, in one place: the company and program names the settings are
# kept under, the version, and the reverse-DNS application id derived from the
# company name ("Quorvane Systems Inc." -> "com.quorvane.Tamrick"). The desktop
# entry, the icon, the metainfo and the running program all use that id, so
# the desktop matches the window to its launcher entry.
set(TAMRICK_COMPANY "Quorvane Systems Inc.")
set(TAMRICK_PROGRAM "Tamrick")

string(REGEX MATCH "^[A-Za-z0-9]+" company_word "${TAMRICK_COMPANY}")
string(TOLOWER "${company_word}" company_word)
set(TAMRICK_APP_ID "com.${company_word}.${TAMRICK_PROGRAM}")
set(TAMRICK_VERSION "${PROJECT_VERSION}")
# The day this version was released: the metainfo release entry and the
# manual pages carry it.
set(TAMRICK_RELEASE_DATE "2025-11-25")

# The icon: drawn once as SVG, rendered to these hicolor sizes.
set(TAMRICK_ICON_SIZES 16 22 24 32 48 64 128 256)
set(TAMRICK_ICON_SVG ${PROJECT_SOURCE_DIR}/data/icons/tamrick.svg)
set(TAMRICK_ICON_DIR ${PROJECT_BINARY_DIR}/icons/hicolor)

configure_file(${PROJECT_SOURCE_DIR}/cmake/AppIdentity.h.in
  ${PROJECT_BINARY_DIR}/generated/platform/AppIdentity.h @ONLY)
