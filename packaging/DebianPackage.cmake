# `cpack -G DEB` in the build tree makes lumacap_VERSION_ARCHITECTURE.deb.
set(CPACK_PACKAGE_NAME lumacap)
set(CPACK_PACKAGE_CONTACT "Lumacap developers <lumacap@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "screenshots from the tray")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Lumacap rests in the tray. Its menu or a command takes a picture of the\n\
whole screen at its native pixels and puts it on the clipboard, into a file,\n\
or both.")
set(CPACK_GENERATOR DEB)
# DESTDIR, not a prefix inside the staging folder: the Exec lines hold the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries are found in the program; these are loaded by name: Qt's plugins for the display and SVG.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, qt6-wayland, libqt6svg6, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libcanberra-pulse, qt6-translations-l10n, sound-theme-freedesktop")
include(CPack)
