# The Debian package, made by `cpack -G DEB` in the build tree build/release.
set(CPACK_PACKAGE_NAME kelpa)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${KELPA_COPYRIGHT_HOLDER} <${KELPA_FEEDBACK_MAILBOX}>")
set(CPACK_PACKAGE_HOMEPAGE_URL "${KELPA_HOMEPAGE}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
# One package of what every installation has, Unspecified, and of what Debian wants of its own.
set(CPACK_COMPONENTS_ALL Unspecified debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${KELPA_BUILD_NUMBER})
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reminder of breaks and of drinking water")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Kelpa sits in the tray, counts down the minutes of work that are left, and
when they are over covers every screen with a large countdown until you have
had a break. Every few short breaks comes a long one, which can be made
impossible to skip. A small panel reminds you to drink water and keeps the
day's total.
.
The tray shows the time left as text on desktops that can. While nothing is
shown, the program takes some two megabytes of memory.")
# What the programs are linked with, each of the helpers included, is found by dpkg-shlibdeps; QML modules are loaded
# by name, which it cannot see. The check of the package compares this list with what the sources import.
set(KELPA_QML_PACKAGES qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-templates)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
list(JOIN KELPA_QML_PACKAGES ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
# The built-in prompts are Chinese; feedback mail and links go through xdg-utils, updates over HTTPS.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus, ca-certificates, fonts-noto-cjk | fonts-wqy-microhei, qt6-wayland, xdg-utils")
# Breaks that wait while a program records sound.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "pulseaudio-utils")

include(CPack)
