# Settings every target of the project shares, applied per target.
function(tovak_configure_target target)
  target_compile_features(${target} PRIVATE cxx_std_17)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic
                         $<$<BOOL:${TOVAK_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()

# Puts a program into the shared output directory, beside the library and the stand-in tool.
function(tovak_put_in_bin target)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${TOVAK_BIN_DIR}"
                                             LIBRARY_OUTPUT_DIRECTORY "${TOVAK_BIN_DIR}")
endfunction()
