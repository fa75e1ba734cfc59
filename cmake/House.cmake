# How a room of the house is built: one static library a folder, one set of warnings, two shared
# precompiled headers (with and without widgets). A folder links only what lies below it, so the
# link edges repeat the include rule that tests/house checks.

add_library(sonmira_options INTERFACE)
target_compile_features(sonmira_options INTERFACE cxx_std_20)
target_compile_options(sonmira_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wcast-align -Wformat=2 -Wimplicit-fallthrough)
if(CMAKE_UNITY_BUILD)
  # A class of a .cpp file counts as one of a header there.
  target_compile_options(sonmira_options INTERFACE -Wno-subobject-linkage)
endif()
# GCC 13 and later follow an empty byte array to Qt's single closing byte, past every check of its size.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 13)
  target_compile_options(sonmira_options INTERFACE -Wno-array-bounds)
endif()
target_compile_definitions(sonmira_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
target_include_directories(sonmira_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
# For the program alone, and of the compiler that it is built with: another one means more by the same words.
set(conversion_warnings $<$<CXX_COMPILER_ID:GNU>:-Wconversion> $<$<CXX_COMPILER_ID:GNU>:-Wsign-conversion>)
if(SONMIRA_SANITIZE)
  # The sanitizers' own checks make this warning see paths that cannot happen.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer
    -Wno-maybe-uninitialized)
  add_link_options(-fsanitize=address,undefined)
endif()
if(SONMIRA_FUZZ)
  # Without a main: only the fuzz targets take the fuzzer's. The mapping tells lines covered in the end.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
    -fno-omit-frame-pointer -fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fsanitize=address,undefined -fprofile-instr-generate)
endif()

file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/pch.cpp CONTENT "")
set(core_headers <QByteArray> <QHash> <QList> <QString> <QStringList>
  <algorithm> <cstdint> <exception> <functional> <memory> <optional> <string> <vector>)
set(widget_headers ${core_headers}
  <QAbstractItemModel> <QBoxLayout> <QLabel> <QMainWindow> <QPainter> <QPushButton> <QTreeWidget> <QWidget>)

# sonmira_precompile(NAME HEADERS header... LINKS target...): headers for others to take by REUSE_FROM
function(sonmira_precompile name)
  cmake_parse_arguments(PCH "" "" "HEADERS;LINKS" ${ARGN})
  add_library(${name} STATIC ${CMAKE_BINARY_DIR}/pch.cpp)
  target_link_libraries(${name} PUBLIC sonmira_options ${PCH_LINKS})
  target_precompile_headers(${name} PRIVATE ${PCH_HEADERS})
endfunction()

sonmira_precompile(pch_core HEADERS ${core_headers} LINKS Qt6::Core)
sonmira_precompile(pch_widgets HEADERS ${widget_headers} LINKS Qt6::Core Qt6::Gui Qt6::Widgets)

# sonmira_room(NAME [WIDGETS] SOURCES file... LINKS target... [PRIVATE_LINKS target...])
function(sonmira_room name)
  cmake_parse_arguments(ROOM "WIDGETS" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${name} PUBLIC sonmira_options ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
  target_compile_options(${name} PRIVATE ${conversion_warnings})
  if(ROOM_WIDGETS)
    target_link_libraries(${name} PUBLIC Qt6::Core Qt6::Gui Qt6::Widgets)
    target_precompile_headers(${name} REUSE_FROM pch_widgets)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  else()
    target_link_libraries(${name} PUBLIC Qt6::Core)
    target_precompile_headers(${name} REUSE_FROM pch_core)
  endif()
endfunction()
