# Runs at install time: writes the desktop entry and the D-Bus service file for the prefix installed into,
# which `cmake --install --prefix` may have changed since the build was configured.
#   LUMACAP_ENTRIES_FROM  folder of the templates
#   LUMACAP_BINDIR        where the program goes, relative to the prefix or absolute
#   LUMACAP_DATADIR       where share/ is, likewise
cmake_path(ABSOLUTE_PATH LUMACAP_BINDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)
cmake_path(ABSOLUTE_PATH LUMACAP_DATADIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)

set(program "${LUMACAP_BINDIR}/lumacap")
# Each of the two formats has its own rules for these, and nobody has such a path.
if(program MATCHES "[\"'`$%\\\\\n]")
  message(FATAL_ERROR "An Exec line cannot hold this path: ${program}")
elseif(program MATCHES "[^A-Za-z0-9_./+-]")
  set(program "\"${program}\"")
endif()

function(install_entry name folder)
  set(written "$ENV{DESTDIR}${LUMACAP_DATADIR}/${folder}/${name}")
  message(STATUS "Installing: ${written}")
  configure_file("${LUMACAP_ENTRIES_FROM}/${name}.in" "${written}" @ONLY NEWLINE_STYLE UNIX)
  list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${LUMACAP_DATADIR}/${folder}/${name}")
  set(CMAKE_INSTALL_MANIFEST_FILES "${CMAKE_INSTALL_MANIFEST_FILES}" PARENT_SCOPE)
endfunction()

install_entry(app.lumacap.Lumacap.desktop applications)
install_entry(app.lumacap.Lumacap.service dbus-1/services)
