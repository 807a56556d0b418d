# What every target of the project is built with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
# A project around this one says where programs go, so that they find their libraries beside them, and which warnings
# end its build.
foreach(kind RUNTIME LIBRARY)
  if(PROJECT_IS_TOP_LEVEL OR NOT CMAKE_${kind}_OUTPUT_DIRECTORY)
    set(CMAKE_${kind}_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
  endif()
endforeach()
if(PROJECT_IS_TOP_LEVEL)
  add_compile_options(-Wall -Wextra -Werror)
endif()

# ondrel_name_library(TARGET): the names of a library that hosts are linked with. Where libraries are found by their
# names in folders that all programs share, these tell the versions that hosts may be run with, which are those of
# OndrelConfigVersion.cmake; and each finds those that it needs beside itself, in the build as in the package. Were the
# two paths of unlike length, the build's would be filled up with empty entries, and each of them is the folder that a
# program is started in.
function(ondrel_name_library target)
  if(NOT WIN32)
    set_target_properties(${target} PROPERTIES
      VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
      INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
  endif()
endfunction()

set(ONDREL_SANITIZE "" CACHE STRING "Sanitizers to build with, as the compiler names them (address,undefined or thread)")
if(ONDREL_SANITIZE)
  add_compile_options(-fsanitize=${ONDREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ONDREL_SANITIZE})
endif()

# The fuzzers choose their next input by what the last one reached, so everything that they call tells them.
option(ONDREL_FUZZ "Build the fuzzers; needs clang" OFF)
if(ONDREL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Counts what is run of a folder's sources, in files beside the objects, to which every process adds when it ends. The
# folders of the libraries call it, and that of the command for what the contract headers hold; that of the module's
# tests too, because it builds sources of the library once more.
option(ONDREL_COVERAGE "Count which lines and branches of the libraries are run; needs GCC" OFF)
if(ONDREL_COVERAGE)
  add_link_options(--coverage)
endif()
macro(ondrel_count_coverage)
  if(ONDREL_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic -fprofile-abs-path)
  endif()
endmacro()

# Libraries of Windows carry no "lib" before their names, and find those that they need beside them: the compiler's
# runtime, which the libraries and their hosts share, lies there too.
set(ONDREL_RUNTIME_LIBRARIES "")
if(MINGW)
  set(CMAKE_SHARED_LIBRARY_PREFIX "")
  foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library} OUTPUT_VARIABLE path
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND ONDREL_RUNTIME_LIBRARIES ${path})
  endforeach()
  file(COPY ${ONDREL_RUNTIME_LIBRARIES} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY} FOLLOW_SYMLINK_CHAIN)
endif()
