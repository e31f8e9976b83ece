# What `cmake --install` brings: the library with header, CMake package and pkg-config file, the
# programs, the licence. All of it can be moved to another folder as a whole.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(cmake_package ${CMAKE_INSTALL_LIBDIR}/cmake/Telvo)
install(TARGETS TelvoDll EXPORT TelvoTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT development)

install(EXPORT TelvoTargets NAMESPACE Telvo:: DESTINATION ${cmake_package}
        COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/TelvoConfig.cmake.in TelvoConfig.cmake
                              INSTALL_DESTINATION ${cmake_package})
write_basic_package_version_file(TelvoConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TelvoConfig.cmake ${PROJECT_BINARY_DIR}/TelvoConfigVersion.cmake
        DESTINATION ${cmake_package} COMPONENT development)

# The pkg-config file names its folders from where it lies itself.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
           BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE to_prefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/telvo.pc.in telvo.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/telvo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

if(TELVO_TOOLS)
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_FULL_BINDIR}
             OUTPUT_VARIABLE to_library)
  set_target_properties(telvo PROPERTIES INSTALL_RPATH $ORIGIN/${to_library})
  install(TARGETS telvo telvo-camera RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  if(NOT CMAKE_CROSSCOMPILING AND NOT TELVO_SANITIZE)
    # The manual pages are made of the program's own help.
    set(man ${PROJECT_BINARY_DIR}/man)
    add_custom_command(
      OUTPUT ${man}/telvo.1.gz
      COMMAND ${CMAKE_COMMAND} -E rm -rf ${man}
      COMMAND telvo man --folder ${man}
      COMMAND gzip --best --no-name --recursive ${man}
      DEPENDS telvo)
    add_custom_target(telvo_man ALL DEPENDS ${man}/telvo.1.gz)
    install(DIRECTORY ${man}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  endif()
endif()

if(NOT WIN32) # the zip has a folder of its own for them
  # Of what is linked into the library and the programs.
  foreach(package libpugixml-dev libminizip-dev libcli11-dev libboost-dev)
    set(licence /usr/share/doc/${package}/copyright)
    if(EXISTS ${licence})
      list(APPEND TELVO_THIRD_PARTY_LICENCES ${licence})
      install(FILES ${licence} DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences RENAME ${package}
              COMPONENT licences)
    endif()
  endforeach()
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR}
          COMPONENT licences)
endif()
