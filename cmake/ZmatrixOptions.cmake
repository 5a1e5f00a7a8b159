# Warnings and sanitizers, asked for by the presets and never handed on to a user's own targets.
add_library(zmatrix_options INTERFACE)
if(ZMATRIX_WARNINGS)
  target_compile_options(zmatrix_options INTERFACE -Wall -Wextra -Wshadow)
endif()
if(ZMATRIX_SANITIZE)
  target_compile_options(zmatrix_options INTERFACE -fsanitize=${ZMATRIX_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=undefined)
  target_link_options(zmatrix_options INTERFACE -fsanitize=${ZMATRIX_SANITIZE})
endif()
