# The zip for Windows: `cpack --preset windows` or `make package`. With the licence of everything
# that is linked into its programs.
install(FILES ${PROJECT_SOURCE_DIR}/src/api/TelvoDll.def DESTINATION lib)
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION . PATTERN conf.py EXCLUDE)
install(CODE "execute_process(COMMAND \"${PROJECT_SOURCE_DIR}/scripts/docs.sh\" \"${PROJECT_BINARY_DIR}/docs\"
                              COMMAND_ERROR_IS_FATAL ANY)")
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION docs)

# What hosts built with other compilers are linked to; libTelvoDll.dll.a is GCC's.
set(import_library ${PROJECT_BINARY_DIR}/lib/TelvoDll.lib)
set(definition ${PROJECT_SOURCE_DIR}/src/api/TelvoDll.def)
add_custom_command(OUTPUT ${import_library} DEPENDS ${definition}
  COMMAND ${CMAKE_DLLTOOL} --input-def ${definition} --dllname TelvoDll.dll
          --output-lib ${import_library})
add_custom_target(TelvoDll_import_library ALL DEPENDS ${import_library})
install(FILES ${import_library} DESTINATION lib)

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
licence(libjpeg-turbo ${sources}/libjpeg/LICENSE.md)
licence(Boost ${debian}/libboost-dev/copyright)
licence(CLI11 ${debian}/libcli11-dev/copyright)
licence(mingw-w64 ${debian}/mingw-w64-x86-64-dev/copyright)
licence(gcc-runtime ${debian}/gcc-mingw-w64-base/copyright) # names the exception for linked programs
licence(GPL-3 /usr/share/common-licenses/GPL-3)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME TelvoDll-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # the tests are not needed
include(CPack)
