# Configures the project with BUILD_TESTING off, as packagers do, and fails when that build has tests or looks for the
# test framework.
file(REMOVE_RECURSE ${BINARY})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BINARY} -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
                        -DBUILD_TESTING=OFF
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${BINARY}/CMakeCache.txt tests REGEX "^JOBX_BUILD_TESTS:BOOL=")
if(NOT tests STREQUAL "JOBX_BUILD_TESTS:BOOL=OFF" OR EXISTS ${BINARY}/tests)
  message(FATAL_ERROR "BUILD_TESTING=OFF gives ${tests}")
endif()
