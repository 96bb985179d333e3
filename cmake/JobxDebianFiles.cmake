# CPack runs this before it makes the packages, with the files of each package in a separate folder. It adds the copyright
# and the changelog, compresses the manual page, and removes the library search path from the program, which finds the
# library in the system's directories.

file(READ ${CPACK_JOBX_LICENSE} license)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)\n\n(.*)" found "${license}")
set(holder "${CMAKE_MATCH_1}")
string(STRIP "${CMAKE_MATCH_2}" terms)
string(REGEX REPLACE "\n\n" "\n.\n" terms "${terms}")
string(REGEX REPLACE "\n" "\n " terms "${terms}")
set(copyright
    "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: JOBXCLSDLL

Files: *
Copyright: ${holder}
License: Expat

License: Expat
 ${terms}
")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(docs ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  file(MAKE_DIRECTORY ${docs})
  file(REMOVE ${docs}/LICENSE) # the copyright file contains it
  file(WRITE ${docs}/copyright "${copyright}")
  file(COPY_FILE ${CPACK_JOBX_CHANGELOG} ${docs}/changelog)
  execute_process(COMMAND gzip -9nf ${docs}/changelog COMMAND_ERROR_IS_FATAL ANY)
endforeach()

set(jobx ${CPACK_TEMPORARY_DIRECTORY}/jobx/usr)
if(EXISTS ${jobx}/bin/jobx)
  execute_process(COMMAND gzip -9nf ${jobx}/share/man/man1/jobx.1 COMMAND_ERROR_IS_FATAL ANY)
  file(RPATH_REMOVE FILE ${jobx}/bin/jobx)
endif()
