# What packages ask of their files beyond their installation. CPack runs this in the scope of its settings, after the files
# were installed into a folder, for Debian each component into one of its own in there, and before that is packed.

function(ondrel_run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output
                  WORKING_DIRECTORY ${CPACK_TEMPORARY_DIRECTORY})
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV} gave ${status}:\n${output}")
  endif()
  set(ondrel_output "${output}" PARENT_SCOPE)
endfunction()

if(CPACK_GENERATOR STREQUAL DEB)
  # Each package says whose it is and what changed.
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} name)
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME})
    file(COPY ${CPACK_ONDREL_PACKAGE_FOLDER}/changelog ${CPACK_ONDREL_PACKAGE_FOLDER}/copyright DESTINATION ${folder}
         FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    ondrel_run(gzip --best --no-name --force ${folder}/changelog)
  endforeach()
  file(GLOB pages ${CPACK_TEMPORARY_DIRECTORY}/command/usr/share/man/man1/*.1)
  if(pages)
    ondrel_run(gzip --best --no-name --force ${pages})
  endif()

  # The libraries lie where every program finds them, and so do those that they need.
  file(GLOB libraries RELATIVE ${CPACK_TEMPORARY_DIRECTORY} ${CPACK_TEMPORARY_DIRECTORY}/libraries/usr/lib/*.so.*.*.*)
  foreach(library IN LISTS libraries)
    file(RPATH_REMOVE FILE ${CPACK_TEMPORARY_DIRECTORY}/${library})
  endforeach()
  # dpkg-shlibdeps reads a source package's control file, and what packages are called there.
  file(CONFIGURE OUTPUT ${CPACK_TEMPORARY_DIRECTORY}/debian/control
       CONTENT "Source: ondrel\n\nPackage: @CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME@\nArchitecture: any\n" @ONLY)
  ondrel_run(${CPACK_ONDREL_SHLIBDEPS} -llibraries/usr/lib --ignore-missing-info -O ${libraries})
  if(NOT ondrel_output MATCHES "shlibs:Depends=([^\n]+)")
    message(FATAL_ERROR "${CPACK_ONDREL_SHLIBDEPS} says: ${ondrel_output}")
  endif()
  set(CPACK_DEBIAN_LIBRARIES_PACKAGE_DEPENDS "${CMAKE_MATCH_1}")
endif()

# Folders are everyone's to read, whatever the mask for new files of who packs.
file(GLOB_RECURSE paths LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(path IN LISTS paths ITEMS ${CPACK_TEMPORARY_DIRECTORY})
  if(IS_DIRECTORY ${path} AND NOT IS_SYMLINK ${path})
    file(CHMOD ${path} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                             WORLD_READ WORLD_EXECUTE)
  endif()
endforeach()
