# Makes the package, unpacks it elsewhere, builds a host against it, and runs the host and the command from the unpacked
# folder, where nothing of the build is to be found.
#
# usage: cmake -D BUILD=FOLDER -D HOST=FOLDER -D ARCHIVE=FILE -D TOOLCHAIN=FILE -D RUNNER=PROGRAM -D ENDING=.exe -P this

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output
                  WORKING_DIRECTORY ${work})
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV} gave ${status}:\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

set(work ${BUILD}/package-check)
file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})

run(${CMAKE_COMMAND} --build ${BUILD} --target package)
file(ARCHIVE_EXTRACT INPUT ${BUILD}/${ARCHIVE}.zip DESTINATION ${work})
set(package ${work}/${ARCHIVE})

set(toolchain "")
if(TOOLCHAIN)
  set(toolchain -D CMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
endif()
run(${CMAKE_COMMAND} -G Ninja -S ${HOST} -B ${work}/host -D CMAKE_BUILD_TYPE=Release
    -D Ondrel_DIR=${package}/lib/cmake/Ondrel ${toolchain})
run(${CMAKE_COMMAND} --build ${work}/host)

if(ENDING)
  # Libraries are found beside the program that uses them.
  file(COPY ${work}/host/host${ENDING} DESTINATION ${package}/bin)
  run(${RUNNER} ${package}/bin/host${ENDING})
else()
  run(${work}/host/host)
endif()
if(NOT output MATCHES "the package works")
  message(FATAL_ERROR "the host says: ${output}")
endif()

run(${RUNNER} ${package}/bin/ondrel${ENDING} --version)
if(NOT output MATCHES "ondrel [0-9]")
  message(FATAL_ERROR "the command says: ${output}")
endif()
