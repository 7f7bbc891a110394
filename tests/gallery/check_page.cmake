# Draws PAGE of GALLERY twice into the folder OUT. Fails on a log line, on a missing picture or when the two differ.
file(REMOVE_RECURSE ${OUT})
foreach(run first second)
  execute_process(COMMAND ${GALLERY} --page ${PAGE} --shot ${OUT}/${run}.png
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE log)
  if(NOT status EQUAL 0 OR NOT log STREQUAL "" OR NOT output STREQUAL "${OUT}/${run}.png\n")
    message(FATAL_ERROR "status ${status}\n${output}${log}")
  endif()
endforeach()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUT}/first.png ${OUT}/second.png RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "Two pictures of the page differ: ${OUT}/first.png and ${OUT}/second.png")
endif()
