# One folder of src/ is one room and one target.
#
#   cinder_folder(dsp/sr USES wave core/simd SOURCES IIRConverterStyle.cpp ...)
#
# makes the static library dsp_sr. Its own headers, and no others, lie in an include directory of
# its own, so `#include "wave/Producer.h"` compiles only in a room that USES wave, directly or
# through another room. A room with headers alone becomes an interface library.
function(cinder_folder folder)
  cmake_parse_arguments(ARG "" "" "USES;SOURCES;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" target "${folder}")

  set(room "${CMAKE_BINARY_DIR}/rooms/${target}")
  file(REMOVE_RECURSE "${room}")
  file(MAKE_DIRECTORY "${room}/${folder}")
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}"
       "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  foreach(header IN LISTS headers)
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${room}/${folder}/${header}"
         SYMBOLIC)
  endforeach()

  if(ARG_SOURCES)
    add_library(${target} STATIC ${ARG_SOURCES})
    set(scope PUBLIC)
    target_link_libraries(${target} PRIVATE cinder_flags)
  else()
    add_library(${target} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${target} ${scope} "${room}")
  foreach(used IN LISTS ARG_USES)
    string(REPLACE "/" "_" used "${used}")
    if(NOT TARGET ${used})
      message(FATAL_ERROR "${folder} USES ${used}, which stands on no floor below it")
    endif()
    target_link_libraries(${target} ${scope} ${used})
  endforeach()
  if(ARG_LIBRARIES)
    target_link_libraries(${target} ${scope} ${ARG_LIBRARIES})
  endif()
  set_property(GLOBAL APPEND PROPERTY CINDER_FOLDERS "${folder}")
endfunction()

# A room that is planned and has no code yet: its place in the house, and what it will be allowed to
# use. It becomes a cinder_folder() with its first file.
function(cinder_room_to_come folder)
  cmake_parse_arguments(ARG "" "" "USES" ${ARGN})
  string(REPLACE "/" "_" target "${folder}")
  add_library(${target} INTERFACE)
  foreach(used IN LISTS ARG_USES)
    string(REPLACE "/" "_" used "${used}")
    if(NOT TARGET ${used})
      message(FATAL_ERROR "${folder} USES ${used}, which stands on no floor below it")
    endif()
    target_link_libraries(${target} INTERFACE ${used})
  endforeach()
endfunction()
