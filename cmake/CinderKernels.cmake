# Kernel sources are compiled once per instruction set, and one binary carries all of them.
#
#   cinder_kernels(core/simd SOURCES SanitiseKernels.cpp ...)
#
# compiles each source for every set of the target processor, with CINDER_SIMD_SET naming the set,
# and adds the objects to the room's library. A kernel source keeps everything it defines in a
# namespace of that name. docs/simd.md says why; tests/core/simd proves it with nm.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
  set(CINDER_SIMD_SETS baseline x86v3 x86v4)
  set(CINDER_SIMD_FLAGS_baseline -march=x86-64)
  set(CINDER_SIMD_FLAGS_x86v3 -march=x86-64-v3)
  # Without the preference clang splits 64-byte vectors into halves.
  set(CINDER_SIMD_FLAGS_x86v4 -march=x86-64-v4 -mprefer-vector-width=512)
else()
  set(CINDER_SIMD_SETS baseline)
  set(CINDER_SIMD_FLAGS_baseline "")
endif()

# One object library from kernel sources for one set, with the include directories of `room`.
function(cinder_kernel_objects name set room)
  add_library(${name} OBJECT ${ARGN})
  target_link_libraries(${name} PRIVATE cinder_flags)
  target_include_directories(${name} PRIVATE $<TARGET_PROPERTY:${room},INCLUDE_DIRECTORIES>)
  target_compile_definitions(${name} PRIVATE CINDER_SIMD_SET=${set})
  # Wide vectors cross no boundary between sets, so the change of their calling convention with the
  # set is no matter. Exceptions would bring in weak symbols of the runtime's headers.
  target_compile_options(${name} PRIVATE ${CINDER_SIMD_FLAGS_${set}} -Wno-psabi -fno-exceptions)
  # Watching the scopes of all those small values takes ten times as long to compile, and no kernel
  # keeps the address of one.
  if(CINDER_SANITIZE MATCHES address)
    target_compile_options(${name} PRIVATE -fno-sanitize-address-use-after-scope)
  endif()
endfunction()

function(cinder_kernels folder)
  cmake_parse_arguments(ARG "" "" "SOURCES" ${ARGN})
  string(REPLACE "/" "_" room "${folder}")
  foreach(set IN LISTS CINDER_SIMD_SETS)
    cinder_kernel_objects(${room}_${set} ${set} ${room} ${ARG_SOURCES})
    target_sources(${room} PRIVATE $<TARGET_OBJECTS:${room}_${set}>)
    set_property(GLOBAL APPEND PROPERTY CINDER_KERNEL_OBJECTS_${set} ${room}_${set})
  endforeach()
endfunction()
