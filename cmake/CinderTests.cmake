# cinder_tests(wave QUICK SOURCES DelayTest.cpp ... USES wave)
#
# makes the suite `test_wave` of the folder tests/wave, one ctest entry per test case. QUICK suites
# are for daily work; SLOW ones run in the full check as well.
include(doctest)

function(cinder_tests folder)
  cmake_parse_arguments(ARG "QUICK;SLOW" "" "SOURCES;USES;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" name "${folder}")
  if(ARG_SLOW)
    set(speed slow)
    set(suite "test_${name}_slow")
  else()
    set(speed quick)
    set(suite "test_${name}")
  endif()
  add_executable(${suite} ${ARG_SOURCES})
  list(TRANSFORM ARG_USES REPLACE "/" "_")
  target_link_libraries(${suite} PRIVATE cinder_flags test_support ${ARG_USES} ${ARG_LIBRARIES})
  doctest_discover_tests(${suite} TEST_PREFIX "${folder}: " PROPERTIES LABELS ${speed} TIMEOUT 900)
endfunction()
