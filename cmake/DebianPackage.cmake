# Debian packages: `cpack --preset release` or `make deb`. Library, what hosts are built with, and
# programs, each with its debug symbols in a package of its own.
set(soname_version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL library development tools)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CPACK_PACKAGE_CONTACT "Telvo engineering <engineering@telvo.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# The programs' dependency on the library is named below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)

function(telvo_debian_package component name section)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  foreach(file copyright changelog.gz)
    install(FILES ${PROJECT_BINARY_DIR}/debian/${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name}
            COMPONENT ${component} EXCLUDE_FROM_ALL) # `cmake --install` brings the licences itself
  endforeach()
endfunction()

telvo_debian_package(library libtelvodll${soname_version} libs)
telvo_debian_package(development libtelvodll-dev libdevel)
telvo_debian_package(tools telvo-tools science)

set(library_package "libtelvodll${soname_version} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${library_package})
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "control of high-speed GigE Vision cameras - library
 The shared library that hosts are linked to: live images, recordings and
 their readout through plain C functions, on a GigE Vision stack of its own.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "control of high-speed GigE Vision cameras - development
 Header, CMake package and pkg-config file for those who write a host.")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "control of high-speed GigE Vision cameras - programs
 telvo, a host at the command line, and telvo-camera, a virtual camera that
 speaks GigE Vision.")

file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/debian)
execute_process(
  COMMAND cat ${PROJECT_SOURCE_DIR}/LICENSE ${TELVO_THIRD_PARTY_LICENCES}
  OUTPUT_FILE ${PROJECT_BINARY_DIR}/debian/copyright COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND ${CMAKE_CURRENT_LIST_DIR}/debian/changelog.sh ${PROJECT_VERSION}
          ${PROJECT_BINARY_DIR}/debian/changelog.gz
  COMMAND_ERROR_IS_FATAL ANY)
include(CPack)
