# Writes a C++ source with the bytes of every file of a folder, so that they are part of the program.
#   cmake -D FOLDER=... -D OUTPUT=... -P EmbedFiles.cmake
cmake_minimum_required(VERSION 3.25)

set(types
  css "text/css"
  html "text/html"
  ico "image/x-icon"
  js "text/javascript"
  json "application/json"
  png "image/png"
  svg "image/svg+xml")

function(type_of name result)
  cmake_path(GET name EXTENSION LAST_ONLY extension)
  string(SUBSTRING "${extension}" 1 -1 extension)
  list(FIND types "${extension}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "${name}: a page's file of this kind has no content type here")
  endif()
  math(EXPR place "${place} + 1")
  list(GET types ${place} type)
  if(type MATCHES "^text/")
    string(APPEND type "; charset=utf-8")
  endif()
  set(${result} "${type}" PARENT_SCOPE)
endfunction()

file(GLOB names RELATIVE ${FOLDER} ${FOLDER}/*)
list(SORT names)
set(arrays "")
set(rows "")
set(number 0)
foreach(name IN LISTS names)
  file(READ ${FOLDER}/${name} bytes HEX)
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
  type_of(${name} type)
  string(APPEND arrays "constexpr char kBytes${number}[] = {${bytes}'\\0'};\n")
  string(APPEND rows
         "    {\"${name}\", \"${type}\", {kBytes${number}, sizeof kBytes${number} - 1}},\n")
  math(EXPR number "${number} + 1")
endforeach()

file(WRITE ${OUTPUT} "#include \"PageFiles.h\"

namespace telvo
{

namespace
{

${arrays}
constexpr PageFile kFiles[] = {
${rows}};

} // namespace

std::span<const PageFile> pageFiles()
{
    return kFiles;
}

} // namespace telvo
")
