# One call per room, test program and benchmark, so that the lists of files are all a reader sees.

# mixdecks_room(NAME SOURCES … PORTABLE … WINDOWS … DEPENDS …)
# A room's static library `mixdecks_NAME`. PORTABLE adapters are built everywhere but on Windows,
# WINDOWS adapters there alone.
function(mixdecks_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;PORTABLE;WINDOWS;DEPENDS;WINDOWS_LIBRARIES" ${ARGN})
  add_library(mixdecks_${name} STATIC ${ROOM_SOURCES})
  if(WIN32)
    target_sources(mixdecks_${name} PRIVATE ${ROOM_WINDOWS})
    target_link_libraries(mixdecks_${name} PUBLIC ${ROOM_WINDOWS_LIBRARIES})
  else()
    target_sources(mixdecks_${name} PRIVATE ${ROOM_PORTABLE})
  endif()
  target_link_libraries(mixdecks_${name} PUBLIC mixdecks_options ${ROOM_DEPENDS})
endfunction()

# At -O1, g++ 12 takes the concatenation of strings for a write out of bounds.
set(MIXDECKS_TEST_OPTIONS -O1 -g1
  $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds> $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>)

# mixdecks_test(NAME SOURCES … DEPENDS … [TIMEOUT seconds] [LABELS …] [OPTIMISED])
# A test program `test_NAME` and its CTest entry. Programs are few and large on purpose: under an
# emulator starting one costs more than its tests. Compiling tests takes longer than running them,
# so they are optimised little, but for those with much to compute.
function(mixdecks_test name)
  cmake_parse_arguments(TEST "OPTIMISED" "TIMEOUT" "SOURCES;DEPENDS;LABELS" ${ARGN})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 600)
  endif()
  add_executable(test_${name} ${TEST_SOURCES})
  target_include_directories(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(test_${name} PRIVATE ${TEST_DEPENDS} mixdecks_options GTest::gmock GTest::gtest_main)
  if(NOT TEST_OPTIMISED)
    target_compile_options(test_${name} PRIVATE ${MIXDECKS_TEST_OPTIONS})
    target_precompile_headers(test_${name} REUSE_FROM mixdecks_test_headers)
  endif()
  add_test(NAME ${name} COMMAND test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${TEST_TIMEOUT})
  if(TEST_LABELS)
    set_tests_properties(${name} PROPERTIES LABELS "${TEST_LABELS}")
  endif()
endfunction()

# mixdecks_benchmark(NAME SOURCES … DEPENDS …): a Google Benchmark program `bench_NAME`.
function(mixdecks_benchmark name)
  cmake_parse_arguments(BENCH "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(bench_${name} ${BENCH_SOURCES})
  target_include_directories(bench_${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(bench_${name} PRIVATE ${BENCH_DEPENDS} mixdecks_options benchmark::benchmark_main)
endfunction()
