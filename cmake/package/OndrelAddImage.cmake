# Object images as a part of a build.
#
#   ondrel_add_image(<target> PROJECT <file> OUTPUT <file>
#                    [FILTER <glob>=<command>...] [MAP <prefix>=<folder>...] [RAW_TEXT] [DEPENDS <file or target>...])
#
# Adds a target, built with all others, that compiles the definition PROJECT into the object image OUTPUT. The image is
# made anew when the project, one of its code files or one of its icon files has changed, and not otherwise; when that
# fails, the build fails and the old image stays. The target's property ONDREL_IMAGE is the image's full path.
#
#   PROJECT    relative to the current source folder
#   OUTPUT     relative to the current binary folder
#   FILTER     what becomes of the code files that fit the glob: the command reads their bytes and writes those of the
#              image. It is started in the project's folder.
#   MAP        the folder, relative to the current source folder, that stands for the beginning of an absolute path
#   RAW_TEXT   reads the project's text as a host's library does
#   DEPENDS    what else the image is made anew for, such as the program of a filter
#
# The command is Ondrel::ondrel. A command for another system than the one that builds is run through
# CMAKE_CROSSCOMPILING_EMULATOR. The variable Ondrel_COMMAND, the full path of a native command, takes the place of
# both; an image is the same whichever command compiles it.
#
# Works with the generators of Ninja and of makefiles.

# The command lists what an image depends on by the paths that it is given, which are full ones and those of the system
# that builds, for a command under Wine too. Policy CMP0116 has the generator bring them into its own form.
cmake_policy(PUSH)
cmake_policy(VERSION 3.20...3.25)

function(ondrel_add_image target)
  cmake_parse_arguments(PARSE_ARGV 1 image "RAW_TEXT" "PROJECT;OUTPUT" "FILTER;MAP;DEPENDS")
  set(caller "ondrel_add_image(${target})")
  foreach(needed PROJECT OUTPUT)
    if(NOT image_${needed})
      message(FATAL_ERROR "${caller}: ${needed} is missing; name a file")
    endif()
  endforeach()
  if(image_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "${caller}: it knows no \"${image_UNPARSED_ARGUMENTS}\"")
  endif()
  if(image_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "${caller}: ${image_KEYWORDS_MISSING_VALUES} stands without a value")
  endif()
  cmake_path(ABSOLUTE_PATH image_PROJECT NORMALIZE OUTPUT_VARIABLE project)
  cmake_path(ABSOLUTE_PATH image_OUTPUT BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} NORMALIZE OUTPUT_VARIABLE output)

  # Text with a semicolon stays one argument.
  set(options "")
  foreach(filter IN LISTS image_FILTER)
    if(NOT filter MATCHES "^[^=]+=.")
      message(FATAL_ERROR "${caller}: FILTER \"${filter}\" is not <glob>=<command>")
    endif()
    string(REPLACE ";" "\\;" filter "${filter}")
    list(APPEND options --filter "${filter}")
  endforeach()
  foreach(map IN LISTS image_MAP)
    if(NOT map MATCHES "^([^=]+)=(.+)$")
      message(FATAL_ERROR "${caller}: MAP \"${map}\" is not <prefix>=<folder>")
    endif()
    set(prefix "${CMAKE_MATCH_1}")
    set(folder "${CMAKE_MATCH_2}")
    cmake_path(ABSOLUTE_PATH folder NORMALIZE)
    string(REPLACE ";" "\\;" map "${prefix}=${folder}")
    list(APPEND options --map "${map}")
  endforeach()
  if(image_RAW_TEXT)
    list(APPEND options --raw-text)
  endif()

  set(depfile ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.ondrel.d)
  if(Ondrel_COMMAND)
    set(command ${Ondrel_COMMAND})
    set(program ${Ondrel_COMMAND})
  else()
    set(command $<TARGET_FILE:Ondrel::ondrel>)
    set(program Ondrel::ondrel ${command})
    if(CMAKE_CROSSCOMPILING)
      if(NOT CMAKE_CROSSCOMPILING_EMULATOR)
        message(FATAL_ERROR "${caller}: the command is for ${CMAKE_SYSTEM_NAME}; set Ondrel_COMMAND to a native one, or "
                            "CMAKE_CROSSCOMPILING_EMULATOR to what runs programs of ${CMAKE_SYSTEM_NAME} here")
      endif()
      set(command ${CMAKE_CROSSCOMPILING_EMULATOR} ${command})
    endif()
  endif()

  cmake_path(GET output PARENT_PATH folder)
  file(RELATIVE_PATH label ${CMAKE_BINARY_DIR} ${output})
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${command} compile ${project} -o ${output} --depfile ${depfile} ${options}
    DEPENDS ${project} ${program} ${image_DEPENDS}
    DEPFILE ${depfile}
    WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
    COMMENT "Compiling object image ${label}"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
  set_target_properties(${target} PROPERTIES ONDREL_IMAGE ${output})
endfunction()

cmake_policy(POP)
