# The Debian package, and the bundle that updates itself: `cpack` in a build without tests, which ./dev package
# does.
set(CPACK_GENERATOR DEB ZIP)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/Generators.cmake)
set(CPACK_TAVRIN_BUNDLE_FILE_NAME Tavrin-${TAVRIN_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_NAME tavrin)
set(CPACK_PACKAGE_VERSION ${TAVRIN_VERSION})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TAVRIN_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TAVRIN_WEBSITE}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "keyboard shortcuts of your own for the whole desktop")
set(CPACK_PACKAGE_DESCRIPTION
"Tavrin lives in the tray and manages keyboard shortcuts that work in every
application of an X11 session. A combination opens an application or brings it
to the front, opens a web address, puts a prepared text where the user is
typing, runs a script, or does one of thirteen things with the desktop itself.
Its texts are Vietnamese.")

# Libraries are found by what the files link to. Besides, the views import QML modules; every script is
# zsh's; applications, addresses and settings go through the desktop's own tools; and an update is unpacked
# by unzip and ends the old program by killall.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-qtquick, qml6-module-qtquick-window, qml6-module-qtqml, \
qml6-module-qtqml-workerscript, zsh, libgtk-3-bin, libglib2.0-bin, xdg-utils, unzip, psmisc")
# Without these the program runs, and the update check, single ready-made scripts, the single instance, the
# choice of a file or single signs in its texts do not.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ca-certificates, curl, dbus-user-session | dbus-session-bus, \
fonts-noto-color-emoji, iproute2, libnotify-bin, xdg-desktop-portal | zenity | kdialog, xdg-user-dirs")
# Means of system actions and ready-made scripts that a desktop has by itself or in another way.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gvfs, maim | flameshot, pkexec, rofi")

include(CPack)
