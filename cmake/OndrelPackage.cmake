# What a host gets: the libraries with the runtime that they share, the command, the headers, and the files by which CMake
# finds them (find_package(Ondrel), then link Ondrel::Ondrel). The target `package` makes an archive of it.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(ondrel_libraries ondrel_platform HostFramework Vellum Ondrel)
if(NOT WIN32)
  list(APPEND ondrel_libraries ondrel_system)
endif()
install(TARGETS ${ondrel_libraries} EXPORT OndrelTargets)
install(TARGETS ondrel)
if(NOT WIN32)
  # Libraries find those that they need beside them, in the build as in the package. Were the two paths of unlike length,
  # the build's would be filled up with empty entries, and each of them is the folder that a program is started in.
  set_target_properties(HostFramework Vellum Ondrel PROPERTIES INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
endif()
install(FILES ${ONDREL_RUNTIME_LIBRARIES} DESTINATION ${CMAKE_INSTALL_BINDIR})

# Some contract headers speak of what only the command is made of.
install(DIRECTORY include/ platform/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        PATTERN program.h EXCLUDE PATTERN xml_scan.h EXCLUDE PATTERN icon_scan.h EXCLUDE
        PATTERN picture.h EXCLUDE)
if(WIN32)
  install(DIRECTORY platform/windows/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
else()
  install(DIRECTORY platform/posix/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endif()

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Ondrel)
install(EXPORT OndrelTargets FILE OndrelConfig.cmake NAMESPACE Ondrel:: DESTINATION ${config_folder})
write_basic_package_version_file(OndrelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OndrelConfigVersion.cmake DESTINATION ${config_folder})
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_VENDOR "Ondrel")
set(ONDREL_PACKAGE Ondrel-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-x64)
set(CPACK_PACKAGE_FILE_NAME ${ONDREL_PACKAGE})
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
