# The toolkit, looked for here and nowhere else. Included by the folder at the top, so that the tests see it too.
include_guard()

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Qml Quick QuickControls2 DBus Svg Test QuickTest)

# Every module of ours stands in one tree, where qmllint and the tests find it.
set(QT_QML_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml)

# tavrin_qml_module(TARGET URI uri SOURCES ... QML_FILES ... RESOURCES ... LIBRARIES ...): a static QML module of ours.
# What uses it links the target and the target's plug-in: TARGET and TARGETplugin.
function(tavrin_qml_module target)
  cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
  qt_add_library(${target} STATIC)
  tavrin_qml_documents(${target} ${ARG_UNPARSED_ARGUMENTS})
  # The registration of the types that the build writes includes their headers by bare name.
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/Sources PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}
                                                                                   ${CMAKE_CURRENT_BINARY_DIR})
  target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
  target_link_libraries(${target} PUBLIC tavrin_flags ${ARG_LIBRARIES})
endfunction()

# tavrin_qml_documents(TARGET URI uri ...): makes a target that stands, a library or a program, the QML module of that name.
function(tavrin_qml_documents target)
  cmake_parse_arguments(ARG "" "URI" "SOURCES;QML_FILES;RESOURCES;IMPORTS;DEPENDENCIES" ${ARGN})
  # Compiling each document to C++ takes longer than everything else together; a debug build reads them as they are.
  set(cachegen "")
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    set(cachegen NO_CACHEGEN)
  endif()
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  qt_add_qml_module(${target}
    URI ${ARG_URI}
    VERSION 1.0
    # Not on the engine's import path by itself with this release: installTheme() adds it.
    RESOURCE_PREFIX /qt/qml
    IMPORT_PATH ${QT_QML_OUTPUT_DIRECTORY}
    IMPORTS ${ARG_IMPORTS}
    # Where the types come from that ours in C++ are built on.
    DEPENDENCIES ${ARG_DEPENDENCIES}
    SOURCES ${ARG_SOURCES}
    QML_FILES ${ARG_QML_FILES}
    RESOURCES ${ARG_RESOURCES}
    ${cachegen})
  # What the toolkit writes isn't held to the house rules.
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "/qmlcache/|_qmltyperegistrations")
  set_source_files_properties(${sources} TARGET_DIRECTORY ${target} PROPERTIES COMPILE_OPTIONS -w)
endfunction()
