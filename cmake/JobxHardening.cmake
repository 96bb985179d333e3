# jobx_harden(TARGET): options that make mistakes in our code harder to exploit, in all our builds. Only optimised builds
# have the checked string functions.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

function(jobx_harden target)
  if(MSVC)
    return() # /GS, /DYNAMICBASE and /NXCOMPAT are the defaults
  endif()
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -fstack-protector-strong
                                           $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    target_link_options(${target} PRIVATE LINKER:-z,relro,-z,now)
  endif()
endfunction()
