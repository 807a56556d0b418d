# Makes the packages of a build, and unpacks the archive elsewhere, where nothing of the build is to be found.
include(${CMAKE_CURRENT_LIST_DIR}/package_check.cmake)

run(${CMAKE_COMMAND} --build ${BUILD} --target ondrel Ondrel)
if(NOT ENDING)
  run(${CMAKE_COMMAND} --build ${BUILD} --target ondrel_manual)
endif()
file(REMOVE_RECURSE ${packages} ${package})
run(${CMAKE_CPACK_COMMAND} --config ${BUILD}/CPackConfig.cmake -B ${packages})
file(ARCHIVE_EXTRACT INPUT ${packages}/${ARCHIVE}.zip DESTINATION ${BUILD}/package-check/unpacked)
