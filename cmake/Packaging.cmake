# `make deb`: a Debian package built with CPack from an install under /usr.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarnwell)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Tarnwell team <team@tarnwell.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "day planner and focus timer for the tray")
set(CPACK_PACKAGE_DESCRIPTION "Tarnwell keeps each day as an ordered queue of tasks with the minutes
planned for them. The first open task of today is the task in hand; its focus
timer measures the time really spent on it, warns before the plan runs out and
turns overdue after it. Quick add, rollover, routines, away-time detection,
notifications with actions, global hot keys and a command line for scripts.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://tarnwell.org/")
# Libraries the programs link against are found by dpkg-shlibdeps ...
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/src)
# ... but Qt loads these at run time, where no linker sees them: the SQLite
# driver, the QML modules the windows import, and the SVG reader for icons.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "libqt6sql6-sqlite, qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-layouts, qml6-module-qtquick-window, qml6-module-qtquick-templates, qml6-module-qtqml-workerscript, libqt6svg6")
# Wayland sessions: without Qt's Wayland plugin the windows go through Xwayland.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/data/debian/postinst ${PROJECT_SOURCE_DIR}/data/debian/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
