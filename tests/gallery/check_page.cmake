# Draws PAGE of GALLERY into the folder OUT, once for each of RUNS. Fails on a log line, on a missing picture or when two
# pictures differ.
file(REMOVE_RECURSE ${OUT})
foreach(run ${RUNS})
  execute_process(COMMAND ${GALLERY} --page ${PAGE} --shot ${OUT}/${run}.png
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE log)
  # The heat map tells how long it took.
  string(REGEX REPLACE "[0-9]+ ms to [a-z]+ the heat map data\n" "" output "${output}")
  if(NOT status EQUAL 0 OR NOT log STREQUAL "" OR NOT output STREQUAL "${OUT}/${run}.png\n")
    message(FATAL_ERROR "status ${status}\n${output}${log}")
  endif()
  file(SHA256 ${OUT}/${run}.png picture)
  list(APPEND pictures ${picture})
endforeach()
list(REMOVE_DUPLICATES pictures)
list(LENGTH pictures different)
if(different GREATER 1)
  message(FATAL_ERROR "The pictures in ${OUT} differ")
endif()
