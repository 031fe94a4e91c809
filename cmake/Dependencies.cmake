# SPDX-License-Identifier: GPL-3.0-or-later
# Finds every library that Quelto uses.
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Network OpenGL Qml Quick DBus Widgets Svg Test)
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET libavcodec libavformat libavutil libswresample libswscale)
# Its headers only: the program loads it when it needs it.
pkg_check_modules(AVFILTER REQUIRED libavfilter)
pkg_check_modules(PIPEWIRE REQUIRED IMPORTED_TARGET libpipewire-0.3)
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-shm xcb-randr xcb-xfixes xcb-damage xcb-xinput xcb-xkb)
pkg_check_modules(ICU REQUIRED IMPORTED_TARGET icu-i18n icu-uc)
pkg_check_modules(XKBCOMMON REQUIRED IMPORTED_TARGET xkbcommon xkbcommon-x11)
pkg_check_modules(EGL REQUIRED IMPORTED_TARGET egl)
pkg_check_modules(CANBERRA REQUIRED IMPORTED_TARGET libcanberra)
pkg_check_modules(MPV REQUIRED IMPORTED_TARGET mpv)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0)
find_package(GTest REQUIRED)
find_package(benchmark REQUIRED)
