# The zip for Windows: `cpack --preset windows` or `make package`. With the licence of everything
# that is linked into its programs.
install(TARGETS TelvoDll RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(TARGETS telvo telvo-camera RUNTIME DESTINATION bin)
install(FILES ${PROJECT_SOURCE_DIR}/src/api/TelvoDll.def DESTINATION lib)
install(FILES ${PROJECT_SOURCE_DIR}/include/TelvoDll.h DESTINATION include)
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION .)

function(licence name file)
  install(FILES ${file} DESTINATION licences RENAME ${name}.txt)
endfunction()

set(debian /usr/share/doc)
set(sources ${PROJECT_SOURCE_DIR}/build/windows-libraries)
licence(Telvo ${PROJECT_SOURCE_DIR}/LICENSE)
licence(pugixml ${sources}/pugixml/LICENSE.md)
licence(minizip ${sources}/minizip/MiniZip64_info.txt)
licence(libpng ${sources}/libpng/LICENSE)
licence(zlib ${debian}/libz-mingw-w64-dev/copyright)
licence(CLI11 ${debian}/libcli11-dev/copyright)
licence(mingw-w64 ${debian}/mingw-w64-x86-64-dev/copyright)
licence(gcc-runtime ${debian}/gcc-mingw-w64-base/copyright) # names the exception for linked programs
licence(GPL-3 /usr/share/common-licenses/GPL-3)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME TelvoDll-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # the tests are not needed
include(CPack)
