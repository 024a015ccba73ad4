# Reads the built library with the toolchain's own tools: one exported function, and on Windows an
# image that may be placed anywhere and whose data never runs.
cmake_minimum_required(VERSION 3.25)

function(output_of variable)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} "${output}" PARENT_SCOPE)
endfunction()

if(LIBRARY MATCHES "\\.dll$")
  output_of(headers ${OBJDUMP} -p ${LIBRARY})
  foreach(flag HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT)
    if(NOT headers MATCHES "[ \t]${flag}")
      message(SEND_ERROR "${LIBRARY} lacks ${flag}")
    endif()
  endforeach()
  string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table.*" names "${headers}")
  string(REGEX MATCHALL "\n[ \t]*\\[ *[0-9]+\\][^\n]*" names "${names}")
else()
  output_of(names ${NM} --dynamic --defined-only --format=posix ${LIBRARY})
  string(REGEX MATCHALL "[^\n]+" names "${names}")
endif()

list(LENGTH names count)
if(NOT count EQUAL 1 OR NOT names MATCHES "(^|[ \t\n])GetTarnex($|[ \t\n])")
  message(SEND_ERROR "${LIBRARY} exports ${count} names:\n${names}")
endif()
