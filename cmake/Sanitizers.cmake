# TELVO_SANITIZE is a list for -fsanitize=, such as "address,undefined" or "thread".
set(TELVO_SANITIZE "" CACHE STRING "Sanitizers for every target")
if(TELVO_SANITIZE)
  add_compile_options(-fsanitize=${TELVO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TELVO_SANITIZE})
endif()
