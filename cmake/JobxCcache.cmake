# Compiles through ccache if it is installed and this is the top-level project.
find_program(JOBX_CCACHE ccache)
if(PROJECT_IS_TOP_LEVEL AND JOBX_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${JOBX_CCACHE})
endif()
