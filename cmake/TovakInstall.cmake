# Install rules: the library, its public headers, the launcher, tovak-translate, a CMake
# package and a pkg-config file. The stand-in Fendix has no rule: installed, it would shadow
# the real tool.
include(CMakePackageConfigHelpers)

set(TOVAK_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/tovak")

install(TARGETS tovak EXPORT tovakTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/tovak"
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
        FILES_MATCHING PATTERN "*.h")
install(TARGETS tovak_translate RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
if(TOVAK_BUILD_LAUNCHER)
  install(TARGETS tovak_launcher RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

install(EXPORT tovakTargets NAMESPACE tovak:: DESTINATION "${TOVAK_CMAKE_DIR}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/tovakConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/tovakConfig.cmake"
                              INSTALL_DESTINATION "${TOVAK_CMAKE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/tovakConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/tovakConfig.cmake"
              "${PROJECT_BINARY_DIR}/tovakConfigVersion.cmake"
        DESTINATION "${TOVAK_CMAKE_DIR}")

# The .pc file finds its prefix from its own place, so the tree can be installed anywhere.
# The paths are taken between full directories, so an absolute libdir gives them right too.
file(RELATIVE_PATH TOVAK_PC_TO_PREFIX "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig"
     "${CMAKE_INSTALL_PREFIX}")
file(RELATIVE_PATH TOVAK_PC_LIBDIR "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH TOVAK_PC_INCLUDEDIR "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/tovak.pc.in" "${PROJECT_BINARY_DIR}/tovak.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/tovak.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# Manual pages and bash completion, the launcher's only with the launcher.
set(TOVAK_COMPLETIONS_DIR "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
if(TOVAK_BUILD_LAUNCHER)
  install(FILES "${PROJECT_BINARY_DIR}/doc/tovak.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES "${PROJECT_BINARY_DIR}/doc/tovak.bash" DESTINATION "${TOVAK_COMPLETIONS_DIR}"
          RENAME tovak)
endif()
install(FILES "${PROJECT_BINARY_DIR}/doc/tovak-translate.1.gz"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${PROJECT_BINARY_DIR}/doc/tovak.bash" DESTINATION "${TOVAK_COMPLETIONS_DIR}"
        RENAME tovak-translate)
