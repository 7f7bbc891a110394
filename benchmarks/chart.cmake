# cmake -DVALGRIND=... -DCHART=benchmark_kit -DBYHAND=benchmark_byhand -DWORK=folder -P chart.cmake
# Counts the instructions of a frame of a Chart and of the same screen built by hand, and fails where the Chart takes more
# than that times the most that it may add. Both are of the same build, so that no numbers are kept.

set(most 120) # percent
# Of the second, samples that are read twice would be more.
set(works "new 1000" "new 1000000" "cursor 1000")

if(NOT EXISTS "${VALGRIND}")
  message("skipped: valgrind is not installed")
  return()
endif()

function(count PROGRAM CHANGE SAMPLES RESULT)
  execute_process(
    COMMAND ${VALGRIND} --tool=callgrind --instr-atstart=no --callgrind-out-file=${WORK}/counted ${PROGRAM}
      --work ${CHANGE} --traces 4 --samples ${SAMPLES} --size 800x480 --seconds 0
    OUTPUT_FILE ${WORK}/output.txt ERROR_FILE ${WORK}/output.txt RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    file(READ ${WORK}/output.txt output)
    message(FATAL_ERROR "${PROGRAM} failed: ${result}\n${output}")
  endif()
  file(STRINGS ${WORK}/counted.1 total REGEX "^totals:")
  string(REGEX REPLACE "totals: *" "" total "${total}")
  math(EXPR total "${total} / 1000")
  set(${RESULT} ${total} PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(wrong "")
foreach(work ${works})
  string(REPLACE " " ";" case ${work})
  count(${CHART} ${case} chart)
  count(${BYHAND} ${case} byhand)
  if(byhand EQUAL 0)
    message("skipped: the programs were built without valgrind's header")
    return()
  endif()
  math(EXPR percent "${chart} * 100 / ${byhand}")
  message("${work} samples: a Chart takes ${percent} % of the instructions of the same screen by hand")
  if(percent GREATER most)
    list(APPEND wrong "${work}")
  endif()
endforeach()
if(wrong)
  message(FATAL_ERROR "More than ${most} %: ${wrong}")
endif()
