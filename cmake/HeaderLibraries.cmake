# Header-only libraries for tools, simulator and tests; the plug-in itself links none of them.
#
# The cross compiler must not see the whole of the system's include directory, so the libraries'
# folders are linked into one directory of the build tree that serves every compiler alike.

set(MIXDECKS_HEADERS "${PROJECT_BINARY_DIR}/header-libraries")
file(MAKE_DIRECTORY "${MIXDECKS_HEADERS}")

function(mixdecks_header_library target folder)
  find_path(MIXDECKS_${folder}_ROOT NAMES "${folder}"
    PATHS /usr/include /usr/local/include NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(CREATE_LINK "${MIXDECKS_${folder}_ROOT}/${folder}" "${MIXDECKS_HEADERS}/${folder}" SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE "${MIXDECKS_HEADERS}")
endfunction()

mixdecks_header_library(headers::json nlohmann)
mixdecks_header_library(headers::cli CLI)
mixdecks_header_library(headers::stb stb)
mixdecks_header_library(headers::fmt fmt)

# The exception: its functions are compiled, once for all. Link this, not its headers alone.
add_library(mixdecks_fmt STATIC "${CMAKE_CURRENT_LIST_DIR}/fmt_functions.cpp")
target_link_libraries(mixdecks_fmt PUBLIC headers::fmt PRIVATE mixdecks_options)
