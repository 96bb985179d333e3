# jobx_harden(TARGET): what makes a mistake in our code harder to take advantage of, in every build of ours. The checked
# string functions come with optimisation only.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

function(jobx_harden target)
  if(MSVC)
    return() # /GS, /DYNAMICBASE and /NXCOMPAT are its defaults
  endif()
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -fstack-protector-strong
                                           $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    target_link_options(${target} PRIVATE LINKER:-z,relro,-z,now)
  endif()
endfunction()
