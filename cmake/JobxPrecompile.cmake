# jobx_precompile(TARGET HEADERS...): precompiles the headers that most of the target's sources include. This only saves
# time: every source still includes what it needs, and the clang-tidy preset compiles without precompiled headers.
function(jobx_precompile target)
  if(JOBX_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
