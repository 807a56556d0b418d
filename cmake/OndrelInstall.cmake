# What a host gets: the libraries with the runtime that they share, the command, the headers, and the files by which it is
# all found: find_package(Ondrel) of CMake, in an install tree and in this build itself, and pkg-config.
#
# Three components: the command, the libraries that hosts run with, and what they are built with.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(ondrel_libraries ondrel_platform HostFramework Vellum Ondrel)
if(NOT WIN32)
  list(APPEND ondrel_libraries ondrel_system)
endif()
install(TARGETS ${ondrel_libraries} EXPORT OndrelTargets
        RUNTIME COMPONENT libraries
        LIBRARY COMPONENT libraries NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS ondrel EXPORT OndrelTargets RUNTIME COMPONENT command)
install(FILES ${ONDREL_RUNTIME_LIBRARIES} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT libraries)

# Some contract headers speak of what only the command is made of.
install(DIRECTORY include/ platform/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        PATTERN program.h EXCLUDE PATTERN xml_scan.h EXCLUDE PATTERN icon_scan.h EXCLUDE
        PATTERN picture.h EXCLUDE PATTERN xml_references.h EXCLUDE PATTERN utf16.h EXCLUDE
        PATTERN xml_passage.h EXCLUDE PATTERN process.h EXCLUDE)
if(WIN32)
  install(DIRECTORY platform/windows/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
else()
  install(DIRECTORY platform/posix/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endif()

# What is read: the manual pages and the completions of shells are there when the build has made them.
install(FILES README.md CHANGELOG.md cmake/package/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ondrel
        COMPONENT command)
if(NOT WIN32)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT command OPTIONAL
          FILES_MATCHING PATTERN *.1)
  set(completions ${PROJECT_BINARY_DIR}/completions)
  install(FILES ${completions}/ondrel.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME ondrel COMPONENT command OPTIONAL)
  install(FILES ${completions}/_ondrel DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
          COMPONENT command OPTIONAL)
  install(FILES ${completions}/ondrel.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
          COMPONENT command OPTIONAL)
endif()

# CMake. The build's own folder holds the same files beside one another, for projects that are built beside this one.
set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Ondrel)
set(package_folder ${PROJECT_SOURCE_DIR}/cmake/package)
configure_file(${package_folder}/OndrelConfig.cmake.in ${PROJECT_BINARY_DIR}/OndrelConfig.cmake @ONLY)
configure_file(${package_folder}/OndrelAddImage.cmake ${PROJECT_BINARY_DIR}/OndrelAddImage.cmake COPYONLY)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OndrelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
export(EXPORT OndrelTargets NAMESPACE Ondrel:: FILE ${PROJECT_BINARY_DIR}/OndrelTargets.cmake)
install(EXPORT OndrelTargets NAMESPACE Ondrel:: DESTINATION ${config_folder} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/OndrelConfig.cmake ${PROJECT_BINARY_DIR}/OndrelConfigVersion.cmake
              ${package_folder}/OndrelAddImage.cmake
        DESTINATION ${config_folder} COMPONENT development)

# pkg-config: what the targets tell their users, in its words.
set(pc_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pc_prefix /${pc_folder} /)
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
set(pc_libraries "")
foreach(library Ondrel Vellum HostFramework)
  get_target_property(name ${library} OUTPUT_NAME)
  if(NOT name)
    set(name ${library})
  endif()
  list(APPEND pc_libraries -l${name})
endforeach()
if(NOT WIN32)
  list(APPEND pc_libraries -londrel-system)
endif()
get_target_property(pc_system_libraries ondrel_platform INTERFACE_LINK_LIBRARIES)
get_target_property(pc_definitions ondrel_platform INTERFACE_COMPILE_DEFINITIONS)
foreach(kind system_libraries=-l definitions=-D)
  string(REPLACE "=" ";" kind ${kind})
  list(POP_FRONT kind name)
  if(pc_${name})
    list(TRANSFORM pc_${name} PREPEND ${kind})
    list(JOIN pc_${name} " " pc_${name})
  else()
    set(pc_${name} "")
  endif()
endforeach()
list(JOIN pc_libraries " " pc_libraries)
configure_file(${package_folder}/ondrel.pc.in ${PROJECT_BINARY_DIR}/ondrel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ondrel.pc DESTINATION ${pc_folder} COMPONENT development)
