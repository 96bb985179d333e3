# jobx_compile_alone(SOURCES...): sources with names in their unnamed namespaces that others have as well. Where sources are
# compiled several at once, CMAKE_UNITY_BUILD, these are not.
macro(jobx_compile_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endmacro()

# jobx_precompile(TARGET HEADERS...): compiles the headers that most of the target's sources include once, not in each. Only
# about time: every source still names what it needs, and the clang-tidy preset compiles them without this.
function(jobx_precompile target)
  if(JOBX_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
