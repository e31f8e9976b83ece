# Libraries of others, by the names that the targets link to:
# telvo_pugixml, telvo_minizip (the library and the camera), telvo_png, telvo_tiff, telvo_jpeg,
# telvo_json, telvo_cli11, telvo_asio (the tools), and on Linux telvo_libav (videos).
# What the shared library needs is linked statically, so that a host ships one file.
if(CMAKE_CROSSCOMPILING)
  include(ThirdPartyFromSource)
else()
  find_package(ZLIB REQUIRED)
  find_library(pugixml_archive NAMES libpugixml.a REQUIRED)
  find_library(minizip_archive NAMES libminizip.a REQUIRED)

  add_library(telvo_pugixml INTERFACE)
  target_link_libraries(telvo_pugixml INTERFACE ${pugixml_archive})
  # A target, not a mere file, so that zlib always comes behind it. Debian's static zlib is not
  # position-independent.
  add_library(telvo_minizip STATIC IMPORTED GLOBAL)
  set_target_properties(telvo_minizip PROPERTIES IMPORTED_LOCATION ${minizip_archive}
                        INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)
  if(TELVO_TOOLS)
    find_package(PNG REQUIRED)
    find_package(TIFF REQUIRED)
    find_package(JPEG REQUIRED)
    find_package(Boost 1.74 REQUIRED)
    find_package(nlohmann_json REQUIRED)
    find_package(CLI11 REQUIRED)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(libav REQUIRED IMPORTED_TARGET libavformat libavcodec libswscale libavutil)
    add_library(telvo_png ALIAS PNG::PNG)
    add_library(telvo_tiff ALIAS TIFF::TIFF)
    add_library(telvo_json ALIAS nlohmann_json::nlohmann_json)
    add_library(telvo_libav ALIAS PkgConfig::libav)
    add_library(telvo_cli11 ALIAS CLI11::CLI11)
    add_library(telvo_jpeg ALIAS JPEG::JPEG)
    add_library(telvo_asio INTERFACE)
    target_link_libraries(telvo_asio INTERFACE Boost::headers Threads::Threads)
  endif()
endif()
if(TARGET telvo_asio) # what of it is no template is compiled once
  target_compile_definitions(telvo_asio INTERFACE
    BOOST_ASIO_SEPARATE_COMPILATION BOOST_BEAST_SEPARATE_COMPILATION BOOST_ASIO_NO_DEPRECATED)
  # The thread sanitizer knows no fences; those are beside locks, and not needed then.
  if(TELVO_SANITIZE STREQUAL thread)
    target_compile_definitions(telvo_asio INTERFACE BOOST_ASIO_DISABLE_FENCED_BLOCK)
  endif()
endif()
