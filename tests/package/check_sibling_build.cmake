# A project that is built beside this one takes the libraries and the command from this build's own folder.
include(${CMAKE_CURRENT_LIST_DIR}/package_check.cmake)

build_host(host ${in_build})
file(STRINGS ${work}/host/CMakeCache.txt found REGEX "^Ondrel_DIR:")
string(REGEX REPLACE "^[^=]*=" "" found "${found}")
expect("the package is" "${found}" "${BUILD}")
set(program ${work}/host/disk_host${ENDING})
if(ENDING)
  file(GLOB libraries ${BUILD}/bin/*.dll)
  file(COPY ${libraries} DESTINATION ${work}/host)
endif()
run_host(${program} host/disk-console.img ${RUNNER})
