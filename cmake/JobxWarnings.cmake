# jobx_warnings(TARGET): the warnings that our own code compiles without.
function(jobx_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${JOBX_WERROR}>:/WX>)
  else()
    target_compile_options(
      ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${JOBX_WERROR}>:-Werror>)
    # g++ 12 warns of its own library's string concatenation as soon as it optimises.
    target_compile_options(${target}
                           PRIVATE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
  endif()
endfunction()
