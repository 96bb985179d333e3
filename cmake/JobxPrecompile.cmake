# jobx_compile_alone(SOURCES...): excludes sources from unity builds (CMAKE_UNITY_BUILD) because names in their unnamed
# namespaces clash with those of other sources.
macro(jobx_compile_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endmacro()

# jobx_precompile(TARGET HEADERS...): precompiles the headers that most of the target's sources include. This only saves
# time: every source still includes what it needs, and the clang-tidy preset compiles without precompiled headers.
function(jobx_precompile target)
  if(JOBX_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
