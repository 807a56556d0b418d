# The packages: an archive of everything for each system, and three for Debian: the command, the libraries that hosts run
# with, and what hosts are built with. The target `package` makes them.
#
# The same build gives the same bytes while SOURCE_DATE_EPOCH, the date of all files in them, is the same.

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_VENDOR "Ondrel")
set(ONDREL_PACKAGE Ondrel-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-x64)
set(CPACK_PACKAGE_FILE_NAME ${ONDREL_PACKAGE})
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL command libraries development)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/package/package_files.cmake)
set(CPACK_ONDREL_PACKAGE_FOLDER ${PROJECT_SOURCE_DIR}/cmake/package)

# Packages for Debian, where there is what makes them: dpkg-shlibdeps and file find out what they depend on.
set(ONDREL_DEBIAN_PACKAGES OFF)
if(NOT WIN32)
  find_program(ONDREL_SHLIBDEPS dpkg-shlibdeps)
  find_program(ONDREL_FILE file)
  mark_as_advanced(ONDREL_SHLIBDEPS ONDREL_FILE)
  if(ONDREL_SHLIBDEPS AND ONDREL_FILE)
    set(ONDREL_DEBIAN_PACKAGES ON)
    list(APPEND CPACK_GENERATOR DEB)
  else()
    message(STATUS "No packages for Debian will be made: dpkg-shlibdeps or file is missing")
  endif()
endif()
set(CPACK_ONDREL_SHLIBDEPS ${ONDREL_SHLIBDEPS})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # the first line of each package's own description
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
file(STRINGS ${PROJECT_SOURCE_DIR}/cmake/package/changelog signature REGEX "^ -- ")
string(REGEX REPLACE "^ -- (.*>).*" "\\1" CPACK_DEBIAN_PACKAGE_MAINTAINER "${signature}")
set(CPACK_DEBIAN_PACKAGE_SOURCE ondrel)

set(debian_version ${PROJECT_VERSION})
set(debian_library libondrel${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME ondrel)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMMAND_DESCRIPTION "compiler for definitions of management-console snap-ins
The definition of a snap-in, its console tree, dialogs, icons, scripts, style
sheets and queries, is kept as an XML project and compiled into one binary
object image that the snap-in runs from.

The command ondrel compiles definitions and shows what projects and images
hold.")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME ${debian_library})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARIES_DESCRIPTION "definition model of management-console snap-ins
The definition of a snap-in is its console tree, dialogs, icons, scripts, style
sheets and queries, kept as an XML project or a binary object image.

These libraries edit, load, save and compile definitions for programs that are
linked with them.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libondrel-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${debian_library} (= ${debian_version}), ondrel (= ${debian_version})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "definition model of management-console snap-ins (development)
The definition of a snap-in is its console tree, dialogs, icons, scripts, style
sheets and queries, kept as an XML project or a binary object image.

These are the headers, and the files by which CMake and pkg-config find the
libraries and the command.")

# What the libraries tell of themselves: CPack would have them call ldconfig, where a trigger is Debian's way, so their
# control files are the project's own, and package_files.cmake finds out what they depend on.
set(control_folder ${PROJECT_BINARY_DIR}/debian)
set(shlibs "")
foreach(library ondrel Vellum HostFramework ondrel-system)
  string(APPEND shlibs "lib${library} ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR} "
                       "${debian_library} (>= ${debian_version})\n")
endforeach()
file(CONFIGURE OUTPUT ${control_folder}/shlibs CONTENT "${shlibs}" @ONLY)
file(CONFIGURE OUTPUT ${control_folder}/triggers CONTENT "activate-noawait ldconfig\n" @ONLY)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${control_folder}/shlibs ${control_folder}/triggers)

include(CPack)
