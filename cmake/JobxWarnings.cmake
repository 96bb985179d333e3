# jobx_warnings(TARGET): the warnings that our own code compiles without.
function(jobx_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${JOBX_WERROR}>:/WX>)
  else()
    target_compile_options(
      ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${JOBX_WERROR}>:-Werror>)
  endif()
endfunction()
