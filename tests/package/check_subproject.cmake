# A project that has this one as a part of itself: parent/CMakeLists.txt tells what must not reach it.
include(${CMAKE_CURRENT_LIST_DIR}/package_check.cmake)

# Without optimisation and a dozen files at a time, because it is the whole that is built once more.
run(${CMAKE_COMMAND} -G Ninja -S ${CMAKE_CURRENT_LIST_DIR}/parent -B build -D SOURCE=${SOURCE} -D CMAKE_CXX_FLAGS=-O0
    -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=40 ${settings})
if(ENDING)
  # There the command takes long to build, and the package's makes the same image.
  run(${CMAKE_COMMAND} --build build --target disk_host)
  run(${command} compile ${SOURCE}/examples/disk-console/disk-console.xml -o disk-console.img)
  run_host(${work}/build/bin/disk_host${ENDING} disk-console.img ${RUNNER})
else()
  run(${CMAKE_COMMAND} --build build)
  run_host(${work}/build/bin/disk_host build/host/disk-console.img)
endif()

run(${CMAKE_CTEST_COMMAND} --test-dir build -N)
if(NOT output MATCHES "Total Tests: 0")
  message(FATAL_ERROR "the project has tests that are not its own:\n${output}")
endif()
run(${CMAKE_COMMAND} --install build --prefix ${work}/installed)
file(GLOB_RECURSE installed ${work}/installed/*)
expect("installed is" "${installed}" "")
