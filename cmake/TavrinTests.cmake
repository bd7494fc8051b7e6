# Test programs. A test file that stands in the folder but in no target is an error: it would never run.
include_guard()

# tavrin_add_test(NAME SOURCES ... LIBRARIES ...): one GoogleTest program, one CTest entry for each of its tests.
function(tavrin_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tavrin_flags ${ARG_LIBRARIES})
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
  tavrin_require_registered(${ARG_SOURCES})
endfunction()

# Fails the configuration when a .cpp of this folder (or below) is in none of the given sources.
function(tavrin_require_registered)
  file(GLOB_RECURSE found RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS *.cpp)
  foreach(file IN LISTS found)
    if(NOT file IN_LIST ARGN)
      message(FATAL_ERROR "${CMAKE_CURRENT_SOURCE_DIR}/${file} is registered by no target, so it would never run")
    endif()
  endforeach()
endfunction()
