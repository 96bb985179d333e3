# jobx_precompile(TARGET HEADERS...): compiles the headers that most of the target's sources include once, not in each. Only
# about time: every source still names what it needs, and the clang-tidy preset compiles them without this.
function(jobx_precompile target)
  if(JOBX_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
