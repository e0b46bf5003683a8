# cinder_must_not_compile(core/IncludeUpwards_fail.cpp USES core EXPECT "wave/Producer.h: No such")
#
# adds a test that compiles the file with what the rooms offer and expects it to fail, with an error
# that matches EXPECT. Its fault stands between `#ifdef FAULT` and `#endif`; without FAULT the file
# must compile, so that a misspelt header or a renamed class can't pass for the fault.
function(cinder_must_not_compile file)
  cmake_parse_arguments(ARG "" "EXPECT" "USES" ${ARGN})
  string(MAKE_C_IDENTIFIER "${file}" target)
  add_library(${target} OBJECT EXCLUDE_FROM_ALL ${file})
  list(TRANSFORM ARG_USES REPLACE "/" "_")
  target_link_libraries(${target} PRIVATE ${ARG_USES})
  set(includes "$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>")
  add_test(NAME "must_not_compile: ${file}"
           COMMAND "${CMAKE_COMMAND}"
                   "-DCOMPILE=${CMAKE_CXX_COMPILER} -std=c++20 -fsyntax-only -I$<JOIN:${includes}, -I>"
                   "-DFILE=${CMAKE_CURRENT_SOURCE_DIR}/${file}" "-DEXPECT=${ARG_EXPECT}"
                   -P "${CMAKE_SOURCE_DIR}/cmake/MustNotCompile.cmake")
  set_tests_properties("must_not_compile: ${file}" PROPERTIES LABELS quick)
endfunction()
