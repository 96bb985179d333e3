# The rules of `cmake --install` for the library, its headers, its CMake package and pkg-config file, and jobx with its
# manual page and completion. The installed tree may be moved as a whole.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(JOBX_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/JOBXCLSDLL)

# The headers have a separate folder, because they include each other by names such as "job/CJOBX.h".
install(
  TARGETS JOBXCLSDLL
  EXPORT JOBXCLSDLLTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          COMPONENT library
          NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  FILE_SET HEADERS
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/JOBXCLSDLL
  COMPONENT development)

# CMake package: find_package(JOBXCLSDLL)
install(
  EXPORT JOBXCLSDLLTargets
  NAMESPACE JOBXCLSDLL::
  DESTINATION ${JOBX_INSTALL_CMAKEDIR}
  COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/JOBXCLSDLLConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/JOBXCLSDLLConfig.cmake INSTALL_DESTINATION ${JOBX_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/JOBXCLSDLLConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/JOBXCLSDLLConfig.cmake ${PROJECT_BINARY_DIR}/JOBXCLSDLLConfigVersion.cmake
  DESTINATION ${JOBX_INSTALL_CMAKEDIR}
  COMPONENT development)

# pkg-config; its paths are relative to the file itself, unless absolute ones were requested.
file(RELATIVE_PATH JOBX_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" JOBX_PC_TO_PREFIX ${JOBX_PC_TO_PREFIX})
set(JOBX_PC_INCLUDEDIR "\${prefix}")
cmake_path(APPEND JOBX_PC_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR} JOBXCLSDLL)
set(JOBX_PC_LIBDIR "\${prefix}")
cmake_path(APPEND JOBX_PC_LIBDIR ${CMAKE_INSTALL_LIBDIR})
configure_file(${CMAKE_CURRENT_LIST_DIR}/jobxclsdll.pc.in ${PROJECT_BINARY_DIR}/jobxclsdll.pc @ONLY)
install(
  FILES ${PROJECT_BINARY_DIR}/jobxclsdll.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

install(
  FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        ${PROJECT_SOURCE_DIR}/SECURITY.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT development)
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/docs
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT development
  FILES_MATCHING
  PATTERN "*.md"
  PATTERN "*.json")
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/examples
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT development)

if(JOBX_BUILD_APP)
  install(TARGETS jobx RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT jobx)
  install(
    FILES ${PROJECT_SOURCE_DIR}/app/jobx.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
    COMPONENT jobx)
  install(
    FILES ${PROJECT_SOURCE_DIR}/app/jobx.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    RENAME jobx
    COMPONENT jobx)
  install(
    FILES ${PROJECT_SOURCE_DIR}/app/jobx.zsh
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
    RENAME _jobx
    COMPONENT jobx)
  install(
    FILES ${PROJECT_SOURCE_DIR}/app/jobx.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    COMPONENT jobx)
  # The installed program finds the library by a relative path.
  file(RELATIVE_PATH to_library ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  if(APPLE)
    set_property(TARGET jobx PROPERTY INSTALL_RPATH "@loader_path/${to_library}")
  else()
    set_property(TARGET jobx PROPERTY INSTALL_RPATH "$ORIGIN/${to_library}")
    # The build tree has the program in bin and the library in lib. If the build tree had a different path, CMake would pad
    # it with an empty entry, which the loader takes for the current directory.
    get_property(is_multi_config GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
    if(NOT is_multi_config)
      set(library_path "$ORIGIN/${to_library}" "$ORIGIN/../lib")
      list(REMOVE_DUPLICATES library_path)
      set_target_properties(jobx PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "${library_path}")
    endif()
  endif()
endif()
