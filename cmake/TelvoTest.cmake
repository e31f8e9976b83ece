# telvo_test(NAME sources... [PURE | OWN_NETWORK] [LINKS targets...] [PROPERTIES ctest-properties...])
# One GoogleTest program; every test case is a test of ctest's. With PURE it uses no socket, thread or
# device, and has that label (ctest -L pure). With OWN_NETWORK each case runs in a network namespace
# of its own. Where a program starts slowly, the whole of it is one test: cross-compiled, under Wine,
# which has a network of its own anyway; with sanitizers, if it needs none.
add_compile_options(-O0) # what is tested is optimised; the tests build faster
telvo_builds_slowly()
if(CMAKE_CROSSCOMPILING)
  add_link_options(-fno-use-linker-plugin -B${CMAKE_CURRENT_LIST_DIR}/lld)
  set(INSTALL_GTEST OFF)
  # Debian's package of the sources.
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
else()
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()

# GCC 12 takes sums of std::string for overflows once it optimises.
add_library(telvo_test_warnings INTERFACE)
target_link_libraries(telvo_test_warnings INTERFACE telvo_warnings)
target_compile_options(telvo_test_warnings INTERFACE
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-stringop-overflow -Wno-array-bounds>)

# GoogleTest's headers, parsed once for all test programs.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/empty_main.cpp CONTENT "int main() {}\n")
add_executable(telvo_test_headers ${PROJECT_BINARY_DIR}/empty_main.cpp)
target_link_libraries(telvo_test_headers PRIVATE GTest::gtest GTest::gmock telvo_test_warnings)
target_precompile_headers(telvo_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)

function(telvo_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "PURE;OWN_NETWORK" "" "LINKS;PROPERTIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gtest GTest::gmock GTest::gtest_main
                        telvo_test_warnings)
  target_precompile_headers(${name} REUSE_FROM telvo_test_headers)
  telvo_join(${name})
  if(arg_PURE)
    list(APPEND arg_PROPERTIES LABELS pure)
    if(NOT TELVO_PURE_TESTS)
      set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
      return()
    endif()
  endif()
  if(CMAKE_CROSSCOMPILING OR (TELVO_SANITIZE AND NOT arg_OWN_NETWORK))
    add_test(NAME ${name} COMMAND ${name})
    if(arg_PROPERTIES)
      set_tests_properties(${name} PROPERTIES ${arg_PROPERTIES})
    endif()
    return()
  endif()
  if(arg_OWN_NETWORK)
    set_target_properties(${name} PROPERTIES
      CROSSCOMPILING_EMULATOR ${PROJECT_SOURCE_DIR}/scripts/in-own-network.sh)
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES
                       PROPERTIES ${arg_PROPERTIES})
endfunction()
