# lumacap_settings: what every target of ours is compiled with.
add_library(lumacap_settings INTERFACE)
target_compile_options(lumacap_settings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_compile_definitions(lumacap_settings INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)

set(LUMACAP_SANITIZE "" CACHE STRING "Sanitizers, as for -fsanitize=")
if(LUMACAP_SANITIZE)
  # Enough for readable traces; more would double the time of a build that is made to run once.
  add_compile_options(-fsanitize=${LUMACAP_SANITIZE} -fno-omit-frame-pointer -O1 -g1)
  add_link_options(-fsanitize=${LUMACAP_SANITIZE})
endif()

# Precompiled headers fit only what is compiled alike. Qt 6.4 asks all its users for this; 6.8 asks none.
if(Qt6_VERSION VERSION_GREATER_EQUAL 6.5)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()

# lumacap_precompiled(NAME HEADERS … DEPENDS …)
#
# Headers of others that nearly every source includes: parsing them takes longer than all the rest. A source
# includes what it uses all the same; `lint` builds without.
function(lumacap_precompiled name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;DEPENDS")
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} STATIC ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE lumacap_settings ${arg_DEPENDS})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF POSITION_INDEPENDENT_CODE ON)
endfunction()

lumacap_precompiled(lumacap_precompiled
  HEADERS <algorithm> <chrono> <functional> <memory> <optional> <ranges> <vector>
          <QCoroTask> <QImage> <QObject> <QPainter> <QPointer> <QString>
  DEPENDS Qt6::Core Qt6::Gui QCoro6::Core)

# lumacap_library(NAME FOLDER folder SOURCES … HEADERS … DEPENDS …)
#
# One library a folder. Its headers are reached as "folder/Name.h", and only by a target that names the
# library under DEPENDS: each library offers a directory holding links to its own headers and nothing
# else, so that an include against the direction of the layout does not compile.
function(lumacap_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER" "SOURCES;HEADERS;DEPENDS;PRIVATE_DEPENDS")
  set(offered ${CMAKE_BINARY_DIR}/include/${name})
  file(REMOVE_RECURSE ${offered})
  file(MAKE_DIRECTORY ${offered}/${arg_FOLDER})
  foreach(header IN LISTS arg_HEADERS)
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${offered}/${arg_FOLDER}/${header} SYMBOLIC)
  endforeach()
  if(arg_SOURCES)
    add_library(${name} STATIC ${arg_SOURCES} ${arg_HEADERS})
    target_include_directories(${name} PUBLIC ${offered})
    target_link_libraries(${name} PUBLIC ${arg_DEPENDS} PRIVATE lumacap_settings ${arg_PRIVATE_DEPENDS})
    target_precompile_headers(${name} REUSE_FROM lumacap_precompiled)
  else()
    add_library(${name} INTERFACE ${arg_HEADERS})
    target_include_directories(${name} INTERFACE ${offered})
    target_link_libraries(${name} INTERFACE ${arg_DEPENDS})
  endif()
endfunction()
