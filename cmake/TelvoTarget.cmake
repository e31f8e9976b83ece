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
# what it uses: the thread sanitizer's build does without these.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/empty.cpp CONTENT "")
add_library(telvo_standard_headers STATIC ${CMAKE_BINARY_DIR}/empty.cpp)
target_link_libraries(telvo_standard_headers PRIVATE telvo_warnings)
target_precompile_headers(telvo_standard_headers PRIVATE
  <algorithm> <array> <atomic> <chrono> <cstdint> <functional> <map> <memory> <mutex> <optional>
  <span> <string> <thread> <vector>)

# Most of the compile time goes into headers that a source shares with its neighbours. For a build that
# is made once; to work on a source, leave it off. One of CI's builds does, too: a source has to stand
# alone, and a name that it lacks must not be found next door.
option(TELVO_JOIN_SOURCES "Compile several sources of a target as one" OFF)

# Joins the sources of a library or a test program. What a source keeps to itself then looks to the
# compiler as if a header did (a class whose members' types no other source knows), and GCC 12 takes more
# sums of std::string for overflows. Those for Windows stay alone: its header's macros are for them only.
function(telvo_join name)
  if(NOT TELVO_JOIN_SOURCES)
    return()
  endif()
  set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 10)
  target_compile_options(${name} PRIVATE -Wno-subobject-linkage -Wno-stringop-overflow -Wno-restrict)
  get_target_property(sources ${name} SOURCES)
  list(FILTER sources INCLUDE REGEX "Windows\\.cpp$")
  set_source_files_properties(${sources} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

function(telvo_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
  add_library(${name} STATIC ${arg_UNPARSED_ARGUMENTS})
  get_directory_property(folder_options COMPILE_OPTIONS)
  if(NOT -O0 IN_LIST folder_options) # they were parsed for optimised sources
    target_precompile_headers(${name} REUSE_FROM telvo_standard_headers)
  endif()
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE telvo_warnings)
  telvo_join(${name})
endfunction()

# telvo_headers(NAME [LINKS targets...]): a folder of headers only.
function(telvo_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
  add_library(${name} INTERFACE)
  target_include_directories(${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} INTERFACE ${arg_LINKS})
endfunction()
