# Fuzz targets (clang only).
#
#   cmake -S . -B build-fuzz -G Ninja -DTESSUMA_FUZZ=ON -DCMAKE_CXX_COMPILER=clang++ \
#         -DTESSUMA_BUILD_GUI=OFF -DTESSUMA_BUILD_TESTS=OFF -DTESSUMA_BUILD_BENCH=OFF
#   cmake --build build-fuzz && ctest --test-dir build-fuzz
#
# Every target of this build is compiled with coverage for libFuzzer and with
# AddressSanitizer and UndefinedBehaviorSanitizer; the fuzz targets fuzz/<name>.cpp
# link libFuzzer's main. The targets and their largest inputs are listed in
# fuzz/targets.list. ctest runs each target for a few seconds from its seed
# corpus (fuzz/corpus/<name>), and replays the inputs kept in
# fuzz/regressions/<name>. fuzz/run.sh runs them for longer.

option(TESSUMA_FUZZ "Build the libFuzzer targets (needs clang)" OFF)

if(TESSUMA_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "TESSUMA_FUZZ needs clang: configure with -DCMAKE_CXX_COMPILER=clang++")
  endif()
  if(TESSUMA_BUILD_GUI)
    message(WARNING "TESSUMA_FUZZ: the fuzz build needs no Qt; -DTESSUMA_BUILD_GUI=OFF saves time")
  endif()

  # The flags at the end of this directory apply to every target in it, so the
  # game's libraries are instrumented as well as the fuzz targets.
  set(TESSUMA_FUZZ_SANITIZERS "-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer")
  string(APPEND CMAKE_CXX_FLAGS " -fsanitize=fuzzer-no-link ${TESSUMA_FUZZ_SANITIZERS}")
  string(APPEND CMAKE_EXE_LINKER_FLAGS " ${TESSUMA_FUZZ_SANITIZERS}")

  enable_testing()

  set(TESSUMA_FUZZ_WORK ${CMAKE_BINARY_DIR}/fuzz-work)
  file(MAKE_DIRECTORY ${TESSUMA_FUZZ_WORK}/tmp)
  add_custom_target(fuzz)

  file(STRINGS ${CMAKE_SOURCE_DIR}/fuzz/targets.list TESSUMA_FUZZ_LINES REGEX "^[a-z_]+[ \t]+[0-9]+")
  foreach(line ${TESSUMA_FUZZ_LINES})
    string(REGEX MATCH "^([a-z_]+)[ \t]+([0-9]+)" _ "${line}")
    set(name ${CMAKE_MATCH_1})
    set(max_len ${CMAKE_MATCH_2})
    set(target fuzz_${name})

    add_executable(${target} fuzz/${name}.cpp)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(${target} PRIVATE tessuma_sim)
    tessuma_layer(${target} fuzz)
    if(name MATCHES "^cli_")
      # The command-line companion's commands, without its main().
      file(GLOB cli_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/tessuma-cli/*.cpp)
      list(FILTER cli_sources EXCLUDE REGEX "/main\\.cpp$")
      target_sources(${target} PRIVATE ${cli_sources})
      target_link_libraries(${target} PRIVATE tessuma_rater)
    endif()
    add_dependencies(fuzz ${target})

    # A short run from the seed corpus: new inputs go to the build folder,
    # never into the committed corpus.
    file(MAKE_DIRECTORY ${TESSUMA_FUZZ_WORK}/${name})
    set(env
      "TMPDIR=${TESSUMA_FUZZ_WORK}/tmp"
      "ASAN_OPTIONS=detect_leaks=1:abort_on_error=0"
      "UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1")
    add_test(NAME fuzz/${name}
      COMMAND ${target} -max_total_time=3 -runs=200000 -max_len=${max_len} -timeout=20
              -rss_limit_mb=2048 -print_final_stats=1
              -artifact_prefix=${TESSUMA_FUZZ_WORK}/${name}-
              ${TESSUMA_FUZZ_WORK}/${name} ${CMAKE_SOURCE_DIR}/fuzz/corpus/${name})
    set_tests_properties(fuzz/${name} PROPERTIES ENVIRONMENT "${env}" TIMEOUT 300)

    # Inputs that once broke the game are replayed one by one.
    file(GLOB regressions CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/fuzz/regressions/${name}/*)
    if(regressions)
      add_test(NAME fuzz/${name}/regressions COMMAND ${target} -timeout=20 ${regressions})
      set_tests_properties(fuzz/${name}/regressions PROPERTIES ENVIRONMENT "${env}" TIMEOUT 300)
    endif()
  endforeach()
endif()
