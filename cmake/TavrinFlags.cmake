# Warnings and sanitizers as an interface target: what links `tavrin_flags` is held to the house rules.
include_guard()

set(TAVRIN_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

add_library(tavrin_flags INTERFACE)
target_compile_options(tavrin_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

if(TAVRIN_SANITIZE)
  # Everything is instrumented, so that a report never points at an uninstrumented neighbour.
  add_compile_options(-fsanitize=${TAVRIN_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TAVRIN_SANITIZE})
  if(TAVRIN_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()

if(TAVRIN_FUZZERS)
  # The fuzzer steers by what the core does with an input, so the core tells it.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
