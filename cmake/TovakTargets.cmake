# Settings every target of the project shares, applied per target.
function(tovak_configure_target target)
  target_compile_features(${target} PRIVATE cxx_std_17)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic
                         $<$<BOOL:${TOVAK_WARNINGS_AS_ERRORS}>:-Werror>)
  tovak_harden(${target})
  tovak_instrument(${target})
endfunction()

# Debian's hardening, on by default: a stack protector, checked string and memory calls in
# optimised builds (where the checks work, and not under a sanitizer, which has its own),
# format strings that cannot be data, and relocations resolved and made read-only at load.
function(tovak_harden target)
  target_compile_options(${target} PRIVATE -fstack-protector-strong -Wformat
                         -Werror=format-security)
  if(NOT TOVAK_SANITIZE AND NOT TOVAK_BUILD_FUZZER)
    target_compile_definitions(${target} PRIVATE
      $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:_FORTIFY_SOURCE=2>)
  endif()
  target_link_options(${target} PRIVATE "LINKER:-z,relro,-z,now")
endfunction()

# Sanitizers (and the fuzzer's coverage hooks) go on every target, the library's objects and
# every program that loads them, so that one runtime sees all of the code.
function(tovak_instrument target)
  if(TOVAK_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${TOVAK_SANITIZE}
                           -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # Bounds-checked standard containers: an index one past the end aborts there too.
    target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
    target_link_options(${target} PRIVATE -fsanitize=${TOVAK_SANITIZE})
  endif()
  if(TOVAK_BUILD_FUZZER)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# Puts a program into the shared output directory, beside the library and the stand-in tool.
function(tovak_put_in_bin target)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${TOVAK_BIN_DIR}"
                                             LIBRARY_OUTPUT_DIRECTORY "${TOVAK_BIN_DIR}")
endfunction()
