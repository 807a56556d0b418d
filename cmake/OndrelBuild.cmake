# What every target of the project is built with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

add_compile_options(-Wall -Wextra -Werror)

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
