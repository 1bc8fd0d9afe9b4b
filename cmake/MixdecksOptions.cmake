# What every target of the project is compiled with.

option(MIXDECKS_TESTS "Build the tests" ON)
option(MIXDECKS_BENCHMARKS "Build the benchmarks" OFF)
set(MIXDECKS_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(MIXDECKS_CCACHE ccache)
if(MIXDECKS_CCACHE)
  # Another checkout's objects serve as well as this one's, precompiled headers included.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
    "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    "${MIXDECKS_CCACHE}")
endif()

add_library(mixdecks_options INTERFACE)
target_include_directories(mixdecks_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(mixdecks_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Werror
  # Paths of the building machine have no place in a shipped file.
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=")

if(MIXDECKS_SANITIZE)
  target_compile_options(mixdecks_options INTERFACE
    "-fsanitize=${MIXDECKS_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(mixdecks_options INTERFACE "-fsanitize=${MIXDECKS_SANITIZE}")
endif()

if(WIN32)
  target_compile_definitions(mixdecks_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
  # One file runs on any Windows: the compiler's runtime is linked in.
  target_link_options(mixdecks_options INTERFACE -static)
else()
  find_package(Threads REQUIRED)
  target_link_libraries(mixdecks_options INTERFACE Threads::Threads)
endif()
