# Fails when a source is not as .clang-format says. The formatting of one version of the tool is not that of
# another, so that every version but 14, Debian 12's, leaves the sources alone.
# Usage: cmake -DSOURCE=<project> -P check_format.cmake
find_program(CLANG_FORMAT NAMES clang-format-14 clang-format)
find_program(GIT git)
if(NOT CLANG_FORMAT OR NOT GIT OR NOT EXISTS ${SOURCE}/.git)
    message("skipped: it takes clang-format 14 and a clone")
    return()
endif()
execute_process(COMMAND ${CLANG_FORMAT} --version OUTPUT_VARIABLE version COMMAND_ERROR_IS_FATAL ANY)
if(NOT version MATCHES "version 14\\.")
    message("skipped: ${version} formats otherwise than version 14")
    return()
endif()
execute_process(COMMAND ${GIT} -C ${SOURCE} ls-files *.h *.cpp OUTPUT_VARIABLE files COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n$" "" files "${files}")
string(REPLACE "\n" ";" files "${files}")
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror --ferror-limit=3 ${files}
    WORKING_DIRECTORY ${SOURCE} RESULT_VARIABLE failed ERROR_VARIABLE places)
if(failed)
    message(FATAL_ERROR "${places}\nMend it with: git ls-files '*.h' '*.cpp' | xargs clang-format -i")
endif()
