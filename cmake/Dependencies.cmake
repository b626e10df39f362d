# What the program is built with. Nothing is downloaded; every library comes from the system.
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets DBus Svg)
find_package(QCoro6 0.8 REQUIRED COMPONENTS Core DBus)
find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-shm xcb-randr xcb-xfixes xcb-damage xcb-res xcb-xinput)
pkg_check_modules(XKBCOMMON REQUIRED IMPORTED_TARGET xkbcommon)
pkg_check_modules(CANBERRA REQUIRED IMPORTED_TARGET libcanberra)
# It asks for _REENTRANT, which has long meant nothing, but does not fit headers that were precompiled without.
set_target_properties(PkgConfig::CANBERRA PROPERTIES INTERFACE_COMPILE_OPTIONS "")
pkg_check_modules(ISAL IMPORTED_TARGET libisal) # zlib deflates where it is not built
pkg_check_modules(ZLIB REQUIRED IMPORTED_TARGET zlib)
pkg_check_modules(JPEG REQUIRED IMPORTED_TARGET libjpeg)
pkg_check_modules(TIFF REQUIRED IMPORTED_TARGET libtiff-4)
pkg_check_modules(XKBCOMMON REQUIRED IMPORTED_TARGET xkbcommon)
find_package(Threads REQUIRED)
