# The same libraries for Windows, from the sources that scripts/windows-libraries.sh fetches. zlib
# comes as Debian's libz-mingw-w64-dev; CLI11, nlohmann-json and Boost are headers only.
set(sources ${PROJECT_SOURCE_DIR}/build/windows-libraries)
if(NOT EXISTS ${sources}/libjpeg)
  message(FATAL_ERROR "Run scripts/windows-libraries.sh first.")
endif()
find_library(zlib_archive NAMES libz.a REQUIRED)

add_library(telvo_pugixml STATIC ${sources}/pugixml/src/pugixml.cpp)
target_include_directories(telvo_pugixml SYSTEM PUBLIC ${sources}/pugixml/src)

# The library's headers are included as <minizip/unzip.h>, as where it is installed.
add_library(telvo_minizip STATIC ${sources}/minizip/unzip.c ${sources}/minizip/zip.c
            ${sources}/minizip/ioapi.c)
target_include_directories(telvo_minizip SYSTEM PUBLIC ${sources})
target_link_libraries(telvo_minizip PUBLIC ${zlib_archive})

file(GLOB png_sources ${sources}/libpng/png*.c)
list(FILTER png_sources EXCLUDE REGEX "pngtest.c$")
configure_file(${sources}/libpng/scripts/pnglibconf.h.prebuilt
               ${PROJECT_BINARY_DIR}/libpng/pnglibconf.h COPYONLY)
add_library(telvo_png STATIC ${png_sources})
target_include_directories(telvo_png SYSTEM PUBLIC ${sources}/libpng ${PROJECT_BINARY_DIR}/libpng)
target_compile_definitions(telvo_png PRIVATE PNG_INTEL_SSE_OPT=0)
target_link_libraries(telvo_png PUBLIC ${zlib_archive})

# By hand: its own build wants to be a project of its own. Without its assembly, for which there is
# no assembler.
set(JPEG_LIB_VERSION 62)
set(LIBJPEG_TURBO_VERSION_NUMBER 2001005)
set(VERSION 2.1.5)
set(BITS_IN_JSAMPLE 8)
set(MEM_SRCDST_SUPPORTED 1)
set(BUILD 0)
set(INLINE inline)
set(THREAD_LOCAL __thread)
set(SIZE_T 8)
set(COPYRIGHT_YEAR 1991-2023)
foreach(header jconfig.h jconfigint.h jversion.h)
  configure_file(${sources}/libjpeg/${header}.in ${PROJECT_BINARY_DIR}/libjpeg/${header})
endforeach()
foreach(name jcapimin jcapistd jccoefct jccolor jcdctmgr jchuff jcicc jcinit jcmainct jcmarker
             jcmaster jcomapi jcparam jcphuff jcprepct jcsample jctrans jdapimin jdapistd jdatadst
             jdatasrc jdcoefct jdcolor jddctmgr jdhuff jdicc jdinput jdmainct jdmarker jdmaster
             jdmerge jdphuff jdpostct jdsample jdtrans jerror jfdctflt jfdctfst jfdctint jidctflt
             jidctfst jidctint jidctred jquant1 jquant2 jutils jmemmgr jmemnobs jsimd_none)
  list(APPEND jpeg_sources ${sources}/libjpeg/${name}.c)
endforeach()
add_library(telvo_jpeg STATIC ${jpeg_sources})
target_include_directories(telvo_jpeg SYSTEM PUBLIC ${sources}/libjpeg
                                                    ${PROJECT_BINARY_DIR}/libjpeg)
target_compile_options(telvo_jpeg PRIVATE -w)

# By its own build: pages that are not compressed need none of the other libraries.
set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
set(BUILD_SHARED_LIBS OFF)
foreach(option tiff-tools tiff-tests tiff-contrib tiff-docs cxx ccitt packbits lzw thunder next
        logluv mdi zlib libdeflate pixarlog jpeg old-jpeg jpeg12 lerc jbig lzma zstd webp)
  set(${option} OFF)
endforeach()
add_subdirectory(${sources}/libtiff ${PROJECT_BINARY_DIR}/libtiff EXCLUDE_FROM_ALL)
add_library(telvo_tiff INTERFACE)
target_link_libraries(telvo_tiff INTERFACE tiff)

# Not all of /usr/include: only these out of it are meant for another system.
file(COPY /usr/include/CLI DESTINATION ${PROJECT_BINARY_DIR}/cli11)
add_library(telvo_cli11 INTERFACE)
target_include_directories(telvo_cli11 SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/cli11)
file(COPY /usr/include/nlohmann DESTINATION ${PROJECT_BINARY_DIR}/json)
add_library(telvo_json INTERFACE)
target_include_directories(telvo_json SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/json)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/boost)
file(CREATE_LINK /usr/include/boost ${PROJECT_BINARY_DIR}/boost/boost SYMBOLIC) # 150 MB
add_library(telvo_asio INTERFACE)
target_include_directories(telvo_asio SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/boost)
target_link_libraries(telvo_asio INTERFACE ws2_32 mswsock)
