# CPack makes three Debian packages: the library, the development files and jobx.
# Configure with the preset "package", which sets their prefix.
set(JOBX_PACKAGE_MAINTAINER
    "The JOBXCLSDLL authors <jobx@example.org>"
    CACHE STRING "Maintainer of the Debian packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME jobxclsdll)
set(CPACK_PACKAGE_VENDOR "The JOBXCLSDLL authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # it would come before the descriptions of the packages
set(CPACK_PACKAGE_CONTACT ${JOBX_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)

set(library libjobxclsdll${PROJECT_VERSION_MAJOR})
set(about
    "An ODB++ job is a directory tree of text files that takes a circuit board from
its design tool to its manufacturer.")
set(CPACK_COMPONENTS_ALL library development)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "library that reads, changes and writes ODB++ jobs
${about}

This package contains the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libjobxclsdll-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "library that reads, changes and writes ODB++ jobs (development files)
${about}

This package contains the headers, the CMake package and the pkg-config file.")

if(JOBX_BUILD_APP)
  list(APPEND CPACK_COMPONENTS_ALL jobx)
  set(CPACK_DEBIAN_JOBX_PACKAGE_NAME jobx)
  set(CPACK_DEBIAN_JOBX_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_JOBX_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_JOBX_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
  set(CPACK_COMPONENT_JOBX_DESCRIPTION "program that shows, compares and writes ODB++ jobs
${about}

jobx prints what is in a job as a summary, as tables or as JSON, compares two
jobs, and writes jobs.")
endif()

# Adds the files that Debian requires of every package.
configure_file(${PROJECT_SOURCE_DIR}/packaging/changelog.in ${PROJECT_BINARY_DIR}/packaging/changelog @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/JobxDebianFiles.cmake)
set(CPACK_JOBX_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_JOBX_CHANGELOG ${PROJECT_BINARY_DIR}/packaging/changelog)

include(CPack)
