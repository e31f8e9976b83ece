# telvo_layer(NAME folder-local-sources... [LINKS targets...])
# One static library for one folder: warnings are errors, and the folder is its only include path,
# so that a header of a layer it does not link to cannot be included.
find_package(Threads REQUIRED)

add_library(telvo_warnings INTERFACE)
target_compile_options(telvo_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor>
  $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
  # GCC 12 takes empty std::optional values for uninitialised ones once it optimises.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)

# The standard headers that most sources include, parsed once for all layers. A source still includes
# what it uses: `make lint` compiles without these.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/empty.cpp CONTENT "")
add_library(telvo_standard_headers STATIC ${CMAKE_BINARY_DIR}/empty.cpp)
target_link_libraries(telvo_standard_headers PRIVATE telvo_warnings)
target_precompile_headers(telvo_standard_headers PRIVATE
  <algorithm> <array> <atomic> <chrono> <cstdint> <functional> <map> <memory> <mutex> <optional>
  <span> <string> <thread> <vector>)

function(telvo_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
  add_library(${name} STATIC ${arg_UNPARSED_ARGUMENTS})
  get_directory_property(folder_options COMPILE_OPTIONS)
  if(NOT -O0 IN_LIST folder_options) # they were parsed for optimised sources
    target_precompile_headers(${name} REUSE_FROM telvo_standard_headers)
  endif()
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE telvo_warnings)
endfunction()

# telvo_headers(NAME [LINKS targets...]): a folder of headers only.
function(telvo_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
  add_library(${name} INTERFACE)
  target_include_directories(${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} INTERFACE ${arg_LINKS})
endfunction()
