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

function(telvo_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
  add_library(${name} STATIC ${arg_UNPARSED_ARGUMENTS})
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
