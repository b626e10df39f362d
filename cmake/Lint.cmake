# `cmake --build --preset lint`: the include directions, clang-format and clang-tidy, all as errors.
add_custom_target(lint
  COMMAND ${CMAKE_SOURCE_DIR}/scripts/lint ${CMAKE_BINARY_DIR}
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
  USES_TERMINAL)
# clang-tidy reads what moc and the scanner of Wayland protocols write. In the cache, because folders read before this line have to see it.
set(CMAKE_GLOBAL_AUTOGEN_TARGET ON CACHE INTERNAL "One target for everything that moc writes")
get_property(generated GLOBAL PROPERTY LUMACAP_GENERATED)
add_dependencies(lint autogen ${generated})
