# Included by the checks of the package: running programs, and the example's host. What each check is told:
#
#   BUILD       the build whose packages are checked      SOURCE     the project's own folder
#   ARCHIVE     the name of the archive, without .zip     ENDING     of programs: .exe, or nothing
#   TOOLCHAIN   the toolchain file of the build, if any   RUNNER     what runs its programs here, if anything
#   COMPILER    the C++ compiler

cmake_policy(VERSION 3.25)

set(packages ${BUILD}/package-check/packages)
set(package ${BUILD}/package-check/unpacked/${ARCHIVE})
set(command ${RUNNER} ${package}/bin/ondrel${ENDING})
cmake_path(GET CMAKE_SCRIPT_MODE_FILE STEM check)
set(work ${BUILD}/package-check/${check})
file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})

# How the package is found. A toolchain file for another system says where packages for that system lie, wherever
# CMAKE_PREFIX_PATH leads.
set(settings -D CMAKE_BUILD_TYPE=Release)
set(in_package -D CMAKE_PREFIX_PATH=${package})
set(in_build -D CMAKE_PREFIX_PATH=${BUILD})
if(TOOLCHAIN)
  set(in_package -D Ondrel_DIR=${package}/lib/cmake/Ondrel)
  set(in_build -D Ondrel_DIR=${BUILD})
  list(APPEND settings -D CMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
endif()

# try(COMMAND...): runs it in the check's folder; `status` and `output` are what became of it.
function(try)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output
                  WORKING_DIRECTORY ${work})
  set(status "${status}" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

# run(COMMAND...): as try, for what must succeed.
function(run)
  try(${ARGV})
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV} gave ${status}:\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

# expect(WHAT ACTUAL WANTED)
function(expect what actual wanted)
  if(NOT actual STREQUAL wanted)
    message(FATAL_ERROR "${what}:\n${actual}\nbut should be:\n${wanted}")
  endif()
endfunction()

# run_host(PROGRAM IMAGE [COMMAND...]): the example's host, by the command, on the example's image.
function(run_host program image)
  set(project ${SOURCE}/examples/disk-console/disk-console.xml)
  run(${ARGN} ${program} ${image} ${project} backup-console.xml)
  string(REPLACE "\r\n" "\n" output "${output}")
  expect("the host says" "${output}" [[
disk-console.img: Disk Console, 25 nodes, 3 dialogs, 6 icons, 12 code files
edited, to be saved: yes
saved, to be saved: no
backup-console.xml: Disk Console, 27 nodes, 4 dialogs, 7 icons, 13 code files
backup-console.img: Disk Console, 27 nodes, 4 dialogs, 7 icons, 13 code files
last node: Backups, its menu script has 236 bytes; dialog: Backup Options
]])
  # What the library raises reaches the host as what it is.
  try(${ARGN} ${program} ${project} ${project} backup-console.xml)
  string(REPLACE "\r\n" "\n" output "${output}")
  expect("a host without an image gives" "${status}: ${output}"
         "1: disk_host: ${project}: this is no object image, or one of another version\n")
endfunction()

# build_host(FOLDER [SETTING...]): configures and builds the example's host in the folder.
macro(build_host folder)
  run(${CMAKE_COMMAND} -G Ninja -S ${SOURCE}/examples/host -B ${folder} ${settings} ${ARGN})
  run(${CMAKE_COMMAND} --build ${folder})
endmacro()
