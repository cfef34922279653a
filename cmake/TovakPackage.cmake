# The licence and the change log for every install, and a Debian package of the whole install
# made by CPack (`cmake --workflow --preset deb`, see CMakePresets.json).
option(TOVAK_DEBIAN_PACKAGE "Lay the install out for the Debian package" OFF)

set(TOVAK_PACKAGE_NAME libtovak)
set(TOVAK_MAINTAINER "The libtovak developers <libtovak@example.org>")
if(TOVAK_DEBIAN_PACKAGE)
  # Debian looks for the copyright file under the package's name.
  set(TOVAK_DOC_DIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/${TOVAK_PACKAGE_NAME}")
else()
  set(TOVAK_DOC_DIR "${CMAKE_INSTALL_DOCDIR}")
endif()

# The licence as a machine-readable copyright file: its text after the copyright line,
# indented one blank, with "." for an empty line.
file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" tovak_license_lines)
list(FILTER tovak_license_lines EXCLUDE REGEX "^(MIT License|Copyright)")
set(tovak_copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: libtovak
Upstream-Contact: ${TOVAK_MAINTAINER}

Files: *
Copyright: 2026 The libtovak developers
License: Expat\n")
set(tovak_started OFF)
foreach(line IN LISTS tovak_license_lines)
  if(line STREQUAL "" AND NOT tovak_started)
    continue()
  endif()
  set(tovak_started ON)
  if(line STREQUAL "")
    set(line ".")
  endif()
  string(APPEND tovak_copyright " ${line}\n")
endforeach()
file(WRITE "${PROJECT_BINARY_DIR}/copyright" "${tovak_copyright}")

# Change logs are installed compressed, without name or time stamp: reproducible bytes.
find_program(TOVAK_GZIP gzip REQUIRED)
set(tovak_changelogs "${PROJECT_BINARY_DIR}/changelog.gz")
add_custom_command(OUTPUT "${PROJECT_BINARY_DIR}/changelog.gz"
                   COMMAND "${TOVAK_GZIP}" -9n -c "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
                           > "${PROJECT_BINARY_DIR}/changelog.gz"
                   DEPENDS "${PROJECT_SOURCE_DIR}/CHANGELOG.md" VERBATIM)
if(TOVAK_DEBIAN_PACKAGE)
  configure_file("${CMAKE_CURRENT_LIST_DIR}/changelog.Debian.in"
                 "${PROJECT_BINARY_DIR}/changelog.Debian" @ONLY)
  add_custom_command(OUTPUT "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
                     COMMAND "${TOVAK_GZIP}" -9n -c "${PROJECT_BINARY_DIR}/changelog.Debian"
                             > "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
                     DEPENDS "${PROJECT_BINARY_DIR}/changelog.Debian" VERBATIM)
  list(APPEND tovak_changelogs "${PROJECT_BINARY_DIR}/changelog.Debian.gz")
endif()
add_custom_target(tovak_changelogs ALL DEPENDS ${tovak_changelogs})
install(FILES "${PROJECT_BINARY_DIR}/copyright" ${tovak_changelogs} DESTINATION "${TOVAK_DOC_DIR}")

# A parent project packages itself as it likes.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME "${TOVAK_PACKAGE_NAME}")
set(CPACK_PACKAGE_VENDOR "The libtovak developers")
set(CPACK_PACKAGE_CONTACT "${TOVAK_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "runs legacy tovak command lines through Fendix")
set(CPACK_PACKAGE_DESCRIPTION
    "libtovak translates command lines in the syntax of the legacy tovak firmware
and driver update installer into the equivalent Fendix command lines. The
package holds the library, the tovak launcher, which runs the Fendix installed
beside it, tovak-translate, which rewrites scripts into Fendix lines, the
headers, the CMake package and the pkg-config file for building against the
library, manual pages and bash completion.")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Dependencies from the binaries, by dpkg-shlibdeps (dpkg-dev).
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# A public library needs the ldconfig trigger. CPack would call ldconfig from maintainer
# scripts instead, and it writes no shlibs file for a soname without a version anyway.
configure_file("${CMAKE_CURRENT_LIST_DIR}/triggers" "${PROJECT_BINARY_DIR}/debian/triggers"
               COPYONLY)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/debian/triggers")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
