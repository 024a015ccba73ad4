# Warnings are errors; alignment, sanitizers and module isolation apply to everything that is built here.
add_library(tarnex_options INTERFACE)
if(MSVC)
  target_compile_options(tarnex_options INTERFACE /W4 /WX /utf-8 /permissive-)
else()
  target_compile_options(tarnex_options INTERFACE -Wall -Wextra -Wpedantic -Werror
    -Wno-missing-field-initializers)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It takes a text literal joined to a temporary string for overlapping memory.
    target_compile_options(tarnex_options INTERFACE -Wno-restrict)
  endif()
  # How fast a loop is would depend on what happens to stand in front of its function.
  target_compile_options(tarnex_options INTERFACE "$<$<CONFIG:Release>:-falign-functions=64>")
endif()

if(WIN32)
  target_compile_definitions(tarnex_options INTERFACE UNICODE _UNICODE NOMINMAX
    WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
if(MINGW)
  # The other linker's defaults.
  target_link_options(tarnex_options INTERFACE -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
elseif(NOT WIN32)
  # Modules of one process must not merge their copies of the tracer, or stay loaded for them.
  # Programs export nothing anyway, and a sanitizer's runtime must stay visible in them, or it
  # does not take the place of the C library's allocation.
  target_link_options(tarnex_options INTERFACE
    "$<$<NOT:$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>>:-Wl,--exclude-libs,ALL>")
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tarnex_options INTERFACE -fno-gnu-unique)
  endif()
endif()

if(TARNEX_SANITIZE)
  target_compile_options(tarnex_options INTERFACE -fsanitize=${TARNEX_SANITIZE}
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tarnex_options INTERFACE -fsanitize=${TARNEX_SANITIZE})
  if(TARNEX_SANITIZE MATCHES undefined)
    # A host links nothing of the library, so it has no type information of the library's classes.
    target_compile_options(tarnex_options INTERFACE -fno-sanitize=vptr)
  endif()
endif()
