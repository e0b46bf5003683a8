# Compiler flags, in one place. docs/building.md says why each one is here.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CINDER_CCACHE ccache)
if(CINDER_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CINDER_CCACHE}")
endif()

add_library(cinder_flags INTERFACE)
target_compile_options(cinder_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wno-sign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wimplicit-fallthrough -Wundef -Werror
  # clang counts `double{x}` as a promotion that nobody has written, and knows no way to let a
  # constructor's argument bear the name of the field it fills.
  "$<$<CXX_COMPILER_ID:GNU>:-Wdouble-promotion;-Wshadow=local>"
  # errno and trap flags are of no use here. Both leave every result as IEEE 754 has it.
  -fno-math-errno -fno-trapping-math
  # g++ 12 loses the rounding of a double to float and back when it packs two of them.
  -fno-tree-slp-vectorize
  # A product and a sum are fused only where the code says so: the same bits from every compiler.
  -ffp-contract=off)

if(CINDER_SANITIZE)
  target_compile_options(cinder_flags INTERFACE
    -fsanitize=${CINDER_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(cinder_flags INTERFACE -fsanitize=${CINDER_SANITIZE})
endif()
if(CINDER_COVERAGE)
  target_compile_options(cinder_flags INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(cinder_flags INTERFACE --coverage)
endif()
