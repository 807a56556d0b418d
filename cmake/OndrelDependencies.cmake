# The libraries that the project does not write itself, as targets of the same names on every system.

if(WIN32)
  add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/windows)
else()
  find_package(EXPAT 2.4 REQUIRED)  # from 2.4 on the parser bounds entity expansion by itself
  find_package(PNG 1.6 REQUIRED)
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  if(BUILD_TESTING OR ONDREL_FUZZ)
    find_package(GTest REQUIRED)
  endif()
endif()
