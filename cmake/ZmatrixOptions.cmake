# Warnings and sanitizers, asked for by the presets and never handed on to a user's own targets.
add_library(zmatrix_options INTERFACE)
if(ZMATRIX_WARNINGS)
  target_compile_options(zmatrix_options INTERFACE -Wall -Wextra -Wshadow -Wformat=2 -Wconversion)
  # In C++ only clang counts a change of sign among the conversions.
  target_compile_options(zmatrix_options INTERFACE -Wno-sign-conversion)
endif()
if(ZMATRIX_WARNINGS_AS_ERRORS)
  target_compile_options(zmatrix_options INTERFACE -Werror)
endif()
if(ZMATRIX_SANITIZE)
  target_compile_options(zmatrix_options INTERFACE -fsanitize=${ZMATRIX_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=undefined)
  target_link_options(zmatrix_options INTERFACE -fsanitize=${ZMATRIX_SANITIZE})
  target_compile_definitions(zmatrix_options INTERFACE ZMATRIX_ASSERTIONS)
endif()

# A compiler cache where there is one: a developer builds the same files in several folders.
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(ZMATRIX_CCACHE ccache)
  if(ZMATRIX_CCACHE)
    set(CMAKE_C_COMPILER_LAUNCHER ${ZMATRIX_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ZMATRIX_CCACHE})
  endif()
endif()
