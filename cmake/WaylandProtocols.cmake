# What the Wayland backends speak: libwayland, and code that its scanner makes of the protocols' descriptions.
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
pkg_get_variable(WAYLAND_PROTOCOLS_DIR wayland-protocols pkgdatadir)
pkg_check_modules(WAYLAND_PROTOCOLS REQUIRED wayland-protocols)
find_path(PLASMA_PROTOCOLS_DIR kde-output-order-v1.xml PATH_SUFFIXES share/plasma-wayland-protocols REQUIRED)

# The wlr protocols come in a package of their own, or, in Debian 12, among the sources of a Rust library.
pkg_check_modules(WLR_PROTOCOLS wlr-protocols)
if(WLR_PROTOCOLS_FOUND)
  pkg_get_variable(wlr_protocols_default wlr-protocols pkgdatadir)
else()
  file(GLOB wlr_protocols_default /usr/share/cargo/registry/wayland-protocols-*/wlr-protocols)
endif()
set(WLR_PROTOCOLS_DIR "${wlr_protocols_default}" CACHE PATH "Where the wlr protocols are described")

# lumacap_wayland_protocols(NAME file.xml …)
#
# One C library of the named protocols. A description DIR/name.xml is included as <protocols/name.h>.
function(lumacap_wayland_protocols name)
  set(offered ${CMAKE_BINARY_DIR}/include/${name})
  set(made ${offered}/protocols)
  file(MAKE_DIRECTORY ${made})
  set(generated)
  foreach(description IN LISTS ARGN)
    if(NOT EXISTS ${description})
      message(FATAL_ERROR "no Wayland protocol ${description}")
    endif()
    get_filename_component(base ${description} NAME_WLE)
    # One of them calls an argument `namespace`, which C++ keeps for itself.
    add_custom_command(OUTPUT ${made}/${base}.h ${made}/${base}.c
      COMMAND ${WAYLAND_SCANNER} client-header ${description} ${made}/${base}.h
      COMMAND sed -i "s/\\bnamespace\\b/name_space/g" ${made}/${base}.h
      COMMAND ${WAYLAND_SCANNER} private-code ${description} ${made}/${base}.c
      DEPENDS ${description} VERBATIM)
    list(APPEND generated ${made}/${base}.h ${made}/${base}.c)
  endforeach()
  add_custom_target(${name}_code DEPENDS ${generated})
  set_property(GLOBAL APPEND PROPERTY LUMACAP_GENERATED ${name}_code) # which lint has to see, too
  add_library(${name} STATIC ${generated})
  target_include_directories(${name} SYSTEM PUBLIC ${offered})
  target_link_libraries(${name} PUBLIC PkgConfig::WAYLAND)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF POSITION_INDEPENDENT_CODE ON)
endfunction()
