# Draws PAGE of GALLERY as PICTURE. Fails on a log line, on a missing picture or when it is not the EXPECTED one.
execute_process(COMMAND ${GALLERY} --page ${PAGE} --size 1400x600 --shot ${PICTURE}
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE log)
# The heat map tells how long it took.
string(REGEX REPLACE "[0-9]+ ms to [a-z]+ the heat map data\n" "" output "${output}")
# An instrument on a busy machine, which the page waits for.
if(log MATCHES "toskorn.bus: \"[a-z]+\" does not answer\n")
  string(REPLACE "${CMAKE_MATCH_0}" "" log "${log}")
  string(REGEX REPLACE "[^\n]+ No ORNVecDoubleClientItem for[^\n]*\n" "" log "${log}")
endif()
if(NOT status EQUAL 0 OR NOT log STREQUAL "" OR NOT output STREQUAL "${PICTURE}\n")
  message(FATAL_ERROR "status ${status}\n${output}${log}")
endif()
file(SHA256 ${PICTURE} picture)
file(SHA256 ${EXPECTED} expected)
if(NOT picture STREQUAL expected)
  message(FATAL_ERROR "${PICTURE} and ${EXPECTED} differ")
endif()
