# Puts the shared C++ runtime beside the binaries, where Windows looks for it first.
if(MINGW)
  set(runtime_copies)
  foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
      OUTPUT_VARIABLE source OUTPUT_STRIP_TRAILING_WHITESPACE)
    set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${library})
    add_custom_command(OUTPUT ${copy} DEPENDS ${source} VERBATIM
      COMMAND ${CMAKE_COMMAND} -E copy ${source} ${copy})
    list(APPEND runtime_copies ${copy})
  endforeach()
  add_custom_target(tarnex_runtime ALL DEPENDS ${runtime_copies})
  add_dependencies(tarnex_options tarnex_runtime)
endif()
