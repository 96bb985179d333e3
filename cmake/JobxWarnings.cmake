# jobx_warnings(TARGET): turns on the warnings from which our code is free.
function(jobx_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${JOBX_WERROR}>:/WX>)
  else()
    target_compile_options(
      ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${JOBX_WERROR}>:-Werror>)
    # With optimisation, g++ 12 warns about string concatenation in its own library.
    target_compile_options(${target}
                           PRIVATE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
    # g++ takes a source that another one includes for a header, where types of unnamed namespaces deserve a warning.
    target_compile_options(
      ${target}
      PRIVATE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>>:-Wno-subobject-linkage>)
  endif()
endfunction()
