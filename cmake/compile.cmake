# Warnings, sanitizers, and what keeps a build short: ccache, mold.
find_program(KV_CCACHE ccache)
if(KV_CCACHE)
  # The precompiled headers are cached too, and checkouts in different folders share what they compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
      CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${KV_CCACHE})
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()
find_program(KV_MOLD mold)
if(KV_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wno-missing-field-initializers)
# g++ 12 reports false alarms of these two from its own std::string and std::optional under -O2.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-restrict> $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
if(KV_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=address,undefined)
endif()
# The fuzzers watch which ways the program's own code takes. No precompiled headers: the ways through them differ
# between compilers, and a source must name what it includes anyway.
if(KV_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "KV_FUZZ wants clang++: cmake --preset fuzz")
  endif()
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=address,undefined)
endif()
