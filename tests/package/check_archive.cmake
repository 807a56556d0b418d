# The archive: the command runs where it was unpacked, and the example's host is built with it and runs.
include(${CMAKE_CURRENT_LIST_DIR}/package_check.cmake)

run(${command} --version)
if(NOT output MATCHES "^ondrel [0-9]+\\.[0-9]+\\.[0-9]+\r?\n$")
  message(FATAL_ERROR "the command says: ${output}")
endif()
run(${command} compile ${SOURCE}/examples/disk-console/disk-console.xml -o disk-console.img)
run(${command} show disk-console.img)
if(NOT output MATCHES "Temperatures")
  message(FATAL_ERROR "the command shows: ${output}")
endif()

build_host(host ${in_package})
set(program ${work}/host/disk_host${ENDING})
if(ENDING)
  # Libraries are found beside the program that uses them.
  file(COPY ${program} DESTINATION ${package}/bin)
  set(program ${package}/bin/disk_host${ENDING})
endif()
run_host(${program} host/disk-console.img ${RUNNER})

# What does not fit is refused with a reason.
function(expect_refused pattern)
  file(REMOVE_RECURSE ${work}/asking)
  file(WRITE ${work}/asking/CMakeLists.txt "cmake_minimum_required(VERSION 3.20)\nproject(Asking LANGUAGES NONE)\n"
                                           "find_package(Ondrel ${ARGN} REQUIRED)\n")
  try(${CMAKE_COMMAND} -G Ninja -S asking -B asking/build ${in_package} ${settings})
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
  if(status EQUAL 0 OR NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "find_package(Ondrel ${ARGN}) gave ${status}:\n${output}")
  endif()
endfunction()
expect_refused("compatible with requested version \"0\\.2\"" 0.2)
expect_refused("Ondrel has no component \"editor\"; it has library and command" 0.1 COMPONENTS library editor)
set(settings -D CMAKE_SYSTEM_NAME=Generic)
expect_refused("is for [A-Z][a-z]+, and the build is for Generic")
