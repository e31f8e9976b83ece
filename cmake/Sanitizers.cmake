# TELVO_SANITIZE is a list for -fsanitize=, such as "address,undefined" or "thread".
set(TELVO_SANITIZE "" CACHE STRING "Sanitizers for every target")
if(TELVO_SANITIZE)
  add_compile_options(-fsanitize=${TELVO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TELVO_SANITIZE})
endif()

# telvo_builds_slowly(): for a folder whose programs include much of others' header-only code, which
# takes minutes to optimise with sanitizers in it, and as long again for the checks of every pointer
# that is used. One that is null or points nowhere is found there by the address sanitizer.
macro(telvo_builds_slowly)
  if(TELVO_SANITIZE)
    add_compile_options(-O0 -fno-sanitize=null,alignment,object-size,vptr)
  endif()
endmacro()
